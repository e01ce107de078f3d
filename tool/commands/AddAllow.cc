#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/control/AllowComments.hh"
#include "tool/control/Decision.hh"

namespace {

/// Whether the comments changed neither the findings, apart from their places and those about comments, nor the model.
bool isSame(const CheckedFile &before, const CheckedFile &after) {
    Baseline known(".");
    const auto isAboutComments = [](const Finding &finding) {
        return finding.rule == &ruleOf(RuleId::badSuppression) || finding.rule == &ruleOf(RuleId::unusedSuppression);
    };
    for (const Finding &finding : before.findings)
        if (!isAboutComments(finding))
            known.add(finding);
    const bool allKnown = std::all_of(after.findings.begin(), after.findings.end(), [&](const Finding &finding) {
        return isAboutComments(finding) || known.take(finding);
    });
    return allKnown && known.size() == 0 &&
           before.text->database().getChecksum() == after.text->database().getChecksum();
}

void describe(const AllowedText &allowed, const CheckedFile &file, std::ostream &out) {
    const auto count = [&](auto applies) {
        return static_cast<std::size_t>(std::count_if(file.findings.begin(), file.findings.end(), applies));
    };
    const std::size_t numLeft = count([](const Finding &finding) { return !finding.suppression; });
    out << file.name << ": ";
    if (allowed.numComments == 0)
        out << "nothing to allow";
    else
        out << counted(allowed.numComments, "comment") << (allowed.numComments == 1 ? " allows " : " allow ")
            << counted(allowed.numFindings, "finding");
    if (numLeft > 0)
        out << "; " << counted(numLeft, "finding") << (numLeft == 1 ? " is" : " are")
            << " left, such as those about comments";
    if (count([](const Finding &finding) { return finding.refusesFile(); }) > 0)
        out << "; the library refuses the file all the same";
    out << '\n';
}

} // namespace

Status addAllowComments(const CheckOptions &options, const Console &console) {
    for (const std::string &file : options.files)
        if (file == "-")
            throw CannotWork("--add-allow changes files, and standard input is none");
    Configurations configurations(options.configuration);
    const auto allowAll = [&](const Input &input) {
        if (input.isImage())
            throw CannotWork(input.name + ": a saved image cannot have comments");
        if (input.isXml())
            throw CannotWork(input.name + ": an object model in XML cannot have comments that allow findings");
        if (!input.whole)
            throw CannotWork(input.name + ": not changed, since it has a NUL byte, after which it is not read");
        const auto check = [&](const Input &text) {
            CheckedFile file = checkFile(text, Severity::warning);
            decide(file, configurations.settingsFor(text.name), nullptr);
            return file;
        };
        const CheckedFile file = check(input);
        const AllowedText allowed = addAllowComments(*file.text, file.findings, options.addAllow);
        const CheckedFile changed = check({input.name, allowed.text});
        if (!isSame(file, changed))
            throw CannotWork(input.name + ": not changed, since with the comments check finds something else");
        if (allowed.numComments > 0)
            writeFile(input.name, allowed.text.data(), allowed.text.size());
        if (!options.quiet)
            describe(allowed, changed, console.out);
        return true;
    };
    return forEachFile(withoutFolders(options.files), console, allowAll,
                       [](const std::string &, const std::string &) {});
}
