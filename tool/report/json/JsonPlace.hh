#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/console/JsonWriter.hh"
#include "tool/report/Source.hh"

#include <optional>

/// Returns a place in a FED text as all JSON output has it, described by docs/place.schema.json; null if there is none.
Json placeAsJson(const std::optional<RtiFedPosition> &place);

/// Writes the same, on as many lines as the layout of the document has for an object.
void writePlace(JsonWriter &json, const std::optional<RtiFedPosition> &place);

/// A place with the end of the span and its bytes.
Json placeAsJson(const Source &source, const std::optional<RtiFedSpan> &span);
