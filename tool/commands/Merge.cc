#include "tool/modules/Merge.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/comparison/MovedHandles.hh"
#include "tool/comparison/UnderstoodVerdict.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <filesystem>
#include <list>
#include <memory>
#include <sstream>

namespace {

/// Says of each module what has become of its names and handles.
void reportHandles(const std::list<std::unique_ptr<Module>> &modules, const Input &result, std::ostream &err) {
    const Outline after = readOutline(result);
    for (const std::unique_ptr<Module> &module : modules) {
        const Outline before = outlineOf(module->original());
        err << module->name()
            << ": the merged model, compared with this one: " << Comparison::nameOf(understoodVerdict(before, after))
            << ", " << (before.loads && after.loads ? movedHandles(before, after) : "as far as it can be understood")
            << '\n';
    }
}

/// Removes the file to write if it was found in a folder. Returns whether it was.
///
/// It then is the result of an earlier merge: it might come before the files that it was made of, and what was changed
/// in these since would be a conflict.
bool removeOutput(std::vector<FileToRead> &files, const std::string &output) {
    const auto isOutput = [&output](const FileToRead &file) {
        std::error_code error;
        return !file.folder.empty() && std::filesystem::equivalent(file.name, output, error);
    };
    const auto end = output == "-" ? files.end() : std::remove_if(files.begin(), files.end(), isOutput);
    const bool isRemoved = end != files.end();
    files.erase(end, files.end());
    if (files.empty())
        throw CannotWork(output + ": the only FED file of the folder is the one to write");
    return isRemoved;
}

/// Refuses to replace a file that is not the result of an earlier merge: merging it too would change the result.
void refuseToLose(const std::string &name, const std::string &result) {
    std::ostringstream unused;
    const std::unique_ptr<Module> old = readModule(readInput(name, name), unused);
    const std::unique_ptr<Module> now = readModule({name, result}, unused);
    bool losesNothing = false;
    if (old && now) {
        Merge both(false);
        both.add(*now);
        both.add(*old);
        losesNothing = both.conflicts().empty() && both.text() == result;
    }
    if (!losesNothing)
        throw CannotWork(name +
                         ": left alone: it is the file to write, so it was not merged, but it has something that "
                         "the result lacks; name it to merge it too, or remove it");
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
    std::vector<FileToRead> files = withoutFolders(options.files);
    const bool isOutputInFolder = removeOutput(files, options.output);
    if (const Status status = forEachFile(files, console, read, [](auto &, auto &) {}); status != done)
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
    const Input result{options.output, merged.text()};
    if (isOutputInFolder)
        refuseToLose(options.output, result.contents);
    for (const Merge::Message &note : merged.notes())
        console.err << note.place << ": note: " << note.text << '\n';
    writeOutput(options.output, result.contents, console);
    reportHandles(modules, result, console.err);
    return complainIfResultRefused(result, console.err) ? wrong : done;
}
