#pragma once

#include <cstddef>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>

/// The exit status of the program: the greatest status of its files.
enum Status { done = 0, wrong = 1, cannotWork = 2 };

/// The output of the commands, and what it can show.
struct Console {
    std::ostream &out;
    std::ostream &err;
    bool color = false;    ///< Whether `out` shows colours.
    bool unicode = false;  ///< Whether the program may write characters outside ASCII to `out`.
    std::size_t width = 0; ///< Columns of `out`; 0 if it is not a terminal.
    std::string stdinName = "-";
    bool terminal = false;      ///< Whether `out` is a terminal.
    std::size_t helpWidth = 80; ///< Columns that help may have.
};

/// Collects text as std::ostringstream does, which silently leaves out what it has no memory for; this one throws
/// std::bad_alloc then.
class TextStream : public std::ostringstream {
public:
    TextStream() { exceptions(std::ios::badbit); }
};

/// A failure that keeps a command from doing its work, such as a file that cannot be opened.
class CannotWork : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The message where memory runs out.
inline constexpr const char *kOutOfMemory = "out of memory";
