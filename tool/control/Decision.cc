#include "tool/control/Decision.hh"

#include "tool/control/HabitFindings.hh"
#include "tool/control/Suppressions.hh"

#include <algorithm>
#include <iterator>

namespace {

using Findings = std::vector<Finding>;

void append(Findings &findings, Findings more) {
    std::move(more.begin(), more.end(), std::back_inserter(findings));
}

/// Marks the findings that comments allow, and adds findings about comments. Comments that were not needed are not
/// reported if a rule may not have been checked: in a text with syntax errors, and habits that are off.
void applyComments(const Checker &text, const Settings &settings, Findings &findings) {
    Suppressions suppressions(text.parser());
    append(findings, suppressions.bad());
    for (Finding &finding : findings)
        finding.suppression = suppressions.find(*finding.rule, finding.span->begin);
    if (text.parser().numErrors() == 0)
        append(findings, suppressions.unused(
                             [&](const Rule &rule) { return !rule.isHabit() || settings.level(rule) != Level::off; }));
}

void applySettings(const Settings &settings, Findings &findings) {
    for (Finding &finding : findings) {
        const auto &[level, origin] = settings.levels[finding.rule->index];
        if (level != Level::off)
            finding.severity = level == Level::error ? Severity::error : Severity::warning;
        else if (!finding.suppression)
            finding.suppression = {Suppression::Kind::byConfiguration, "switched off by " + origin};
    }
}

/// Puts the warnings in the order of the text.
void sortWarnings(Findings &findings) {
    const auto warnings = std::stable_partition(findings.begin(), findings.end(),
                                                [](const Finding &finding) { return finding.refusesFile(); });
    std::stable_sort(warnings, findings.end(),
                     [](const Finding &a, const Finding &b) { return a.span->begin < b.span->begin; });
}

} // namespace

void decide(CheckedFile &file, const Settings &settings, Baseline *baseline) {
    if (file.text) {
        append(file.findings, habitFindings(*file.text, settings));
        applyComments(*file.text, settings, file.findings);
        sortWarnings(file.findings);
    }
    applySettings(settings, file.findings);
    if (!baseline)
        return;
    baseline->beginFile(file.name);
    for (Finding &finding : file.findings)
        if (!finding.suppression && baseline->take(finding))
            finding.suppression = {Suppression::Kind::byBaseline, "known in the baseline"};
}
