#pragma once

#include <string>
#include <vector>

/// A file to read, or why there is none to read.
struct FileToRead {
    std::string name;
    std::string folder = {};  ///< The operand in which it was found; empty if it is an operand itself.
    std::string failure = {}; ///< Why the file or folder of this name cannot be read; empty if that is not yet known.
};

/// Whether a file of this name counts as a FED file in a folder: it ends in .fed, in any letter case.
bool isFedName(const std::string &name);

/// Replaces each folder among the operands of a command by the FED files in it and in its folders, ordered by name:
/// those that end in .fed, in any letter case. Hidden files and folders are left out, as other tools do; symbolic links
/// to files are followed and those to folders are not, so that there is no loop. A folder without FED files is a
/// failure, so that a mistyped path does not pass for a folder of good files.
std::vector<FileToRead> withoutFolders(const std::vector<std::string> &operands);
