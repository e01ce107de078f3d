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

/// A piece of a FED text, as the parser cuts it: a token, or what may be between tokens. Each byte belongs to one
/// piece.
struct RtiFedPiece {
    enum class Kind : unsigned char {
        byteOrderMark, ///< Only at the beginning of the text.
        blanks,
        lineEnd, ///< LF, CR LF or CR.
        comment, ///< From the ";", without the line end.
        open,
        close,
        word,
        quotedWord, ///< With its quotes; without the second one if the text ends in it.
        strayQuote, ///< A quote that is not closed on its line; the parser reads on after it.
        nul         ///< A NUL byte, where the parser ends.
    };

    Kind kind = Kind::word;
    RtiFedSpan span; ///< Not empty.
};
