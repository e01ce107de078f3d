#include "tool/commands/Rewriting.hh"

#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/console/UnifiedDiff.hh"

#include <filesystem>

namespace {

/// Replaces a file, unless it is no file that can be replaced or has another text by now.
void replaceFile(const Input &input, const std::string &text) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(input.name, none))
        throw CannotWork(input.name + ": only a regular file can be replaced");
    // unreached: another program would have to write the file between two readings
    if (readInput(input.name, input.name).contents != input.contents)
        throw CannotWork(input.name + ": the file has changed meanwhile, so it is left alone");
    writeFile(input.name, text.data(), text.size());
}

/// Why a file that was found in a folder cannot be replaced: who names a folder does not mean files elsewhere.
std::string faultOfLink(const FileToRead &file) {
    namespace fs = std::filesystem;
    std::error_code none;
    if (file.folder.empty() || !fs::is_symlink(file.name, none))
        return {};
    const fs::path target = fs::weakly_canonical(fs::absolute(file.name), none),
                   folder = fs::canonical(file.folder, none);
    const bool isInside =
        std::mismatch(folder.begin(), folder.end(), target.begin(), target.end()).first == folder.end();
    return isInside ? ""
                    : file.name + ": the link leads to " + shown(target.string()) + ", outside of " +
                          shown(file.folder) + "; name the file itself to change it";
}

class Rewriter {
public:
    Rewriter(const RewriteOptions &options, const Console &console, const Rewrite &rewrite)
        : _options(options), _console(console), _rewrite(rewrite) {}

    /// Returns whether the file is one that the command has nothing to complain about.
    bool operator()(const Input &input) const {
        if (complainIfImage(input, _console.err))
            return false;
        const std::optional<Rewritten> rewritten = _rewrite(input);
        if (!rewritten)
            return false;
        const std::string &text = rewritten->text;
        const bool changes = text != input.contents;
        if (_options.write && changes)
            replaceFile(input, text);
        _console.err << rewritten->report;
        if (_options.diff)
            writeUnifiedDiff(input.contents, text, input.name, _console.color, _console.out);
        else if (_options.check && changes)
            _console.out << input.name << '\n';
        else if (!_options.check && !_options.write)
            _console.out << text;
        return rewritten->isGood && !(_options.check && changes);
    }

private:
    const RewriteOptions &_options;
    const Console &_console;
    const Rewrite &_rewrite;
};

} // namespace

Status rewriteFiles(const RewriteOptions &options, const Console &console, const Rewrite &rewrite) {
    std::vector<FileToRead> files = withoutFolders(options.files);
    const bool toOutput = !options.write && !options.diff && !options.check;
    if (toOutput && files.size() > 1)
        throw CannotWork("expected one file, found " + std::to_string(files.size()) +
                         "; several need --write, --diff or --check");
    for (FileToRead &file : files)
        if (options.write && file.name == "-")
            throw CannotWork("--write cannot replace standard input");
        else if (options.write && file.failure.empty())
            file.failure = faultOfLink(file);
    return forEachFile(files, console, Rewriter(options, console, rewrite), [](auto &, auto &) {});
}
