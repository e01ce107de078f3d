#include "tool/report/Report.hh"
#include "tool/report/json/FindingJson.hh"

namespace {

constexpr int kFindingsVersion = 2; // to be raised when a key is removed or changes its meaning

class JsonReport : public Report {
public:
    explicit JsonReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override { _json.beginObject().member("formatVersion", kFindingsVersion).key("files").beginArray(); }

    void beginFile(const Source &source, const Tally &) override {
        _json.breakLine().beginObject().member("file", source.name()).key("findings").beginArray();
    }

    void add(const Source &source, const Finding &finding) override {
        _json.breakLine().beginObject();
        writeMembers(_json, source, finding);
        _json.endObject();
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
