#include "tool/modules/Merge.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"
#include "tool/model/MovedHandles.hh"

#include <algorithm>
#include <filesystem>
#include <list>
#include <memory>

namespace {

/// Says of each module what has become of its names and handles.
void reportHandles(const std::list<std::unique_ptr<Module>> &modules, const Input &result, std::ostream &err) {
    const Outline after = readOutline(result);
    for (const std::unique_ptr<Module> &module : modules) {
        const Outline before = outlineOf(module->original());
        err << module->name() << ": the merged model, compared with this one: "
            << Comparison::nameOf(Comparison(before, after, false).verdict()) << ", "
            << (before.loads && after.loads ? movedHandles(before, after) : "as far as it can be understood") << '\n';
    }
}

/// Returns the files to merge. The result of an earlier merge in one of the folders is none of them: it would come
/// before the files that it was made of, and be right against them.
std::vector<FileToRead> filesToMerge(const MergeOptions &options) {
    std::vector<FileToRead> files = withoutFolders(options.files);
    const auto isOutput = [&options](const FileToRead &file) {
        std::error_code error;
        return !file.folder.empty() && std::filesystem::equivalent(file.name, options.output, error);
    };
    if (options.output != "-")
        files.erase(std::remove_if(files.begin(), files.end(), isOutput), files.end());
    if (files.empty())
        throw CannotWork(options.output + ": the only FED file of the folder is the one to write");
    return files;
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
    if (const Status status = forEachFile(filesToMerge(options), console, read, [](auto &, auto &) {}); status != done)
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
    return complainIfResultRefused(result, console.err) ? wrong : done;
}
