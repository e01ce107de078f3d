#include "tool/report/SarifReport.hh"

#include "tool/console/Json.hh"

namespace {

/// A file name as a URI, absolute or relative, byte by byte.
std::string uriOf(const std::string &fileName) {
    constexpr const char *kDigits = "0123456789ABCDEF";
    std::string uri = fileName[0] == '/' ? "file://" : "";
    for (const char c : fileName) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || std::string_view("/-._~").find(c) != std::string_view::npos)
            uri += c;
        else
            uri += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
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
    std::string text = finding.text;
    for (const std::string &line : finding.details)
        text += '\n' + line;
    Json result = {{"ruleId", finding.rule->id},
                   {"ruleIndex", finding.rule - allRules().data()},
                   {"level", nameOf(finding.rule->severity)},
                   {"message", message(text)},
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
            {"help", message(std::string(rule.mend) + "\n\nWrong:\n" + rule.wrong + "\n\nRight:\n" + rule.right)},
            {"defaultConfiguration", {{"level", nameOf(rule.severity)}}}};
}

Json notification(const char *level, const std::string &fileName, const std::string &text) {
    const Json location = {{"physicalLocation", {{"artifactLocation", artifact(fileName)}}}};
    return {{"level", level}, {"message", message(text)}, {"locations", Json::array({location})}};
}

} // namespace

void SarifReport::begin() {
    Json rules = Json::array();
    for (const Rule &rule : allRules())
        rules.push_back(describe(rule));
    const Json tool = {{"driver", {{"name", "rtifed"}, {"version", RTIFED_VERSION}, {"rules", std::move(rules)}}}};
    _out << "{\"$schema\":\"https://json.schemastore.org/sarif-2.1.0.json\",\"version\":\"2.1.0\",\"runs\":[{\"tool\":"
         << toLine(tool) << ",\n\"columnKind\":\"unicodeCodePoints\",\"newlineSequences\":[\"\\r\\n\",\"\\n\",\"\\r\"],"
         << "\"results\":[";
}

void SarifReport::add(const Source &source, const Finding &finding) {
    const std::string result = toLine(resultOf(source, finding));
    _out << (_firstResult ? "\n" : ",\n") << result;
    _firstResult = false;
}

void SarifReport::endFile(const Source &source, const Tally &tally) {
    if (tally.hidden() > 0)
        _notifications.push_back(toLine(notification("note", source.name(), describeHidden(tally))));
}

void SarifReport::failFile(const std::string &fileName, const std::string &reason) {
    _allRead = false;
    _notifications.push_back(toLine(notification("error", fileName, reason)));
}

void SarifReport::end() {
    _out << "\n],\"invocations\":[{\"executionSuccessful\":" << (_allRead ? "true" : "false")
         << ",\"toolExecutionNotifications\":[";
    const char *separator = "\n";
    for (const std::string &notification : _notifications) {
        _out << separator << notification;
        separator = ",\n";
    }
    _out << "]}]}]}\n";
}
