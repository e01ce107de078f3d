#pragma once

#include "tool/input/Input.hh"

#include <string>
#include <vector>

/// Reads a file, or for a name REV:PATH that no file has, a file at a revision in git: PATH counts from the top of the
/// repository, or from the working directory if it begins with "./" or "../", as in git itself. Throws CannotWork.
Input readInputOrRevision(const std::string &name, const std::string &stdinName);

/// Reads a file at a revision in git. `revision` is REV:PATH as above; or only REV, for the file `fileName` at that
/// revision. Throws CannotWork.
Input readRevision(const std::string &revision, const std::string &fileName);

/// Reads the old version of the file `fileName`. `old` is a file or a revision as above; a file counts first. Throws
/// CannotWork.
Input readOldVersion(const std::string &old, const std::string &fileName, const std::string &stdinName);

/// The FED files of a folder at a revision in git. As in other folders, hidden files are left out; so are symbolic
/// links, whose targets may be outside of the revision.
class FolderAtRevision {
public:
    /// `revision` is REV, for this folder at that revision, or REV:PATH for another folder. Throws CannotWork.
    FolderAtRevision(const std::string &revision, const std::string &folder);

    /// Their paths in the folder.
    const std::vector<std::string> &paths() const { return _paths; }
    /// Reads the file at one of these paths; its name is REV:PATH, for REV with the path in the folder. Throws
    /// CannotWork.
    Input read(const std::string &path) const;

private:
    std::string _revision, _folder;
    bool _namesFolder; // whether the revision is REV:PATH
    std::vector<std::string> _paths;
};
