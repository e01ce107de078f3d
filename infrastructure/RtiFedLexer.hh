#pragma once

#include "infrastructure/RtiFedText.hh"


/// One token of a FED text.
struct RtiFedToken {
    enum class Kind : unsigned char { open, close, name, nul, end };

    Kind kind = Kind::end;
    bool quoted = false;
    RtiFedOffset begin = 0;                 ///< The first byte, an opening quote included.
    RtiFedSpan text; ///< Of a name: its bytes without the quotes.
    /// The first quote in front of it that no second one closes.
    RtiFedOffset strayQuote = kNoQuote;

    static constexpr RtiFedOffset kNoQuote = 0xFFFFFFFF;
    bool behindStrayQuote() const { return strayQuote != kNoQuote; }
};

/// Cuts a FED text into parentheses and names; blanks and comments fall away. A NUL byte and the end of the text are
/// tokens that are found again and again.
class RtiFedLexer {
public:
    RtiFedLexer(const RtiFedText &text, RtiFedOffset at) : _bytes(text.bytes()), _at(at) {}
    /// Takes the text to end at `end`.
    RtiFedLexer(const RtiFedText &text, RtiFedOffset at, RtiFedOffset end)
        : _bytes(text.bytes().substr(0, end)), _at(at) {}

    RtiFedToken next();
    /// The same, into a token that is there: a copy of one just written costs more than to read it.
    void next(RtiFedToken &token);

private:
    void skipBlanksAndComments();
    void readToken(RtiFedToken &token);
    void readName(RtiFedToken &token, RtiFedOffset end);
    RtiFedOffset endOfQuoted() const;

    std::string_view _bytes;
    RtiFedOffset _at;
};
