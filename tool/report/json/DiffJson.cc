#include "tool/report/json/DiffJson.hh"

#include "tool/report/json/JsonPlace.hh"

namespace {

using Change = Comparison::Change;
using Element = Comparison::Element;

constexpr int kDiffVersion = 2; // to be raised when a key is removed or changes its meaning

Json jsonOf(const ComparedFile &side) {
    return {{"file", side.input.name},
            {"form", side.input.isImage() ? "image"
                     : side.input.isXml() ? "xml"
                                          : "text"},
            {"loads", side.outline.loads},
            {"federation", side.outline.federation},
            {"version", side.outline.version}};
}

Json jsonOf(const Element &element) {
    return {{"subject", Comparison::nameOf(element.kind)}, {"in", element.owner}, {"name", element.name}};
}

Json placeOf(const std::optional<Element> &element) {
    return element ? placeAsJson(element->place) : Json();
}

/// Returns a handle as a number, other values as text, null for none.
Json valueOf(const Change &change, const Element &element) {
    if (change.kind == Change::Kind::renumbered || change.kind == Change::Kind::reordered)
        return element.handle;
    const std::string value = change.value(element);
    return value.empty() ? Json() : Json(value);
}

Json jsonOf(const Change &change) {
    Json json{{"kind", Comparison::nameOf(change.kind)},
              {"meaning", Comparison::nameOf(Comparison::meaning(change.kind))}};
    json.update(jsonOf(change.element()));
    const bool onBothSides = change.before && change.after;
    json["from"] = onBothSides ? valueOf(change, *change.before) : Json();
    json["to"] = onBothSides ? valueOf(change, *change.after) : Json();
    json["oldPlace"] = placeOf(change.before);
    json["newPlace"] = placeOf(change.after);
    json["rename"] = change.rename ? Json{{"name", change.rename->name},
                                          {"likelihood", Comparison::nameOf(change.rename->likelihood)}}
                                   : Json();
    json["contents"] = Json::array();
    json["movedDownTo"] = Json::array();
    Json &contents = json[change.element().hasMembers() ? "contents" : "movedDownTo"];
    for (const Element &element : change.contents) {
        contents.push_back(jsonOf(element));
        contents.back()["place"] = placeAsJson(element.place);
    }
    return json;
}

} // namespace

void writeDifference(JsonWriter &json, const Difference &difference) {
    const Comparison &comparison = difference.comparison;
    const bool comparesHandles = comparison.handlesCompared();
    json.beginObject().member("formatVersion", kDiffVersion);
    json.breakLine().member("verdict", Comparison::nameOf(comparison.verdict()));
    json.breakLine().member("old", jsonOf(difference.before));
    json.breakLine().member("new", jsonOf(difference.after));
    json.breakLine().member("handlesCompared", comparesHandles);
    json.breakLine().member("checksumsAgree", comparesHandles ? Json(difference.checksumsAgree()) : Json());
    json.breakLine().key("changes").beginArray();
    for (const Change &change : comparison.changes())
        json.breakLine().value(jsonOf(change));
    json.breakLine().endArray().endObject();
}
