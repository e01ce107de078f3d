#include "tool/report/JsonReport.hh"

namespace {

Json rangeOf(const Source &source, RtiFedSpan span) {
    const RtiFedPosition begin = source.begin(span), end = source.end(span);
    return {{"startLine", begin.line}, {"startColumn", begin.column}, {"endLine", end.line},
            {"endColumn", end.column}, {"byteOffset", span.begin},    {"byteLength", span.length}};
}

Json jsonOf(const Source &source, const Finding &finding) {
    Json json = {{"rule", finding.rule->id}, {"severity", nameOf(finding.rule->severity)}, {"text", finding.text}};
    if (finding.span)
        json["range"] = rangeOf(source, *finding.span);
    if (!finding.details.empty())
        json["details"] = finding.details;
    for (const RtiFedParser::Note &note : finding.notes)
        json["notes"].push_back({{"text", note.text}, {"range", rangeOf(source, note.span)}});
    for (const Replacement &replacement : finding.fix)
        json["fix"].push_back({{"range", rangeOf(source, replacement.span)}, {"text", replacement.text}});
    return json;
}

} // namespace

void JsonReport::begin() {
    _json.beginObject().key("files").beginArray();
}

void JsonReport::beginFile(const Source &source) {
    _json.breakLine().beginObject().member("file", source.name()).key("findings").beginArray();
}

void JsonReport::add(const Source &source, const Finding &finding) {
    const Json json = jsonOf(source, finding);
    _json.breakLine().value(json);
}

void JsonReport::endFile(const Source &, const Tally &tally) {
    _json.endArray().member("errors", tally.errors).member("warnings", tally.warnings);
    _json.member("notShown", tally.hidden()).endObject();
}

void JsonReport::failFile(const std::string &fileName, const std::string &reason) {
    _failures.push_back({{"file", fileName}, {"text", reason}});
}

void JsonReport::end() {
    _json.breakLine().endArray().member("failures", _failures).endObject();
}
