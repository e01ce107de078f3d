#pragma once

#include "tool/console/Console.hh"

#include <cstdio>
#include <string>

/// A file that the command line or a list of checksums names.
struct Input {
    std::string name; ///< For messages, and for the model's file name.
    std::string contents;
    bool whole = true; ///< False for a text that was not read beyond its first NUL byte.

    /// An image begins with the length of a name, whose first byte is zero; FED text never begins so.
    bool isImage() const { return !contents.empty() && contents[0] == '\0'; }
};

/// Reads an open file from its current position; `name` is for the result. Throws CannotWork.
Input readStream(std::FILE *file, const std::string &name);

/// Reads a file, or standard input for the name "-", which `stdinName` then replaces. Throws CannotWork, also for
/// more than kMaxTextSize bytes: a longer regular file is not read at all.
Input readInput(const std::string &fileName, const std::string &stdinName);
