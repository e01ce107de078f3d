#pragma once

#include <stdexcept>

/// A failure that keeps a command from doing its work, such as a file that cannot be opened.
class CannotWork : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The message where memory runs out.
inline constexpr const char *kOutOfMemory = "out of memory";
