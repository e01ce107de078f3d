#include "tool/report/Loading.hh"

#include "tool/check/ReadOutline.hh"
#include "tool/check/SyntaxFindings.hh"
#include "tool/console/Text.hh"
#include "tool/model/Model.hh"
#include "tool/report/FileFindings.hh"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace {

/// Keeps the first finding of a file.
class FirstFinding : public Report {
public:
    void add(const Source &source, const Finding &finding) override {
        if (finding.span)
            _place = textOf(source.begin(*finding.span));
        _text = finding.text;
        // The colon announces the details. equivalent: other texts do not end with one
        if (!finding.details.empty() && _text.back() == ':')
            _text.pop_back();
    }

    void endFile(const Source &, const Tally &tally) override { _numErrors = tally.errors; }

    bool found() const { return _numErrors > 0; }

    /// Describes the errors, such as `3 errors, the first at 4:3: TEXT`.
    std::string summary() const {
        if (_place.empty())
            return _text;
        return counted(_numErrors, "error") + (_numErrors == 1 ? " at " : ", the first at ") + _place + ": " + _text;
    }

private:
    std::string _place, _text;
    std::size_t _numErrors = 0; // equivalent: the end of the file sets it
};

bool complainIfXml(const Input &input, std::ostream &complaints) {
    if (input.isXml())
        complaints << "rtifed: " << input.name
                   << ": expected FED text or an image, found XML, which rtifed import turns into FED\n";
    return input.isXml();
}

/// Describes why a file is refused, without a line end; empty if it is not.
std::string refusalOf(const CheckedFile &file, const char *consequence) {
    std::vector<Finding> errors;
    std::copy_if(file.findings.begin(), file.findings.end(), std::back_inserter(errors),
                 [](const Finding &finding) { return finding.refusesFile(); });
    FirstFinding first;
    reportFindings(Source(file.name, file.text ? &file.text->parser() : nullptr), std::move(errors), 1, first);
    if (!first.found())
        return {};
    return "rtifed: " + file.name + ": the library refuses this file" + consequence + ": " + first.summary();
}

} // namespace

std::string complaintAbout(const CheckedFile &file, const char *consequence) {
    const std::string refusal = refusalOf(file, consequence);
    return refusal.empty() ? refusal : refusal + (file.text ? "; see rtifed check " + file.name : "") + '\n';
}

bool complainIfRefused(Input input, const char *consequence, std::ostream &complaints) {
    if (complainIfXml(input, complaints))
        return true; // equivalent: those who ask have no XML
    const std::string complaint = complaintAbout(checkFile(std::move(input), Severity::error), consequence);
    complaints << complaint;
    return !complaint.empty();
}

bool complainIfResultRefused(Input result, std::ostream &complaints) {
    if (result.name != "-")
        return complainIfRefused(std::move(result), "", complaints);
    result.name = "the result";
    const std::string refusal = refusalOf(checkFile(std::move(result), Severity::error), "");
    complaints << (refusal.empty() ? "" : refusal + '\n');
    return !refusal.empty();
}

std::unique_ptr<RtiFedDatabase> loadModel(Input input, std::ostream &complaints) {
    if (complainIfXml(input, complaints))
        return nullptr;
    if (!input.isImage()) {
        auto text = std::make_unique<Checker>(std::move(input.contents), input.name);
        if (text->findsNoError())
            return std::move(*text).takeDatabase();
        complaints << complaintAbout(checkText(std::move(input.name), std::move(text), Severity::error), "");
        return nullptr;
    }
    try {
        return restoreImage(input.contents);
    } catch (const RTI::Exception &) {
        complainIfRefused(std::move(input), "", complaints);
        return nullptr;
    }
}

std::optional<ShownFile> fileToShow(Input input, std::ostream &complaints) {
    if (complainIfXml(input, complaints))
        return {};
    if (input.isImage()) {
        auto database = loadModel(std::move(input), complaints);
        if (!database)
            return {};
        Outline outline(*database, nullptr, true);
        return ShownFile{std::move(outline), std::move(database)};
    }
    auto text = std::make_unique<Checker>(std::move(input.contents), input.name);
    Outline outline = outlineOf(*text);
    if (outline.loads)
        return ShownFile{std::move(outline), std::move(*text).takeDatabase()};
    complaints << complaintAbout(checkText(std::move(input.name), std::move(text), Severity::error), kOnlyUnderstood);
    return ShownFile{std::move(outline), nullptr};
}

std::optional<Outline> outlineToShow(Input input, std::ostream &complaints) {
    auto file = fileToShow(std::move(input), complaints);
    return file ? std::optional(std::move(file->outline)) : std::nullopt;
}

ComparedFile loadForComparison(Input input) {
    try {
        Outline outline = readOutline(input);
        return {std::move(input), std::move(outline)};
    } catch (const RTI::Exception &refused) {
        throw CannotWork(input.name + ": " + reasonOf(refused));
    }
}

bool complainIfImage(const Input &input, std::ostream &complaints) {
    if (input.isImage())
        complaints << input.name << ": error: expected FED text, found a saved image\n";
    return input.isImage();
}

bool reportSyntaxErrors(const RtiFedParser &parser, const std::string &name, std::ostream &complaints) {
    if (parser.numErrors() == 0)
        return false;
    const auto report = textReport(complaints, {});
    const Source source(name, &parser);
    const Tally tally{parser.numErrors(), 0, report->usuallyShown()};
    for (std::size_t i = 0; i < tally.shownErrors(); ++i)
        report->add(source, findingOf(parser.error(i), parser.text()));
    report->endFile(source, tally);
    return true;
}
