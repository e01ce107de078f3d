#include "tool/report/JsonReport.hh"

#include "tool/console/Json.hh"

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
    _out << "{\"files\":[";
}

void JsonReport::beginFile(const Source &source) {
    const std::string name = toLine(source.name());
    _out << (_firstFile ? "\n" : ",\n") << "{\"file\":" << name << ",\"findings\":[";
    _firstFile = false;
    _firstFinding = true;
}

void JsonReport::add(const Source &source, const Finding &finding) {
    const std::string json = toLine(jsonOf(source, finding)); // first, so that nothing is half written without memory
    _out << (_firstFinding ? "\n" : ",\n") << json;
    _firstFinding = false;
}

void JsonReport::endFile(const Source &, const Tally &tally) {
    _out << "],\"errors\":" << tally.errors << ",\"warnings\":" << tally.warnings << ",\"notShown\":" << tally.hidden()
         << '}';
}

void JsonReport::failFile(const std::string &fileName, const std::string &reason) {
    _failures.emplace_back(fileName, reason);
}

void JsonReport::end() {
    Json failures = Json::array();
    for (const auto &[fileName, reason] : _failures)
        failures.push_back({{"file", fileName}, {"text", reason}});
    _out << "\n],\"failures\":" << toLine(failures) << "}\n";
}
