#pragma once

#include "tool/console/JsonWriter.hh"
#include "tool/report/DiffReport.hh"

/// Writes as the next value what docs/diff.schema.json describes, one change a line.
void writeDifference(JsonWriter &json, const Difference &difference);
