#pragma once

#include <stdexcept>
#include <string>

/// What keeps a command from doing its work, such as a file that cannot be opened.
class CannotWork : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What is said where memory runs out.
inline constexpr const char *kOutOfMemory = "out of memory";

/// A file that is named on the command line, or in a list that is.
struct Input {
    std::string name; ///< By which messages call it, and the model its file.
    std::string contents;
    bool whole = true; ///< Whether these are all bytes: a wrong text may not have been read to its end.

    /// An image begins with the length of a name, whose first byte is zero; FED text never does.
    bool isImage() const { return !contents.empty() && contents[0] == '\0'; }
};

/// Reads a file; for the name "-" standard input, which is then called `stdinName`. Throws CannotWork.
Input readInput(const std::string &fileName, const std::string &stdinName);
