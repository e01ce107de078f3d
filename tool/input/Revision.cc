#include "tool/input/Revision.hh"

#include "tool/console/ChildProcess.hh"
#include "tool/console/Text.hh"
#include "tool/input/FedFiles.hh"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <vector>

namespace {

/// Returns the offset of the colon between revision and path, or npos. A revision may have colons in braces, as in
/// main@{12:00}.
std::size_t colonOf(const std::string &name) {
    int depth = 0;
    for (std::size_t i = 0; i < name.size(); ++i) {
        depth += name[i] == '{' ? 1 : name[i] == '}' ? -1 : 0;
        if (name[i] == ':' && depth == 0)
            return i;
    }
    return std::string::npos;
}

/// Whether git may know an object by this name. Nothing that git would read as an option does, nor the name of a
/// folder, which git would list, nor ":/TEXT", which searches messages.
bool maybeRevision(const std::string &name) {
    const std::size_t colon = colonOf(name);
    return colon != std::string::npos && name[0] != '-' && colon + 1 < name.size() && !beginsWith(name, ":/");
}

bool exists(const std::string &fileName) {
    struct stat status {};
    return stat(fileName.c_str(), &status) == 0 || (errno != ENOENT && errno != ENOTDIR);
}

/// Returns the first line of git's complaint, or with a hint, the first two, without "fatal:".
std::string complaintOf(const ChildProcess &git) {
    std::vector<std::string> lines = split(git.complaint(), '\n');
    if (lines.empty())
        return "git failed";
    for (const char *prefix : {"fatal: ", "error: "})
        if (beginsWith(lines[0], prefix))
            lines[0].erase(0, std::char_traits<char>::length(prefix));
    if (!lines[0].empty() && lines[0].back() == '.')
        lines[0].pop_back();
    const bool hint = lines.size() > 1 && beginsWith(lines[1], "hint: ");
    return shown(lines[0] + (hint ? "; " + lines[1].substr(6) : ""), kTextLimit);
}

/// Reads an object of git, named REV:PATH. "./" in PATH is relative to `folder`.
Input readObject(const std::string &object, const std::string &folder, const std::string &name) {
    try {
        // Without text conversion, which could run any program that the configuration names.
        ChildProcess git({"git", "-C", folder, "show", "--no-textconv", "--end-of-options", object});
        Input input = readStream(git.output(), name);
        if (!git.succeeds() && input.whole)
            throw CannotWork(name + ": " + complaintOf(git));
        if (beginsWith(input.contents, "tree " + object + "\n"))
            throw CannotWork(name + ": Is a directory");
        return input;
    } catch (const std::string &reason) {
        throw CannotWork(name + ": git, which reads revisions, cannot be started: " + reason);
    }
}

[[noreturn]] void refuseRevision(const std::string &revision) {
    throw CannotWork(revision + ": expected a revision, or REV:PATH");
}

/// Returns what `git ls-tree -z` prints of a tree: an entry for each file, `MODE TYPE OBJECT<tab>PATH`, and a NUL.
std::string listTree(const std::string &tree, const std::string &folder) {
    try {
        ChildProcess git({"git", "-C", folder, "ls-tree", "-r", "-z", "--full-tree", tree});
        std::string list, chunk(65536, '\0'); // equivalent: only speed
        while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), git.output()))
            list.append(chunk, 0, size);
        if (!git.succeeds())
            throw CannotWork(tree + ": there is no such folder; as a revision in git: " + complaintOf(git));
        return list;
    } catch (const std::string &reason) {
        throw CannotWork(tree + ": git, which reads revisions, cannot be started: " + reason);
    }
}

bool isHidden(const std::string &path) {
    return path[0] == '.' || path.find("/.") != std::string::npos;
}

} // namespace

Input readInputOrRevision(const std::string &name, const std::string &stdinName) {
    return maybeRevision(name) && !exists(name) ? readObject(name, ".", name) : readInput(name, stdinName);
}

Input readRevision(const std::string &revision, const std::string &fileName) {
    if (maybeRevision(revision))
        return readObject(revision, ".", revision);
    if (revision[0] == '-' || colonOf(revision) != std::string::npos)
        refuseRevision(revision);
    if (fileName == "-")
        throw CannotWork("standard input is in no revision: write " + revision + ":PATH for the old file");
    // git need not know the whole path: it may be absolute, or in another repository.
    const std::filesystem::path path(fileName);
    const std::string folder = path.parent_path().empty() ? "." : path.parent_path().string();
    const bool above = beginsWith(fileName, "../") || beginsWith(fileName, "./") || path.is_absolute();
    return readObject(revision + ":./" + path.filename().string(), folder, revision + (above ? ":" : ":./") + fileName);
}

Input readOldVersion(const std::string &old, const std::string &fileName, const std::string &stdinName) {
    if (old == "-" || exists(old))
        return readInput(old, stdinName);
    try {
        return readRevision(old, fileName);
    } catch (const CannotWork &why) {
        throw CannotWork(old + ": there is no such file; as a revision in git: " + why.what());
    }
}

FolderAtRevision::FolderAtRevision(const std::string &revision, const std::string &folder)
    : _revision(revision), _folder(folder), _namesFolder(colonOf(revision) != std::string::npos) {
    if (revision[0] == '-' || revision[0] == ':')
        refuseRevision(revision);
    const std::string list = listTree(_namesFolder ? revision : revision + ":./", _namesFolder ? "." : folder);
    for (const std::string &entry : split(list, '\0')) {
        const std::string path = entry.substr(std::min(entry.find('\t'), entry.size() - 1) + 1);
        if (beginsWith(entry, "100") && !isHidden(path) && isFedName(path))
            _paths.push_back(path);
    }
}

Input FolderAtRevision::read(const std::string &path) const {
    if (!_namesFolder)
        return readObject(_revision + ":./" + path, _folder, _revision + ":" + path);
    const bool needsSlash = _revision.back() != ':' && _revision.back() != '/';
    return readRevision(_revision + (needsSlash ? "/" : "") + path, "");
}
