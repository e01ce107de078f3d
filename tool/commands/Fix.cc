#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/comparison/MovedHandles.hh"
#include "tool/comparison/UnderstoodVerdict.hh"
#include "tool/control/Decision.hh"

namespace {

constexpr std::size_t kMostErrors = 5; // that are shown if they are left

class FixReport {
public:
    FixReport(const Input &input, std::ostream &out) : _input(input), _out(out) {}

    void add(RtiFedPosition place, const Rule &rule, bool isSafe, const std::string &what) const {
        _out << textOf(_input.name, place) << (isSafe ? ": fix: " : ": unsafe fix: ") << what << " [" << rule.id
             << "]\n";
    }

    /// Shows what still keeps the file from loading, with its places in the file: those of the new text if it is
    /// written.
    void showErrors(const FixedText &fixed, bool isWritten) const {
        const CheckedFile &file = fixed.left;
        const RtiFedParser old(_input.contents);
        std::size_t numShown = 0;
        for (const Finding &finding : file.findings)
            if (finding.refusesFile() && ++numShown <= kMostErrors) {
                const std::uint32_t at = finding.span ? finding.span->begin : 0;
                const RtiFedPosition place =
                    isWritten ? file.text->parser().positionAt(at) : old.positionAt(fixed.text.originalOffset(at));
                _out << textOf(_input.name, place) << ": error: " << finding.text
                     << (finding.details.empty() ? "" : " ") << joined(finding.details) << " [" << finding.rule->id
                     << "]\n";
            }
        if (numShown > kMostErrors)
            _out << _input.name << ": note: " << numShown - kMostErrors
                 << " more errors are left; rtifed check shows all\n";
    }

    /// Says what the fixes mean for the model, and whether it loads.
    void sumUp(const FixedText &fixed, std::size_t numErrors) const {
        const auto numUnsafe =
            std::count_if(fixed.left.findings.begin(), fixed.left.findings.end(), [](const Finding &finding) {
                return finding.refusesFile() && !finding.fix.isSafe && FixSelection{true}.takes(finding);
            });
        _out << _input.name << ": "
             << (fixed.made.empty()       ? "no fix"
                 : fixed.made.size() == 1 ? "1 fix"
                                          : std::to_string(fixed.made.size()) + " fixes")
             << (fixed.made.empty() ? "" : describeChange(fixed));
        if (numErrors == 0)
            _out << "; the file loads\n";
        else
            _out << "; " << counted(numErrors, "error") << (numErrors == 1 ? " keeps" : " keep")
                 << " the file from loading" << (numUnsafe == 0 ? "" : "; --unsafe fixes " + std::to_string(numUnsafe))
                 << '\n';
    }

private:
    std::string describeChange(const FixedText &fixed) const {
        const Outline before = readOutline({_input.name, _input.contents});
        const Outline after = readOutline({_input.name, fixed.text.text()});
        return std::string("; the model") + (before.loads ? "" : ", as far as it was understood") + ": " +
               Comparison::nameOf(understoodVerdict(before, after)) + ", " + movedHandles(before, after);
    }

    const Input &_input;
    std::ostream &_out;
};

bool listFixes(const Input &input, const Settings &settings, const FixSelection &selection, const Console &console) {
    if (complainIfImage(input, console.err))
        return false;
    CheckedFile file = checkFile(input, Severity::warning);
    decide(file, settings, nullptr);
    const FixReport report(input, console.out);
    for (const Finding &finding : file.findings)
        if (selection.takes(finding))
            report.add(file.text->parser().positionAt(finding.span->begin), *finding.rule, finding.fix.isSafe,
                       finding.fix.description(input.contents));
    return true;
}

} // namespace

Status fix(const FixOptions &options, const Console &console) {
    Configurations configurations(options.configuration);
    if (options.list) {
        FixSelection all = options.selection;
        all.unsafe = true;
        const auto list = [&](const Input &input) {
            return listFixes(input, configurations.settingsFor(input.name), all, console);
        };
        return forEachFile(withoutFolders(options.rewrite.files), console, list, [](auto &, auto &) {});
    }
    return rewriteFiles(options.rewrite, console, [&](const Input &input) -> std::optional<Rewritten> {
        if (!input.whole)
            throw CannotWork(input.name + ": not changed, since it has a NUL byte, after which it is not read");
        const FixedText fixed = withFixes(input, configurations.settingsFor(input.name), options.selection);
        TextStream lines; // written after the file
        const FixReport report(input, lines);
        for (const MadeFix &made : fixed.made)
            report.add(made.place, *made.rule, made.isSafe, made.text);
        report.showErrors(fixed, options.rewrite.write);
        const auto numErrors =
            static_cast<std::size_t>(std::count_if(fixed.left.findings.begin(), fixed.left.findings.end(),
                                                   [](const Finding &finding) { return finding.refusesFile(); }));
        report.sumUp(fixed, numErrors);
        return Rewritten{fixed.text.text(), numErrors == 0, lines.str()};
    });
}
