#include "tool/console/JsonWriter.hh"
#include "tool/console/Text.hh"
#include "tool/report/Report.hh"

#include <algorithm>

namespace {

constexpr std::size_t kMostLinks = 10; // to further places, in a message

/// A file name as an absolute or relative URI.
std::string uriOf(const std::string &fileName) {
    return (fileName[0] == '/' ? "file://" : "") + pathInUri(fileName);
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

/// A place that the message of a result can link to by its number, counted from 1.
Json relatedLocation(std::size_t id, const Source &source, RtiFedSpan span, const std::string &text) {
    Json location = {{"id", id}};
    location.update(locationOf(source, span));
    location["message"] = message(text);
    return location;
}

std::string link(const std::string &text, std::size_t id) {
    return '[' + unlinked(text) + "](" + std::to_string(id) + ')';
}

/// Returns the message with links to related locations: first the notes, then the further places.
///
/// Viewers show a result at its first location, and others only where the message links to a related location. So the
/// notes and the first of the further places are links; the related locations list all of them.
Json linkedMessage(const Source &source, const Finding &finding) {
    auto text = message(finding.textWithDetails()).at("text").get<std::string>();
    std::size_t id = 0;
    for (const RtiFedParser::Note &note : finding.notes)
        text += '\n' + link(note.text, ++id);
    const std::size_t numLinks = std::min(finding.furtherPlaces.size(), kMostLinks);
    for (std::size_t i = 0; i < numLinks; ++i)
        text += (i == 0 ? "\nalso at " : ", ") + link(textOf(source.begin(finding.furtherPlaces[i].span)), ++id);
    return {{"text", text + (numLinks < finding.furtherPlaces.size() ? ", ..." : "")}};
}

Json jsonOf(const Suppression &suppression) {
    Json json = {{"kind", suppression.kind == Suppression::Kind::inText ? "inSource" : "external"},
                 {"status", "accepted"}};
    if (!suppression.justification.empty())
        json["justification"] = suppression.justification;
    return json;
}

/// Returns a result without its related locations and fixes.
Json resultOf(const Source &source, const Finding &finding) {
    Json result = {{"ruleId", finding.rule->id},
                   {"ruleIndex", finding.rule->index},
                   {"level", nameOf(finding.severity)},
                   {"message", linkedMessage(source, finding)},
                   {"locations", Json::array({locationOf(source, finding.span)})}};
    if (finding.suppression)
        result["suppressions"] = Json::array({jsonOf(*finding.suppression)});
    return result;
}

Json describe(const Rule &rule) {
    return {{"id", rule.id},
            {"shortDescription", message(rule.title)},
            {"fullDescription", message(rule.why)},
            {"help", message(std::string(rule.fix) + "\n\nWrong:\n" + rule.wrong + "\n\nRight:\n" + rule.right)},
            {"defaultConfiguration", {{"level", nameOf(rule.severity)}, {"enabled", !rule.isHabit()}}}};
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
        _json.breakLine().beginObject();
        const Json result = resultOf(source, finding);
        for (const auto &[key, value] : result.items())
            _json.member(key, value);
        if (finding.notes.size() + finding.furtherPlaces.size() > 0)
            writeRelatedLocations(source, finding);
        if (!finding.fix.empty())
            writeFix(source, finding);
        _json.endObject();
    }

    bool showsSuppressed() const override { return true; }

    void endFile(const Source &source, const Tally &tally) override {
        if (!tally.remark.empty())
            _notifications.push_back(notification("note", source.name(), tally.remark));
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
    // A finding may have very many places, so that their lists are written piece by piece.

    void writeRelatedLocations(const Source &source, const Finding &finding) {
        _json.key("relatedLocations").beginArray();
        std::size_t id = 0;
        for (const RtiFedParser::Note &note : finding.notes)
            _json.value(relatedLocation(++id, source, note.span, note.text));
        for (const FurtherPlace &place : finding.furtherPlaces)
            _json.value(relatedLocation(++id, source, place.span, finding.textAt(place)));
        _json.endArray();
    }

    /// Writes one fix for all places.
    void writeFix(const Source &source, const Finding &finding) {
        const std::string description = finding.fix.description(source.text());
        _json.key("fixes").beginArray().beginObject().member("description", message(description));
        _json.key("artifactChanges").beginArray().beginObject();
        _json.member("artifactLocation", artifact(source.name())).key("replacements").beginArray();
        writeReplacements(source, finding.fix.edits);
        for (const FurtherPlace &place : finding.furtherPlaces)
            writeReplacements(source, place.fix.edits);
        _json.endArray().endObject().endArray().endObject().endArray();
    }

    void writeReplacements(const Source &source, const std::vector<Replacement> &fix) {
        for (const auto &[span, text] : fix)
            _json.value({{"deletedRegion", regionOf(source, span)}, {"insertedContent", {{"text", text}}}});
    }

    JsonWriter _json;
    bool _allRead = true;
    std::vector<Json> _notifications; // written at the end
};

} // namespace

std::unique_ptr<Report> sarifReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<SarifReport>(out);
}
