#pragma once

#include <cstddef>
#include <ostream>
#include <string>

/// What the program tells its caller: the greatest of what its files gave.
enum Status { done = 0, wrong = 1, cannotWork = 2 };

/// Where the commands write to, and what may be written there.
struct Console {
    std::ostream &out;
    std::ostream &err;
    bool color = false;    ///< Whether `out` takes colours.
    bool unicode = false;  ///< Whether `out` shows characters beyond ASCII of our own.
    std::size_t width = 0; ///< Columns of `out`, 0 if it has no width.
    std::string stdinName = "-";
    bool terminal = false; ///< Whether `out` is a terminal.
};
