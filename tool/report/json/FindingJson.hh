#pragma once

#include "tool/check/Finding.hh"
#include "tool/console/JsonWriter.hh"
#include "tool/report/Source.hh"

/// Writes the members of the object that docs/findings.schema.json describes as a finding.
void writeMembers(JsonWriter &json, const Source &source, const Finding &finding);
