#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "infrastructure/parser/RtiFedRuns.hh"
#include "infrastructure/parser/RtiFedText.hh"

#include <algorithm>
#include <array>
#include <vector>

/// One token of a FED text.
struct RtiFedToken {
    enum class Kind : unsigned char { open, close, name, nul, end };

    Kind kind = Kind::end;
    bool quoted = false;    // equivalent: set before it is read
    RtiFedOffset begin = 0; ///< The first byte, an opening quote included.
    RtiFedSpan text;        ///< Of a name: its bytes without the quotes.
    /// The first quote before it that is not closed on its line.
    RtiFedOffset strayQuote = kNoQuote;

    static constexpr RtiFedOffset kNoQuote = 0xFFFFFFFF;
    bool afterStrayQuote() const { return strayQuote != kNoQuote; }
};

/// Cuts a FED text into parentheses and names, and skips blanks and comments. A NUL byte and the end of the text are
/// tokens that every further call returns again.
///
/// If the text is known to have comments of other languages or characters that look like blanks, they are skipped too.
class RtiFedLexer {
public:
    /// Begins at `at`. The text ends at `end`.
    RtiFedLexer(const RtiFedText &text, RtiFedOffset at, std::size_t end = std::string_view::npos)
        : _bytes(text.bytes().substr(0, end)), _at(at), _runs(text), _habits(text.habits) {}

    /// The offset after the last byte that was read.
    RtiFedOffset at() const { return _at; }

    RtiFedToken next();
    /// The same, into an existing token: copying a token that was just written takes longer than reading it.
    void next(RtiFedToken &token) { next(token, nullptr); }
    /// The same, and adds the offset of each foreign comment and run of foreign blanks that is skipped.
    void next(RtiFedToken &token, std::vector<RtiFedOffset> *foreign);

    /// Reads the next piece, of whatever kind. There must be one, and it must begin here.
    RtiFedPiece nextPiece();

    /// Reads a keyword, spelt exactly so, and the plain words after it, up to a parenthesis. Returns the number of
    /// words. If anything else is there, too many words or one longer than `longest`, nothing is read and kNotPlain is
    /// returned.
    std::size_t nextPlainWords(std::string_view keyword, std::array<RtiFedSpan, 4> &words, std::size_t longest);
    static constexpr std::size_t kNotPlain = 0xFFFF; // equivalent: any number that no clause has

    /// Goes back to an offset that was read.
    void goBack(RtiFedOffset at) { _at = at; }

    /// Reads the next token, and sets `at` to its offset, if it is a "(" without a comment before it. Returns whether.
    bool nextOpen(RtiFedOffset &at) {
        const RtiFedOffset end = endOfBlanks(_at);
        if (end == _bytes.size() || _bytes.data()[end] != '(')
            return false;
        at = end;
        _at = end + 1;
        return true;
    }
    /// Reads the next byte if it is a ")". Returns whether it is.
    bool nextClose() {
        if (_bytes.data()[_at] != ')') // at the end of the text, the padding
            return false;
        ++_at;
        return true;
    }

private:
    void skip(std::vector<RtiFedOffset> *foreign);
    void skipBlanksAndComments();
    bool skipForeign();
    void readToken(RtiFedToken &token);
    RtiFedOffset endOfQuoted() const;
    RtiFedOffset endOfWord(RtiFedOffset at) { return inText(_runs.endOfWord(at)); }
    RtiFedOffset endOfBlanks(RtiFedOffset at) { return inText(_runs.endOfBlanks(at)); }
    RtiFedOffset inText(RtiFedOffset at) const { return std::min(at, static_cast<RtiFedOffset>(_bytes.size())); }

    std::string_view _bytes;
    RtiFedOffset _at;
    RtiFedRuns _runs;
    RtiFedHabits _habits;
    RtiFedHabits _unclosed; // the comment marks whose closing mark does not follow
};
