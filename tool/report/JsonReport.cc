#include "tool/console/JsonWriter.hh"
#include "tool/report/JsonPlace.hh"
#include "tool/report/Report.hh"

namespace {

constexpr int kFormatVersion = 2; // to be raised when a key is removed or changes its meaning

/// Lists texts with their places, such as notes.
template <class TextAt>
Json jsonOf(const Source &source, const std::vector<TextAt> &texts) {
    Json list = Json::array();
    for (const auto &[span, text] : texts)
        list.push_back({{"text", text}, {"place", placeAsJson(source, span)}});
    return list;
}

Json jsonOf(const Source &source, const Finding &finding) {
    Json furtherPlaces = Json::array();
    for (const FurtherPlace &further : finding.furtherPlaces)
        furtherPlaces.push_back({{"text", finding.textAt(further)},
                                 {"place", placeAsJson(source, further.span)},
                                 {"fix", jsonOf(source, further.fix)}});
    return {{"rule", finding.rule->id},
            {"severity", nameOf(finding.severity)},
            {"text", finding.text},
            {"place", placeAsJson(source, finding.span)},
            {"furtherPlaces", std::move(furtherPlaces)},
            {"details", finding.details},
            {"notes", jsonOf(source, finding.notes)},
            {"fix", jsonOf(source, finding.fix)}};
}

class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override { _json.beginObject().member("formatVersion", kFormatVersion).key("files").beginArray(); }

    void beginFile(const Source &source, const Tally &) override {
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

std::unique_ptr<Report> jsonReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<JsonReport>(out);
}
