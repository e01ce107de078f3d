#pragma once

#include <sstream>

/// Collects text as std::ostringstream does, which silently leaves out what it has no memory for; this one throws
/// std::bad_alloc then.
class TextStream : public std::ostringstream {
public:
    TextStream() { exceptions(std::ios::badbit); }
};
