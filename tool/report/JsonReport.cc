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

class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override { _json.beginObject().member("formatVersion", kFormatVersion).key("files").beginArray(); }

    void beginFile(const Source &source, const Tally &) override {
        _json.breakLine().beginObject().member("file", source.name()).key("findings").beginArray();
    }

    void add(const Source &source, const Finding &finding) override {
        _json.breakLine().beginObject().member("rule", finding.rule->id);
        _json.member("severity", nameOf(finding.severity)).member("text", finding.text);
        _json.member("place", placeAsJson(source, finding.span)).key("furtherPlaces").beginArray();
        for (const FurtherPlace &further : finding.furtherPlaces) // of which there may be very many
            _json.value({{"text", finding.textAt(further)},
                         {"place", placeAsJson(source, further.span)},
                         {"fix", jsonOf(source, further.fix.edits)}});
        _json.endArray().member("details", finding.details).member("notes", jsonOf(source, finding.notes));
        _json.member("fix", jsonOf(source, finding.fix.edits)).member("fixIsSafe", finding.fix.isSafe);
        _json.member("fixText", finding.fix.description(source.text())).endObject();
    }

    void endFile(const Source &, const Tally &tally) override {
        _json.endArray().member("loads", tally.gravest == nullptr);
        _json.member("errors", tally.errors).member("warnings", tally.warnings);
        _json.member("fixable", tally.fixable)
            .member("notShown", tally.hidden())
            .member("suppressed", tally.suppressed)
            .endObject();
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
