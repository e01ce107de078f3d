#include "tool/report/json/FindingJson.hh"

#include "tool/report/json/JsonPlace.hh"

#include <vector>

namespace {

/// Lists texts with their places, such as notes.
template <class TextAt>
Json jsonOf(const Source &source, const std::vector<TextAt> &texts) {
    Json list = Json::array();
    for (const auto &[span, text] : texts)
        list.push_back({{"text", text}, {"place", placeAsJson(source, span)}});
    return list;
}

} // namespace

void writeMembers(JsonWriter &json, const Source &source, const Finding &finding) {
    json.member("rule", finding.rule->id);
    json.member("severity", nameOf(finding.severity)).member("text", finding.text);
    json.member("place", placeAsJson(source, finding.span)).key("furtherPlaces").beginArray();
    for (const FurtherPlace &further : finding.furtherPlaces) // of which there may be very many
        json.value({{"text", finding.textAt(further)},
                    {"place", placeAsJson(source, further.span)},
                    {"fix", jsonOf(source, further.fix.edits)}});
    json.endArray().member("details", finding.details).member("notes", jsonOf(source, finding.notes));
    json.member("fix", jsonOf(source, finding.fix.edits)).member("fixIsSafe", finding.fix.isSafe);
    json.member("fixText", finding.fix.description(source.text()));
}
