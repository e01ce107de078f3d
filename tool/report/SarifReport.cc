#include "tool/console/JsonWriter.hh"
#include "tool/console/Text.hh"
#include "tool/report/Report.hh"

namespace {

constexpr std::size_t kMostLinks = 10; // to further places, in a message

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

/// Escapes what viewers could take for a link, `[TEXT](TARGET)`: a hostile name may contain one.
std::string unlinked(const std::string &text) {
    std::string escaped;
    for (const char c : text) {
        if (std::string_view("[]\\").find(c) != std::string_view::npos)
            escaped += '\\';
        escaped += c;
    }
    return escaped;
}

Json message(const std::string &text) {
    return {{"text", text.find("](") == std::string::npos ? text : unlinked(text)}};
}

Json regionOf(const Source &source, RtiFedSpan span) {
    const RtiFedPosition begin = source.characterPosition(span.begin);
    const RtiFedPosition end = source.characterPosition(span.begin + span.length);
    return {{"startLine", begin.line}, {"startColumn", begin.column}, {"endLine", end.line}, {"endColumn", end.column}};
}

Json artifact(const std::string &fileName) {
    return {{"uri", uriOf(pathInRepository(fileName))}};
}

Json locationOf(const Source &source, const std::optional<RtiFedSpan> &span) {
    Json place = {{"artifactLocation", artifact(source.name())}};
    if (span)
        place["region"] = regionOf(source, *span);
    return {{"physicalLocation", std::move(place)}};
}

/// Adds a related location and returns the link to it.
std::string link(const std::string &text, const Json &location, const std::string &description, Json &locations) {
    const std::size_t id = locations.size() + 1;
    locations.push_back({{"id", id}});
    locations.back().update(location);
    locations.back()["message"] = message(description);
    return '[' + unlinked(text) + "](" + std::to_string(id) + ')';
}

/// Sets the message, and the locations that it links to.
///
/// Viewers show a result at its first location, and others only where the message links to a related location. So the
/// notes and the first of the further places are links; the related locations list all of them.
void describe(const Source &source, const Finding &finding, Json &result) {
    auto text = message(finding.textWithDetails()).at("text").get<std::string>();
    Json locations = Json::array();
    for (const RtiFedParser::Note &note : finding.notes)
        text += '\n' + link(note.text, locationOf(source, note.span), note.text, locations);
    std::vector<std::string> also;
    for (const FurtherPlace &place : finding.furtherPlaces) {
        const std::string at =
            link(textOf(source.begin(place.span)), locationOf(source, place.span), finding.textAt(place), locations);
        if (also.size() < kMostLinks)
            also.push_back(at);
    }
    if (!also.empty())
        text += "\nalso at " + joined(also) + (also.size() < finding.furtherPlaces.size() ? ", ..." : "");
    result["message"] = {{"text", text}};
    if (!locations.empty())
        result["relatedLocations"] = std::move(locations);
}

void addReplacements(const Source &source, const std::vector<Replacement> &fix, Json &replacements) {
    for (const Replacement &replacement : fix)
        replacements.push_back(
            {{"deletedRegion", regionOf(source, replacement.span)}, {"insertedContent", {{"text", replacement.text}}}});
}

/// One fix, for all places of the finding.
Json fixesOf(const Source &source, const Finding &finding) {
    Json replacements = Json::array();
    addReplacements(source, finding.fix, replacements);
    for (const FurtherPlace &place : finding.furtherPlaces)
        addReplacements(source, place.fix, replacements);
    const Json change = {{"artifactLocation", artifact(source.name())}, {"replacements", std::move(replacements)}};
    return Json::array({{{"artifactChanges", Json::array({change})}}});
}

Json resultOf(const Source &source, const Finding &finding) {
    Json result = {{"ruleId", finding.rule->id},
                   {"ruleIndex", finding.rule->index},
                   {"level", nameOf(finding.severity)},
                   {"message", Json()},
                   {"locations", Json::array({locationOf(source, finding.span)})}};
    describe(source, finding, result);
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

std::unique_ptr<Report> sarifReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<SarifReport>(out);
}
