#include "tool/console/JsonWriter.hh"
#include "tool/console/Text.hh"
#include "tool/report/Report.hh"

namespace {

/// A file name as an absolute or relative URI, encoded byte by byte.
std::string uriOf(const std::string &fileName) {
    std::string uri = fileName[0] == '/' ? "file://" : "";
    for (const char c : fileName) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || std::string_view("/-._~").find(c) != std::string_view::npos)
            uri += c;
        else
            uri += percentEncoded(c);
    }
    return uri;
}

Json message(const std::string &text) {
    return {{"text", text}};
}

Json regionOf(const Source &source, RtiFedSpan span) {
    const RtiFedPosition begin = source.characterPosition(span.begin);
    const RtiFedPosition end = source.characterPosition(span.begin + span.length);
    return {{"startLine", begin.line}, {"startColumn", begin.column}, {"endLine", end.line}, {"endColumn", end.column}};
}

Json artifact(const std::string &fileName) {
    return {{"uri", uriOf(fileName)}};
}

Json locationOf(const Source &source, const std::optional<RtiFedSpan> &span) {
    Json place = {{"artifactLocation", artifact(source.name())}};
    if (span)
        place["region"] = regionOf(source, *span);
    return {{"physicalLocation", std::move(place)}};
}

Json relatedLocationsOf(const Source &source, const Finding &finding) {
    Json locations = Json::array();
    for (const RtiFedParser::Note &note : finding.notes) {
        Json location = {{"id", locations.size() + 1}};
        location.update(locationOf(source, note.span));
        location["message"] = message(note.text);
        locations.push_back(std::move(location));
    }
    return locations;
}

Json fixesOf(const Source &source, const Finding &finding) {
    Json replacements = Json::array();
    for (const Replacement &replacement : finding.fix)
        replacements.push_back(
            {{"deletedRegion", regionOf(source, replacement.span)}, {"insertedContent", message(replacement.text)}});
    const Json change = {{"artifactLocation", artifact(source.name())}, {"replacements", std::move(replacements)}};
    return Json::array({{{"artifactChanges", Json::array({change})}}});
}

Json resultOf(const Source &source, const Finding &finding) {
    Json result = {{"ruleId", finding.rule->id},
                   {"ruleIndex", finding.rule->index},
                   {"level", nameOf(finding.severity)},
                   {"message", message(finding.textWithDetails())},
                   {"locations", Json::array({locationOf(source, finding.span)})}};
    if (!finding.notes.empty())
        result["relatedLocations"] = relatedLocationsOf(source, finding);
    if (!finding.fix.empty())
        result["fixes"] = fixesOf(source, finding);
    return result;
}

Json describe(const Rule &rule) {
    return {{"id", rule.id},
            {"shortDescription", message(rule.title)},
            {"fullDescription", message(rule.why)},
            {"help", message(std::string(rule.fix) + "\n\nWrong:\n" + rule.wrong + "\n\nRight:\n" + rule.right)},
            {"defaultConfiguration", {{"level", nameOf(rule.severity)}}}};
}

Json notification(const char *level, const std::string &fileName, const std::string &text) {
    const Json location = {{"physicalLocation", {{"artifactLocation", artifact(fileName)}}}};
    return {{"level", level}, {"message", message(text)}, {"locations", Json::array({location})}};
}

class SarifReport : public Report {
public:
    explicit SarifReport(std::ostream &out) : _json(out, JsonWriter::Layout::compact) {}

    void begin() override {
        Json rules = Json::array();
        for (const Rule &rule : allRules())
            rules.push_back(describe(rule));
        const Json tool = {{"driver", {{"name", "rtifed"}, {"version", RTIFED_VERSION}, {"rules", std::move(rules)}}}};
        _json.beginObject()
            .member("$schema", "https://json.schemastore.org/sarif-2.1.0.json")
            .member("version", "2.1.0");
        _json.key("runs").beginArray().beginObject().member("tool", tool);
        _json.breakLine().member("columnKind", "unicodeCodePoints");
        _json.member("newlineSequences", {"\r\n", "\n", "\r"}).key("results").beginArray();
    }

    void add(const Source &source, const Finding &finding) override {
        const Json result = resultOf(source, finding);
        _json.breakLine().value(result);
    }

    void endFile(const Source &source, const Tally &tally) override {
        if (tally.hidden() > 0)
            _notifications.push_back(notification("note", source.name(), describeHidden(tally)));
    }

    void failFile(const std::string &fileName, const std::string &reason) override {
        _allRead = false;
        _notifications.push_back(notification("error", fileName, reason));
    }

    void end() override {
        _json.breakLine().endArray().key("invocations").beginArray().beginObject();
        _json.member("executionSuccessful", _allRead).key("toolExecutionNotifications").beginArray();
        for (const Json &notification : _notifications)
            _json.breakLine().value(notification);
        _json.endArray().endObject().endArray().endObject().endArray().endObject();
    }

private:
    JsonWriter _json;
    bool _allRead = true;
    std::vector<Json> _notifications; // written at the end
};

} // namespace

std::unique_ptr<Report> sarifReport(std::ostream &out, bool, std::size_t) {
    return std::make_unique<SarifReport>(out);
}
