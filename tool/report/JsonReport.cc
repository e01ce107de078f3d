#include "tool/console/JsonWriter.hh"
#include "tool/report/Report.hh"

namespace {

Json rangeOf(const Source &source, RtiFedSpan span) {
    const RtiFedPosition begin = source.begin(span), end = source.end(span);
    return {{"startLine", begin.line}, {"startColumn", begin.column}, {"endLine", end.line},
            {"endColumn", end.column}, {"byteOffset", span.begin},    {"byteLength", span.length}};
}

Json jsonOf(const Source &source, const Finding &finding) {
    Json json = {{"rule", finding.rule->id}, {"severity", nameOf(finding.severity)}, {"text", finding.text}};
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

class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override { _json.beginObject().key("files").beginArray(); }

    void beginFile(const Source &source) override {
        _json.breakLine().beginObject().member("file", source.name()).key("findings").beginArray();
    }

    void add(const Source &source, const Finding &finding) override {
        const Json json = jsonOf(source, finding);
        _json.breakLine().value(json);
    }

    void endFile(const Source &, const Tally &tally) override {
        _json.endArray().member("errors", tally.errors).member("warnings", tally.warnings);
        _json.member("notShown", tally.hidden()).endObject();
    }

    void failFile(const std::string &fileName, const std::string &reason) override {
        _failures.push_back({{"file", fileName}, {"text", reason}});
    }

    void end() override { _json.breakLine().endArray().member("failures", _failures).endObject(); }

private:
    JsonWriter _json;
    Json _failures = Json::array(); // written at the end
};

} // namespace

std::unique_ptr<Report> jsonReport(std::ostream &out, bool, std::size_t) {
    return std::make_unique<JsonReport>(out);
}
