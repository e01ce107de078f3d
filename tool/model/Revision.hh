#pragma once

#include "tool/model/Input.hh"

#include <string>

/// Reads a file, or for a name REV:PATH that no file has, a file at a revision in git: PATH counts from the top of the
/// repository, or from the working directory if it begins with "./" or "../", as in git itself. Throws CannotWork.
Input readInputOrRevision(const std::string &name, const std::string &stdinName);

/// Reads a file at a revision in git. `revision` is REV:PATH as above; or only REV, for the file `fileName` at that
/// revision. Throws CannotWork.
Input readRevision(const std::string &revision, const std::string &fileName);
