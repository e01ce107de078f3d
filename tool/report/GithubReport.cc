#include "tool/console/Text.hh"
#include "tool/report/Report.hh"

namespace {

/// Escapes the text of a command, which must be one line.
std::string escaped(std::string_view text, std::string_view special = "%\r\n") {
    std::string shown;
    for (const char c : text)
        shown += special.find(c) == std::string_view::npos ? std::string(1, c) : percentEncoded(c);
    return shown;
}

std::string property(std::string_view value) {
    return escaped(value, "%\r\n:,");
}

std::string fileProperty(const std::string &fileName) {
    return " file=" + property(pathInRepository(fileName));
}

/// A span of several lines gets no columns: the host refuses them.
std::string propertiesOf(const Source &source, RtiFedSpan span) {
    const RtiFedPosition begin = source.characterPosition(span.begin);
    const RtiFedPosition end = source.characterPosition(span.begin + span.length);
    std::string properties = ",line=" + std::to_string(begin.line) + ",endLine=" + std::to_string(end.line);
    if (begin.line == end.line)
        properties += ",col=" + std::to_string(begin.column) + ",endColumn=" + std::to_string(end.column);
    return properties;
}

class GithubReport : public Report {
public:
    explicit GithubReport(std::ostream &out) : _out(out) {}

    bool joinsFindings() const override { return false; } // the host shows each annotation at one line

    void add(const Source &source, const Finding &finding) override {
        std::string text = finding.textWithDetails();
        for (const RtiFedParser::Note &note : finding.notes)
            text += '\n' + source.place(note.span) + ": " + note.text;
        _out << "::" << nameOf(finding.severity) << fileProperty(source.name())
             << (finding.span ? propertiesOf(source, *finding.span) : "") << ",title=" << property(finding.rule->id)
             << "::" << escaped(text) << '\n';
    }

    void endFile(const Source &source, const Tally &tally) override {
        if (tally.hidden() > 0)
            _out << "::notice" << fileProperty(source.name()) << "::" << escaped(describeHidden(tally)) << '\n';
        if (!tally.remark.empty())
            _out << "::notice" << fileProperty(source.name()) << "::" << escaped(tally.remark) << '\n';
    }

    void failFile(const std::string &fileName, const std::string &reason) override {
        _out << "::error" << fileProperty(fileName) << "::" << escaped(reason) << '\n';
    }

private:
    std::ostream &_out;
};

} // namespace

std::unique_ptr<Report> githubReport(std::ostream &out, const ReportStyle &) {
    return std::make_unique<GithubReport>(out);
}
