#pragma once

#include "infrastructure/RtiFedPosition.hh"

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
