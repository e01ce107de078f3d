#include "tool/model/Model.hh"

#include "tool/check/Checker.hh"
#include "tool/check/Warnings.hh"
#include "tool/report/TextReport.hh"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Whether all spaces, transportations and orderings that a model refers to are there.
bool refersToWhatThereIs(const RtiFedDatabase &database) {
    std::ostream nowhere(nullptr);
    try {
        database.dumpDatabase(&nowhere);
        return true;
    } catch (const RTI::Exception &) {
        return false;
    }
}

/// An image has one finding at most: one that can be restored is sound.
std::optional<Finding> findingOfImage(const Input &input, Severity least) {
    const auto found = [](RuleId rule, std::string text) {
        return Finding{&ruleOf(rule), {}, std::move(text), {}, {}, {}};
    };
    try {
        const auto database = restoreImage(input.contents);
        if (least == Severity::warning && !refersToWhatThereIs(*database))
            return found(RuleId::danglingReference,
                         "the model refers to a space, transportation or ordering that does not exist");
        return {};
    } catch (const RTI::Exception &refused) {
        return found(RuleId::damagedImage, RtiFedParser::printable(refused._reason, 300));
    }
}

Tally reportImage(const Input &input, Severity least, std::size_t most, Report &report) {
    const std::optional<Finding> finding = findingOfImage(input, least);
    const Source source(input.name, nullptr);
    Tally tally;
    if (finding) {
        const bool isError = finding->rule->severity == Severity::error;
        (isError ? tally.errors : tally.warnings) = 1;
        if (most == 0)
            (isError ? tally.hiddenErrors : tally.hiddenWarnings) = 1;
    }
    report.beginFile(source);
    if (finding && most > 0)
        report.add(source, *finding);
    report.endFile(source, tally);
    return tally;
}

Tally reportText(const Input &input, Severity least, std::size_t most, Report &report) {
    const Checker text(input.contents);
    const std::vector<Finding> warnings = least == Severity::warning ? warningsOf(text) : std::vector<Finding>();
    Tally tally;
    tally.errors = text.numErrors();
    tally.warnings = warnings.size();
    const std::size_t errorsShown = std::min(tally.errors, most);
    const std::size_t warningsShown = std::min(tally.warnings, most - errorsShown);
    tally.hiddenErrors = tally.errors - errorsShown;
    tally.hiddenWarnings = tally.warnings - warningsShown;

    const Source source(input.name, &text.parser());
    report.beginFile(source);
    std::size_t left = errorsShown;
    if (left > 0)
        text.forEachFinding([&](const Finding &error) {
            report.add(source, error);
            return --left > 0;
        });
    for (std::size_t i = 0; i < warningsShown; ++i)
        report.add(source, warnings[i]);
    report.endFile(source, tally);
    return tally;
}

} // namespace

std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    auto database = std::make_unique<RtiFedDatabase>(buffer);
    if (buffer.remaining() > 0)
        throw RTI::RTIinternalError(("image byte " + std::to_string(buffer.size() - buffer.remaining()) + ": " +
                                     std::to_string(buffer.remaining()) + " bytes stand behind the image")
                                        .c_str());
    return database;
}

Tally reportFindings(const Input &input, Severity least, std::size_t most, Report &report) {
    return input.isImage() ? reportImage(input, least, most, report) : reportText(input, least, most, report);
}

std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints) {
    TextReport report(complaints, false, 0);
    const Tally tally = reportFindings(input, Severity::error, kUsuallyShown, report);
    if (tally.errors > 0)
        return nullptr;
    return buildModel(input);
}

std::unique_ptr<RtiFedDatabase> buildModel(const Input &input) {
    if (input.isImage())
        return restoreImage(input.contents);
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(input.name, RTI_false));
    // The stream only reads, though its interface would let it write.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    std::FILE *text = fmemopen(const_cast<char *>(input.contents.data()), input.contents.size(), "r");
    if (!text)
        throw CannotWork(input.name + ": " + std::strerror(errno));
    database->buildFromFed(text);
    return database;
}
