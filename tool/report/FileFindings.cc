#include "tool/report/FileFindings.hh"

#include "tool/check/Checker.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/check/Warnings.hh"
#include "tool/console/Text.hh"
#include "tool/model/Model.hh"

namespace {

/// Returns the one finding that an image may have: the library checks all else when it restores the image.
std::optional<Finding> findingOfImage(const Input &input, Severity least) {
    try {
        const auto model = restoreImage(input.contents);
        std::ostream nowhere(nullptr);
        if (least == Severity::warning && !writeListing(*model, nowhere))
            return Finding{&ruleOf(RuleId::danglingReference), {}, kDanglingReference};
        return {};
    } catch (const RTI::Exception &refused) {
        return Finding{&ruleOf(RuleId::damagedImage), {}, reasonOf(refused)};
    }
}

Tally reportImage(const Input &input, Severity least, std::size_t most, Report &report) {
    const std::optional<Finding> finding = findingOfImage(input, least);
    const Source source(input.name, nullptr);
    const bool isError = finding && finding->rule->severity == Severity::error;
    const Tally tally{isError ? 1U : 0U, finding && !isError ? 1U : 0U, most};
    report.beginFile(source);
    if (finding && most > 0)
        report.add(source, *finding);
    report.endFile(source, tally);
    return tally;
}

Tally reportText(const Input &input, Severity least, std::size_t most, Report &report) {
    const Checker text(input.contents);
    const std::vector<Finding> warnings = least == Severity::warning ? warningsOf(text) : std::vector<Finding>();
    const Tally tally{text.numErrors(), warnings.size(), most};
    const Source source(input.name, &text.parser());
    report.beginFile(source);
    std::size_t left = tally.shownErrors();
    if (left > 0)
        text.forEachFinding([&](const Finding &error) {
            report.add(source, error);
            return --left > 0;
        });
    for (std::size_t i = 0; i < tally.shownWarnings(); ++i)
        report.add(source, warnings[i]);
    report.endFile(source, tally);
    return tally;
}

} // namespace

Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report) {
    return input.isImage() ? reportImage(input, least, most, report) : reportText(input, least, most, report);
}

std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints) {
    const auto report = textReport(complaints, false, 0);
    return reportFindings(input, Severity::error, kUsuallyShown, *report).errors > 0 ? nullptr : buildModel(input);
}

std::optional<Outline> outlineToShow(const Input &input, std::ostream &complaints) {
    try {
        Outline outline = readOutline(input);
        if (!outline.loads)
            complaints
                << input.name
                << ": the library refuses this file (rtifed check shows why); only what can be understood is shown\n";
        return outline;
    } catch (const RTI::Exception &refused) {
        complaints << input.name << ": error: " << reasonOf(refused) << '\n';
        return {};
    }
}
