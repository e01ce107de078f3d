#pragma once

#include "tool/model/Input.hh"

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

/// Returns the paths in a folder of the FED files that it has at a revision in git. `revision` is REV for the folder of
/// this name at that revision, or REV:PATH for another one. As in other folders, hidden files are left out; so are
/// symbolic links, whose targets may be outside of the revision. Throws CannotWork.
std::vector<std::string> fedFilesAtRevision(const std::string &revision, const std::string &folder);
