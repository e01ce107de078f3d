#include "tool/report/FileFindings.hh"

#include "tool/console/Text.hh"
#include "tool/report/Grouping.hh"

#include <algorithm>

namespace {

bool isReported(const Finding &finding) {
    return !finding.suppression;
}

bool isError(const Finding &finding) {
    return finding.severity == Severity::error;
}

/// Returns why errors that make the library refuse the file are not reported as errors, and how many for each reason.
std::vector<std::pair<std::string, std::size_t>> refusalsByReason(const std::vector<Finding> &findings) {
    std::vector<std::pair<std::string, std::size_t>> reasons;
    for (const Finding &finding : findings) {
        if (!finding.refusesFile() || (isReported(finding) && isError(finding)))
            continue;
        const std::string reason = !finding.suppression ? "reported as a warning"
                                   : finding.suppression->kind == Suppression::Kind::inText
                                       ? "allowed by a comment"
                                       : finding.suppression->justification;
        const auto known =
            std::find_if(reasons.begin(), reasons.end(), [&](const auto &r) { return r.first == reason; });
        ++(known == reasons.end() ? reasons.emplace_back(reason, 0) : *known).second;
    }
    return reasons;
}

/// Says so: `2 errors are allowed by a comment; the library refuses the file`; empty if all are reported.
std::string describeRefusals(const std::vector<Finding> &findings) {
    std::vector<std::string> parts;
    for (const auto &[reason, count] : refusalsByReason(findings))
        parts.push_back(counted(count, "error") + (count == 1 ? " is " : " are ") + reason);
    return parts.empty() ? "" : joined(parts) + "; the library refuses the file";
}

/// Syntax errors are the gravest, since others may follow from them; the note that there are too many errors says
/// nothing about the text.
int gravityOf(const Rule &rule) {
    // equivalent: any three numbers in this order; the note is the last of the findings, so that the first two can be
    // equal
    return &rule == &ruleOf(RtiFedParser::tooManyErrors) ? 0 : rule.index < kNumProblems ? 2 : 1;
}

Tally tallyOf(const std::vector<Finding> &findings, std::size_t most) {
    Tally tally{0, 0, most};
    for (const Finding &finding : findings) {
        const bool known = finding.suppression && finding.suppression->kind == Suppression::Kind::byBaseline;
        tally.refused = tally.refused || (finding.refusesFile() && !known);
        if (finding.refusesFile() && (!tally.gravest || gravityOf(*finding.rule) > gravityOf(*tally.gravest)))
            tally.gravest = finding.rule;
        ++(!isReported(finding) ? tally.suppressed : isError(finding) ? tally.errors : tally.warnings);
        tally.fixable += isReported(finding) && finding.fix.isSafe ? 1 : 0;
    }
    tally.remark = describeRefusals(findings);
    return tally;
}

} // namespace

Tally reportFindings(CheckedFile file, std::size_t most, Report &report) {
    const Source source(file.name, file.text ? &file.text->parser() : nullptr);
    return reportFindings(source, std::move(file.findings), most, report);
}

Tally reportFindings(const Source &source, std::vector<Finding> findings, std::size_t most, Report &report) {
    std::stable_partition(findings.begin(), findings.end(), isError);
    if (report.joinsFindings())
        findings = grouped(std::move(findings));
    Tally tally = tallyOf(findings, most);
    report.beginFile(source, tally);
    std::size_t left = most;
    for (const Finding &finding : findings)
        if (isReported(finding) ? left > 0 : report.showsSuppressed()) {
            report.add(source, finding);
            left -= isReported(finding) ? 1 : 0;
        }
    report.endFile(source, tally);
    return tally;
}
