#pragma once

#include <cstdint>

/// A line and a column of a FED text, both counted from 1. A column counts bytes: a tab is one, a letter beyond ASCII
/// has one for each byte of its encoding; a leading byte order mark is not counted.
struct RtiFedPosition {
    unsigned long line;
    unsigned long column;
};

/// A run of bytes of a FED text: the first byte's offset and the length.
struct RtiFedSpan {
    std::uint32_t begin = 0;
    std::uint32_t length = 0;
};
