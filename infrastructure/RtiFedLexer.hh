#pragma once

#include "infrastructure/RtiFedText.hh"

#include <optional>

/// One token of a FED text.
struct RtiFedToken {
    enum class Kind : unsigned char { open, close, name, nul, end };

    Kind kind = Kind::end;
    bool quoted = false;
    RtiFedOffset begin = 0;                 ///< The first byte, an opening quote included.
    RtiFedSpan text;                        ///< Of a name: its bytes without the quotes.
    std::optional<RtiFedOffset> strayQuote; ///< The first quote in front of it that no second one closes.
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

private:
    void skipBlanksAndComments();
    RtiFedToken tokenHere();
    RtiFedToken name(RtiFedOffset begin, RtiFedOffset end, bool quoted);
    RtiFedOffset endOfQuoted() const;

    std::string_view _bytes;
    RtiFedOffset _at;
};
