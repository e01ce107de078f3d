#pragma once

#include "infrastructure/parser/RtiFedGrammar.hh"
#include "infrastructure/parser/RtiFedText.hh"

#include <string_view>
#include <unordered_map>
#include <vector>

/// The parentheses of a text with what RtiFedBalanceSearch needs to know of each: where it is on its line, and what
/// is between it and its neighbours.
class RtiFedLayout {
public:
    /// What is on the lines without tokens before a parenthesis. A ")" that is lost from a line of its own leaves such
    /// a line: its blanks, or the comment that followed it.
    enum class Trace : unsigned char { none, empty, blanks, comment, commentOfClose };
    static constexpr std::size_t kNumTraces = 5;

    enum class Kind : unsigned char { open, close, end };

    struct Sign {
        Kind kind = Kind::end;
        bool beginsLine = false;
        Trace trace = Trace::none;
        int column = 0;         ///< If it begins its line: the indentation, with tabs to each 8th column.
        int traceColumn = 0;    ///< The same of the line that is the trace.
        RtiFedOffset at = 0;    ///< The parenthesis, or the end of the text.
        RtiFedOffset after = 0; ///< Directly after the token before it.
        RtiFedOffset traceAt = 0;
        RtiFedOffset line = 0;       ///< Counted from 0; lines without tokens count.
        RtiFedOffset lineBefore = 0; ///< The line of the token before it.
        RtiFedOffset traceLine = 0;
        unsigned words = 0;             ///< After it, up to the next parenthesis.
        RtiFedSpan keyword;             ///< The first of these words, if it is not in quotes.
        RtiFedSpan keywordInside;       ///< The first of the other words that may be a keyword without its "(".
        unsigned wordsBeforeInside = 0; ///< The number of words before that one.
    };

    /// Reads at most `most` parentheses.
    RtiFedLayout(const RtiFedText &text, std::size_t most);

    bool complete = true;   ///< All parentheses were read; the last sign is the end of the text.
    long missingCloses = 0; ///< Negative if there are too many.
    std::vector<Sign> signs;

private:
    void readGap(RtiFedOffset begin, RtiFedOffset end, Sign &sign);
    void addTrace(RtiFedOffset begin, RtiFedOffset end, Sign &sign);

    std::string_view _bytes;
    RtiFedOffset _line = 0;
    std::unordered_map<std::string_view, unsigned>
        _commentsOfCloses; // the first words of comments after a ")" on its own
};
