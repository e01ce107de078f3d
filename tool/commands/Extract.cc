#include "tool/modules/Extract.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/report/MeantClasses.hh"

Status extract(const ExtractOptions &options, const Console &console) {
    const std::unique_ptr<Module> module = readModule(readInput(options.fileName, console.stdinName), console.err);
    if (!module)
        return wrong;
    const Outline outline = outlineOf(module->original());
    ExtractedClasses wanted;
    wanted.subclasses = options.subclasses;
    bool areKnown = true;
    for (const std::string &name : options.classNames) {
        const std::vector<MeantClass> meant = meantClasses(name, module->name(), outline, console.err);
        areKnown = areKnown && !meant.empty();
        for (const auto &[kind, index] : meant)
            (kind == &kObjectTree ? wanted.objects : wanted.interactions)
                .insert(RtiStringUtility::toupper(outline.classes(*kind)[index].name));
    }
    if (!areKnown)
        return wrong;
    const Input result{options.output, extracted(*module, wanted)};
    writeOutput(options.output, result.contents, console);
    return complainIfResultRefused(result, console.err) ? wrong : done;
}
