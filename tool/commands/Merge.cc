#include "tool/modules/Merge.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"
#include "tool/model/MovedHandles.hh"

#include <list>
#include <memory>

namespace {

/// Says of each module what has become of its names and handles.
void reportHandles(const std::list<std::unique_ptr<Module>> &modules, const Input &result, std::ostream &err) {
    const Outline after = readOutline(result);
    for (const std::unique_ptr<Module> &module : modules) {
        const Outline before = outlineOf(module->original());
        err << module->name() << ": the merged model, compared with this one: "
            << Comparison::nameOf(Comparison(before, after, false).verdict());
        if (before.loads && after.loads)
            err << ", " << movedHandles(before, after);
        err << '\n';
    }
}

} // namespace

Status merge(const MergeOptions &options, const Console &console) {
    std::list<std::unique_ptr<Module>> modules;
    const auto read = [&](Input input) {
        if (std::unique_ptr<Module> module = readModule(std::move(input), console.err))
            modules.push_back(std::move(module));
        else
            return false;
        return true;
    };
    if (const Status status = forEachFile(withoutFolders(options.files), console, read, [](auto &, auto &) {});
        status != done)
        return status;

    Merge merged(options.firstMom);
    for (const std::unique_ptr<Module> &module : modules)
        merged.add(*module);
    merged.checkInheritance();
    for (const Merge::Message &conflict : merged.conflicts())
        console.err << conflict.place << ": error: " << conflict.text << '\n';
    if (const std::size_t number = merged.conflicts().size(); number > 0) {
        console.err << "rtifed: nothing is written because of " << counted(number, "conflict") << '\n';
        return wrong;
    }
    for (const Merge::Message &note : merged.notes())
        console.err << note.place << ": note: " << note.text << '\n';
    const Input result{options.output, merged.text()};
    writeOutput(options.output, result.contents, console);
    reportHandles(modules, result, console.err);
    return complainIfRefused(result, "", console.err) ? wrong : done;
}
