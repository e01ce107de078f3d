#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "infrastructure/parser/RtiFedForeign.hh"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A byte offset from the beginning of the text.
using RtiFedOffset = std::uint32_t;

/// The text of a FED file, and the line and column of each of its bytes.
class RtiFedText {
public:
    explicit RtiFedText(std::string text) : _text(std::move(text)), _size(_text.size()) {
        _text.append(kPadding, '\0');
    }

    /// They are followed by kPadding NUL bytes, so that blocks of so many bytes can be read up to the last byte.
    std::string_view bytes() const { return {_text.data(), _size}; }
    static constexpr std::size_t kPadding = 64;
    std::string_view at(RtiFedSpan span) const { return bytes().substr(span.begin, span.length); }

    /// The first word of a clause with its quotes, if it is in quotes: before it there is no other that has any.
    RtiFedSpan withQuotes(RtiFedSpan name) const;

    /// What the reader has found out about the text, for each lexer that is made from then on.
    mutable RtiFedHabits habits;

    /// The offset of the first byte after a byte order mark, if there is one.
    RtiFedOffset begin() const;

    /// The first call passes over the text and stores the line at every 4096th byte; later ones walk on from there, or
    /// from the offset asked for last if that is closer. So positions asked for in the order of the text, as those of
    /// errors and declarations are, cost next to nothing, and a text whose positions nobody asks for costs nothing.
    RtiFedPosition position(RtiFedOffset offset) const;

private:
    struct Line {
        RtiFedOffset number;
        RtiFedOffset begin;
    };
    /// Moves `line` from the offset `at` to `end`, over the line ends between them: LF, CR LF, or CR alone.
    void pass(Line &line, RtiFedOffset at, RtiFedOffset end) const;

    std::string _text; // with the padding
    std::size_t _size;
    mutable bool _hasReturns = false;       // whether there is a CR; most texts have none, and are passed faster
    mutable std::vector<Line> _checkpoints; // the line at every kCheckpoint-th byte, filled on demand
    mutable RtiFedOffset _lastOffset = 0;   // whose position was asked for last, and its line
    mutable Line _lastLine{1, 0};
};
