#include "tool/report/Loading.hh"

#include "tool/check/ReadOutline.hh"
#include "tool/check/SyntaxFindings.hh"
#include "tool/console/Text.hh"
#include "tool/model/Model.hh"
#include "tool/report/FileFindings.hh"

namespace {

/// Keeps the first finding of a file.
class FirstFinding : public Report {
public:
    void add(const Source &source, const Finding &finding) override {
        if (finding.span)
            _place = textOf(source.begin(*finding.span));
        _text = finding.text;
        if (!finding.details.empty() && _text.back() == ':') // which announces the details
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
    std::size_t _numErrors = 0;
};

} // namespace

bool complainIfRefused(const Input &input, const char *consequence, std::ostream &complaints) {
    if (input.isXml()) {
        complaints << "rtifed: " << input.name
                   << ": expected FED text or an image, found XML, which rtifed import turns into FED\n";
        return true;
    }
    FirstFinding first;
    reportFindings(input, Severity::error, 1, first);
    if (first.found())
        complaints << "rtifed: " << input.name << ": the library refuses this file" << consequence << ": "
                   << first.summary() << (input.isImage() ? "" : "; see rtifed check " + input.name) << '\n';
    return first.found();
}

std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints) {
    return complainIfRefused(input, "", complaints) ? nullptr : buildModel(input);
}

std::optional<Outline> outlineToShow(const Input &input, std::ostream &complaints) {
    try {
        Outline outline = readOutline(input);
        if (!outline.loads)
            complainIfRefused(input, kOnlyUnderstood, complaints);
        return outline;
    } catch (const RTI::Exception &) {
        complainIfRefused(input, "", complaints);
        return {};
    }
}

ComparedFile loadForComparison(Input input) {
    try {
        Outline outline = readOutline(input);
        return {std::move(input), std::move(outline)};
    } catch (const RTI::Exception &refused) {
        throw CannotWork(input.name + ": " + reasonOf(refused));
    }
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
