#include "tool/report/json/JsonPlace.hh"

Json placeAsJson(const std::optional<RtiFedPosition> &place) {
    return place ? Json{{"line", place->line}, {"column", place->column}} : Json();
}

void writePlace(JsonWriter &json, const std::optional<RtiFedPosition> &place) {
    if (place)
        json.beginObject().member("line", place->line).member("column", place->column).endObject();
    else
        json.null();
}

Json placeAsJson(const Source &source, const std::optional<RtiFedSpan> &span) {
    if (!span)
        return {};
    Json place = placeAsJson(source.begin(*span));
    const RtiFedPosition end = source.end(*span);
    place.update(
        {{"endLine", end.line}, {"endColumn", end.column}, {"byteOffset", span->begin}, {"byteLength", span->length}});
    return place;
}
