#include "tool/report/FileFindings.hh"

#include "tool/check/Warnings.hh"
#include "tool/console/Text.hh"
#include "tool/model/Model.hh"
#include "tool/report/Grouping.hh"

#include <algorithm>

namespace {

/// Returns the one finding that an image may have: the library checks all else when it restores the image.
std::vector<Finding> findingsOfImage(const Input &input, Severity least) {
    try {
        const auto model = restoreImage(input.contents);
        std::ostream nowhere(nullptr);
        if (least == Severity::warning && !writeListing(*model, nowhere))
            return {{&ruleOf(RuleId::danglingReference), {}, kDanglingReference}};
        return {};
    } catch (const RTI::Exception &refused) {
        return {{&ruleOf(RuleId::damagedImage), {}, reasonOf(refused)}};
    }
}

std::vector<Finding> findingsOfText(const Checker &text, Severity least) {
    std::vector<Finding> findings;
    text.forEachFinding([&](const Finding &error) {
        findings.push_back(error);
        return true;
    });
    if (least == Severity::warning)
        for (Finding &warning : warningsOf(text))
            findings.push_back(std::move(warning));
    return findings;
}

bool isReported(const Finding &finding) {
    return !finding.suppression;
}

bool isError(const Finding &finding) {
    return finding.severity == Severity::error;
}

/// Says which errors that make the library refuse the file are not shown as errors; empty if all are.
std::string describeRefusals(const std::vector<Finding> &findings) {
    const auto count = [&](auto applies) {
        return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), [&](const Finding &finding) {
            return finding.refusesFile() && applies(finding);
        }));
    };
    std::vector<std::string> parts;
    const auto add = [&](std::size_t number, const std::string &how) {
        if (number > 0)
            parts.push_back(counted(number, "error") + (number == 1 ? " is " : " are ") + how);
    };
    using Kind = Suppression::Kind;
    for (const auto &[kind, how] : {std::pair(Kind::inText, "hidden by comments"),
                                    std::pair(Kind::byConfiguration, "hidden by the configuration"),
                                    std::pair(Kind::byBaseline, "in the baseline")})
        add(count([kind = kind](const Finding &f) { return f.suppression && f.suppression->kind == kind; }), how);
    add(count([](const Finding &f) { return isReported(f) && !isError(f); }), "reported as warnings");
    return parts.empty() ? "" : joined(parts, ", ") + "; the library refuses the file";
}

/// Syntax errors are the gravest, since others may follow from them; the note that there are too many errors says
/// nothing about the text.
int gravityOf(const Rule &rule) {
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
    }
    tally.remark = describeRefusals(findings);
    return tally;
}

/// Reports those of the findings that are to be shown.
Tally reportAll(const Source &source, std::vector<Finding> findings, std::size_t most, Report &report) {
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

} // namespace

Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report, const Control &control) {
    std::optional<Checker> text;
    if (!input.isImage())
        text.emplace(input.contents);
    std::vector<Finding> findings = text ? findingsOfText(*text, least) : findingsOfImage(input, least);
    if (control)
        control(text ? &*text : nullptr, findings);
    return reportAll(Source(input.name, text ? &text->parser() : nullptr), std::move(findings), most, report);
}
