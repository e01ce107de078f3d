#include "tool/console/Xml.hh"
#include "tool/report/Report.hh"

namespace {

std::string attribute(const char *name, const std::string &value) {
    return std::string(" ") + name + "=\"" + xml(value, "&#10;") + '"';
}

/// A test suite for each file, and in it a test case for each finding; a file without findings has one that passes.
/// Findings that do not fail the check are output of a test case that passes.
///
/// Servers recognise a test case by its name and class from one run to the next. So the name is the text without
/// what is particular to a place and without the line.
class JunitReport : public Report {
public:
    JunitReport(std::ostream &out, Severity failOn) : _out(out), _failOn(failOn) {}

    void begin() override {
        _out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites name=\"rtifed check\">\n";
    }

    void beginFile(const Source &source, const Tally &tally) override {
        _hasCases = false;
        const std::size_t failures = tally.shownErrors() + (_failOn == Severity::warning ? tally.shownWarnings() : 0) +
                                     (refusedSilently(tally) ? 1 : 0);
        const std::size_t cases = tally.shownErrors() + tally.shownWarnings() + (refusedSilently(tally) ? 1 : 0);
        beginSuite(source.name(), std::max<std::size_t>(cases, 1), failures, 0);
    }

    void add(const Source &source, const Finding &finding) override {
        std::string name = finding.rule->id + (": " + finding.commonText());
        if (name.back() == ':') // which announces the details
            name.pop_back();
        std::string body;
        const auto addLine = [&](RtiFedSpan span, const std::string &kind, const std::string &text) {
            body += source.place(span) + ": " + kind + ": " + text + '\n';
        };
        const std::string severity = nameOf(finding.severity);
        if (finding.span)
            addLine(*finding.span, severity, finding.text);
        for (const std::string &detail : finding.details)
            body += "    " + detail + '\n';
        for (const FurtherPlace &place : finding.furtherPlaces)
            addLine(place.span, severity, finding.textAt(place));
        for (const RtiFedParser::Note &note : finding.notes)
            addLine(note.span, "note", note.text);
        beginCase(source.name(), name, finding.span ? source.begin(*finding.span).line : 0);
        if (finding.severity >= _failOn)
            endCase("failure", severity, finding.textWithCount(), body);
        else
            endCase(body);
    }

    void endFile(const Source &source, const Tally &tally) override {
        if (refusedSilently(tally)) {
            beginCase(source.name(), "refused", 0);
            endCase("failure", "error", tally.remark, "");
        } else if (!_hasCases) {
            beginCase(source.name(), "check", 0);
            endCase("");
        }
        std::string remark = refusedSilently(tally) ? "" : tally.remark;
        if (tally.hidden() > 0)
            remark += (remark.empty() ? "" : "\n") + describeHidden(tally);
        if (!remark.empty())
            _out << "    <system-out>" << xml(remark) << "</system-out>\n";
        _out << "  </testsuite>\n";
    }

    void failFile(const std::string &fileName, const std::string &reason) override {
        beginSuite(fileName, 1, 0, 1);
        beginCase(fileName, "check", 0);
        endCase("error", "unreadable", reason, "");
        _out << "  </testsuite>\n";
    }

    void end() override { _out << "</testsuites>\n"; }

private:
    /// Whether the check fails though no finding says so.
    static bool refusedSilently(const Tally &tally) { return tally.refused && tally.errors == 0; }

    void beginSuite(const std::string &fileName, std::size_t tests, std::size_t failures, std::size_t errors) {
        _out << "  <testsuite" << attribute("name", fileName) << attribute("tests", std::to_string(tests))
             << attribute("failures", std::to_string(failures)) << attribute("errors", std::to_string(errors)) << ">\n";
    }

    /// `line` is 0 if there is none.
    void beginCase(const std::string &fileName, const std::string &name, unsigned long line) {
        _hasCases = true;
        _out << "    <testcase" << attribute("name", name) << attribute("classname", fileName)
             << attribute("file", fileName) << (line > 0 ? attribute("line", std::to_string(line)) : "") << ">\n";
    }

    void endCase(const std::string &output) {
        if (!output.empty())
            _out << "      <system-out>" << xml(output) << "</system-out>\n";
        _out << "    </testcase>\n";
    }

    void endCase(const char *element, const std::string &type, const std::string &message, const std::string &body) {
        _out << "      <" << element << attribute("type", type) << attribute("message", message) << '>' << xml(body)
             << "</" << element << ">\n    </testcase>\n";
    }

    std::ostream &_out;
    const Severity _failOn;
    bool _hasCases = false; // in the current test suite
};

} // namespace

std::unique_ptr<Report> junitReport(std::ostream &out, const ReportStyle &style) {
    return std::make_unique<JunitReport>(out, style.failOn);
}
