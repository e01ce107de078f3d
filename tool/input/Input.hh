#pragma once

#include "tool/console/Console.hh"

#include <cstdio>
#include <string>

/// A file that the command line or a list of checksums names.
struct Input {
    std::string name; ///< For messages, and for the model's file name.
    std::string contents;
    bool whole = true; ///< False for a text that was not read beyond its first NUL byte.

    /// An image begins with the length of a name, whose first byte is zero; FED text never begins so. Text in UTF-16
    /// may, but then each second byte is zero; an image would be that of a file name of a million bytes.
    bool isImage() const { return !contents.empty() && contents[0] == '\0' && !isUtf16(); }

    /// Whether the first character is "<", with which no FED text can begin.
    bool isXml() const;

private:
    bool isUtf16() const { return contents.size() >= 4 && contents[1] && !contents[2] && contents[3]; }
};

/// Reads an open file from its current position; `name` is for the result. Throws CannotWork.
Input readStream(std::FILE *file, const std::string &name);

/// Reads a file, or standard input for the name "-", which `stdinName` then replaces. Throws CannotWork, also for
/// more than kMaxTextSize bytes: a longer regular file is not read at all.
Input readInput(const std::string &fileName, const std::string &stdinName);
