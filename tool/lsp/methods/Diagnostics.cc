#include "tool/lsp/methods/Diagnostics.hh"

#include "tool/console/Digest.hh"
#include "tool/console/Text.hh"
#include "tool/lsp/RulePage.hh"
#include "tool/lsp/methods/Methods.hh"

#include <algorithm>

namespace {

/// Editors get slow with more, and nobody reads them.
constexpr std::size_t kMostDiagnostics = 1000;

enum Severities { error = 1, warning = 2, information = 3 };
enum Tags { unnecessary = 1 };

bool isUnnecessary(const Rule &rule) {
    return &rule == &ruleOf(RuleId::unusedSpace) || &rule == &ruleOf(RuleId::unusedSuppression);
}

Json relatedInformation(const OpenDocument &document, const Finding &finding) {
    Json places = Json::array();
    for (const RtiFedParser::Note &note : finding.notes)
        places.push_back({{"location", document.location(note.span)}, {"message", note.text}});
    return places;
}

std::vector<const Finding *> reportedFindings(const Document &document) {
    std::vector<const Finding *> reported;
    for (const Finding &finding : document.findings())
        if (!finding.suppression)
            reported.push_back(&finding);
    std::stable_partition(reported.begin(), reported.end(),
                          [](const Finding *finding) { return finding->severity == Severity::error; });
    return reported;
}

/// Returns a name of these diagnostics, which is the same only for equal ones.
std::string resultIdOf(const Json &diagnostics) {
    return sha256(textOfMessage(diagnostics)).substr(0, 32);
}

} // namespace

Json diagnosticOf(const Session &session, const OpenDocument &document, const Finding &finding) {
    Json diagnostic = {{"range", document.range(finding.span.value_or(RtiFedSpan()))},
                       {"severity", finding.severity == Severity::error ? Severities::error : Severities::warning},
                       {"code", finding.rule->id},
                       {"source", "rtifed"},
                       {"message", finding.textWithDetails()}};
    const std::string page =
        session.client.codeDescriptions ? pageOfRule(*finding.rule, session.client.settings.rulesUrl) : "";
    if (!page.empty())
        diagnostic["codeDescription"] = {{"href", page}};
    if (session.client.diagnosticTags && isUnnecessary(*finding.rule))
        diagnostic["tags"] = {Tags::unnecessary};
    if (session.client.relatedInformation && !finding.notes.empty())
        diagnostic["relatedInformation"] = relatedInformation(document, finding);
    return diagnostic;
}

Json diagnosticsOf(const Session &session, const OpenDocument &document) {
    const std::vector<const Finding *> findings = reportedFindings(document.document());
    Json diagnostics = Json::array();
    const std::size_t count = std::min(findings.size(), kMostDiagnostics);
    for (std::size_t i = 0; i < count; ++i)
        diagnostics.push_back(diagnosticOf(session, document, *findings[i]));
    if (count < findings.size())
        diagnostics.push_back({{"range", document.range({})},
                               {"severity", Severities::information},
                               {"source", "rtifed"},
                               {"message", counted(findings.size() - count, "further finding") +
                                               "; rtifed check --max-findings 0 prints all"}});
    return diagnostics;
}

void publishDiagnostics(Session &session, const OpenDocument &document) {
    // equivalent: what an editor has opened has a version
    Json params = {{"uri", document.uri()}, {"version", document.version.value_or(0)}};
    params["diagnostics"] = diagnosticsOf(session, document);
    session.notify("textDocument/publishDiagnostics", std::move(params));
}

Json diagnosticReport(Json diagnostics, const std::string &previousId) {
    const std::string id = resultIdOf(diagnostics);
    if (previousId == id)
        return {{"kind", "unchanged"}, {"resultId", id}};
    return {{"kind", "full"}, {"resultId", id}, {"items", std::move(diagnostics)}};
}

Json diagnoseText(Session &session, const Params &params) {
    return diagnosticReport(diagnosticsOf(session, session.document(params)), params.stringOf("previousResultId"));
}
