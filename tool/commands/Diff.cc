#include "tool/check/Checker.hh"
#include "tool/commands/Commands.hh"
#include "tool/fom/import/FomOutline.hh"
#include "tool/fom/import/Import.hh"
#include "tool/input/Revision.hh"
#include "tool/report/DiffReport.hh"
#include "tool/report/json/DiffJson.hh"

#include <utility>

namespace {

/// Notes that a file which the library refuses was compared nevertheless.
void noteRefused(const Difference &difference, std::ostream &err) {
    if (difference.comparison.verdict() == Comparison::Verdict::identical)
        return;
    for (const ComparedFile *file : {&difference.before, &difference.after})
        if (!file->outline.loads)
            err << "rtifed: " << file->input.name << (file->input.isXml() ? " cannot be imported" : " does not load")
                << " (rtifed check shows why): only what can be understood is compared, without handles\n";
}

/// Returns an object model to compare. Throws CannotWork if nothing of it can be understood.
ComparedFile loadObjectModel(Input input, const std::vector<Outline::Space> &similar) {
    const Import import({input});
    const FomModules::Module &module = import.modules().front();
    if (!import.isUnderstood())
        throw CannotWork(textOf(input.name, module.text->positionAt(module.findings.front().span->begin)) + ": " +
                         module.findings.front().text);
    return {std::move(input), import.outline(similar)};
}

/// Returns a FED file to compare with an object model. Members that a class declares again are no loss: they are
/// inherited, as in the object model.
ComparedFile loadCounterpart(Input input) {
    ComparedFile file = loadForComparison(std::move(input));
    bool onlyRedeclares = !file.input.isImage();
    if (file.outline.incompleteAt && onlyRedeclares)
        Checker(file.input.contents).forEachFinding([&](const Finding &error) {
            onlyRedeclares = error.rule == &ruleOf(RuleId::inheritedMember);
            return onlyRedeclares;
        });
    if (onlyRedeclares)
        file.outline.incompleteAt.reset();
    return file;
}

/// Returns the two files to compare. If one of them is in XML, what XML lacks is left out of both.
std::pair<ComparedFile, ComparedFile> load(Input before, Input after) {
    if (!before.isXml() && !after.isXml())
        return {loadForComparison(std::move(before)), loadForComparison(std::move(after))};
    ComparedFile old = before.isXml() ? ComparedFile{before, {}} : loadCounterpart(std::move(before));
    ComparedFile now =
        after.isXml() ? loadObjectModel(std::move(after), old.outline.spaces) : loadCounterpart(std::move(after));
    if (old.input.isXml())
        old = loadObjectModel(std::move(old.input), now.outline.spaces);
    removeWhatXmlLacks(old.outline, now.outline);
    return {std::move(old), std::move(now)};
}

} // namespace

Status diff(const DiffOptions &options, const Console &console) {
    if (options.oldName == "-" && options.newName == "-")
        throw CannotWork("standard input can be one of the files, not both");
    Input before = options.against.empty() ? readInputOrRevision(options.oldName, console.stdinName)
                                           : readRevision(options.against, options.newName);
    Input after = readInputOrRevision(options.newName, console.stdinName);
    const auto [old, now] = load(std::move(before), std::move(after));
    const Difference difference(old, now);
    if (!options.quiet) {
        noteRefused(difference, console.err);
        if (options.json) {
            JsonWriter json(console.out, JsonWriter::Layout::compact);
            writeDifference(json, difference);
        } else {
            writeDifference(difference, options.all, console);
        }
    }
    return difference.comparison.verdict() >= options.failOn ? wrong : done;
}
