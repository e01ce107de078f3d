#include "tool/console/TerminalBuffer.hh"
#include "tool/report/Excerpt.hh"
#include "tool/report/Report.hh"
#include "tool/report/Summary.hh"

#include <algorithm>
#include <iomanip>

namespace {

constexpr const char *kBold = "\033[1m";
constexpr const char *kRed = "\033[1;31m";
constexpr const char *kMagenta = "\033[1;35m";
constexpr const char *kCyan = "\033[1;36m";
constexpr const char *kGreen = "\033[1;32m";

constexpr int kNumberWidth = 5;
constexpr std::size_t kMargin = kNumberWidth + 3; // before the lines of a text
constexpr std::size_t kUsuallyShown = 50;         // findings of a file: later ones often follow from earlier ones
constexpr std::size_t kFewPlaces = 3;             // further places of a finding that are shown
constexpr std::size_t kNarrowest = 40, kUsual = 120;

class TextReport : public Report {
public:
    TextReport(std::ostream &out, const ReportStyle &style)
        : _out(out), _color(style.color),
          _width(style.width > 0 ? std::max(style.width, kNarrowest + kMargin) - kMargin : kUsual) {}

    std::size_t usuallyShown() const override { return kUsuallyShown; }

    void add(const Source &source, const Finding &finding) override {
        printFinding(source, finding, finding.textWithCount());
        printExcerpt(source, finding.span);
        for (const std::string &line : finding.details)
            printIndented(line);
        if (!finding.fix.empty())
            printIndented((finding.fix.isSafe ? "fix: " : "unsafe fix: ") + finding.fix.description(source.text()));
        printFurtherPlaces(source, finding);
        for (const RtiFedParser::Note &note : finding.notes) {
            printHead(source.place(note.span), kCyan, "note", note.text);
            printExcerpt(source, note.span);
        }
    }

    void endFile(const Source &source, const Tally &tally) override {
        if (tally.hidden() > 0)
            printHead(source.name(), kCyan, "note", describeHidden(tally));
        if (!tally.remark.empty())
            printHead(source.name(), kCyan, "note", tally.remark);
        if (tally.fixable > 0 && tally.errors + tally.warnings > 1)
            printHead(source.name(), kCyan, "note", describeFixable(tally));
        _summary.addFile(tally);
    }

    void failFile(const std::string &, const std::string &) override { _summary.addFailure(); }

    void end() override {
        if (_summary.isUseful())
            _out << _summary.text() << '\n';
    }

protected:
    void printFinding(const Source &source, const Finding &finding, const std::string &text) {
        const bool isError = finding.severity == Severity::error;
        printHead(source.place(finding.span), isError ? kRed : kMagenta, nameOf(finding.severity),
                  text + " [" + finding.rule->id + ']');
    }

private:
    void printHead(const std::string &place, const char *color, const char *kind, const std::string &text) {
        _out << in(kBold, place + ':') << ' ' << in(color, std::string(kind) + ':') << ' ' << text << '\n';
    }

    void printIndented(const std::string &line) { _out << std::string(kMargin, ' ') << line << '\n'; }

    void printFurtherPlaces(const Source &source, const Finding &finding) {
        const std::vector<FurtherPlace> &places = finding.furtherPlaces;
        const std::size_t few = places.size() <= kFewPlaces + 1 ? places.size() : kFewPlaces;
        for (std::size_t i = 0; i < few; ++i)
            printHead(source.place(places[i].span), kCyan, "note",
                      "also" + (places[i].particular.empty() ? " here" : places[i].particular));
        if (places.size() > few)
            printIndented("... and " + counted(places.size() - few, "more place") + " (--format concise lists all)");
    }

    void printExcerpt(const Source &source, const std::optional<RtiFedSpan> &span) {
        if (!span)
            return;
        const RtiFedPosition begin = source.begin(*span);
        const Excerpt excerpt(source.text(), *span, begin.column, _width);
        if (excerpt.line.empty())
            return;
        _out << std::setw(kNumberWidth) << begin.line << " | " << excerpt.line << '\n'
             << std::setw(kNumberWidth) << ""
             << " | " << in(kGreen, excerpt.carets) << '\n';
    }

    Colored in(const char *color, const std::string &text) const { return {_color ? color : nullptr, text}; }

    std::ostream &_out;
    bool _color;
    std::size_t _width; // of the lines of a text
    Summary _summary;
};

/// One line for each place.
class ConciseReport : public TextReport {
public:
    using TextReport::TextReport;

    std::size_t usuallyShown() const override { return kAllShown; }
    bool joinsFindings() const override { return false; }

    void add(const Source &source, const Finding &finding) override {
        const bool announced = finding.text.back() == ':'; // the text announces the details
        printFinding(source, finding,
                     finding.text +
                         (finding.details.empty() ? ""
                          : announced             ? " "
                                                  : ": ") +
                         joined(finding.details));
    }

    void endFile(const Source &source, const Tally &tally) override {
        Tally whole = tally;
        whole.fixable = 0; // scripts read each line
        TextReport::endFile(source, whole);
    }

    void end() override {}
};

} // namespace

std::unique_ptr<Report> textReport(std::ostream &out, const ReportStyle &style) {
    return std::make_unique<TextReport>(out, style);
}

std::unique_ptr<Report> conciseReport(std::ostream &out, const ReportStyle &style) {
    return std::make_unique<ConciseReport>(out, style);
}
