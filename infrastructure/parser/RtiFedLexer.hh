#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <array>

/// One token of a FED text.
struct RtiFedToken {
    enum class Kind : unsigned char { open, close, name, nul, end };

    Kind kind = Kind::end;
    bool quoted = false;
    RtiFedOffset begin = 0; ///< The first byte, an opening quote included.
    RtiFedSpan text;        ///< Of a name: its bytes without the quotes.
    /// The first quote in front of it that no second one closes.
    RtiFedOffset strayQuote = kNoQuote;

    static constexpr RtiFedOffset kNoQuote = 0xFFFFFFFF;
    bool afterStrayQuote() const { return strayQuote != kNoQuote; }
};

/// Cuts a FED text into parentheses and names; blanks and comments fall away. A NUL byte and the end of the text are
/// tokens that are found again and again.
class RtiFedLexer {
public:
    RtiFedLexer(const RtiFedText &text, RtiFedOffset at) : _bytes(text.bytes()), _at(at) {}
    /// Takes the text to end at `end`.
    RtiFedLexer(const RtiFedText &text, RtiFedOffset at, RtiFedOffset end)
        : _bytes(text.bytes().substr(0, end)), _at(at) {}

    /// How far the text was read.
    RtiFedOffset at() const { return _at; }

    RtiFedToken next();
    /// The same, into a token that is there: a copy of one just written costs more than to read it.
    void next(RtiFedToken &token);

    /// Reads a keyword and plain words behind it, up to a parenthesis: at most as many as there is room for, and none
    /// longer than `longest`. Returns how many words there are. Where anything else stands nothing is read, and
    /// kNotPlain is returned.
    std::size_t nextPlainWords(std::string_view keyword, std::array<RtiFedSpan, 4> &words, std::size_t longest);
    static constexpr std::size_t kNotPlain = 0xFFFF;

    /// Reads the next token if it is a "(" that follows without a comment, and says where it is. Returns whether.
    bool nextOpen(RtiFedOffset &at);
    /// Reads the next byte if it is a ")". Returns whether.
    bool nextClose();

private:
    void skipBlanksAndComments();
    void readToken(RtiFedToken &token);
    void readName(RtiFedToken &token, RtiFedOffset end);
    RtiFedOffset endOfQuoted() const;

    std::string_view _bytes;
    RtiFedOffset _at;
};
