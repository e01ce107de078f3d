#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A place in the text: the byte offset from its beginning.
using RtiFedOffset = std::uint32_t;

/// The text of a FED file, and the line and column of each of its bytes.
class RtiFedText {
public:
    explicit RtiFedText(std::string text) : _text(std::move(text)), _size(_text.size()) {
        _text.append(kPadding, '\0');
    }

    /// Behind them, kPadding NUL bytes may be read.
    std::string_view bytes() const { return {_text.data(), _size}; }
    static constexpr std::size_t kPadding = 16;
    std::string_view at(RtiFedSpan span) const { return bytes().substr(span.begin, span.length); }

    /// A name with its quotes, if it stands in quotes.
    RtiFedSpan withQuotes(RtiFedSpan name) const;

    /// Where the text proper begins: behind a byte order mark.
    RtiFedOffset begin() const;

    /// Costs a pass over the text at the first call, and next to nothing later.
    RtiFedPosition position(RtiFedOffset offset) const;

private:
    struct Line {
        RtiFedOffset number;
        RtiFedOffset begin;
    };
    /// Steps over the byte at `offset`, to the next line if it ends one: LF, CR LF, or CR alone.
    void step(Line &line, RtiFedOffset offset) const;

    std::string _text; // and the padding
    std::size_t _size;
    mutable std::vector<Line> _checkpoints; // the line at every kCheckpoint-th byte, filled on demand
    mutable RtiFedOffset _lastOffset = 0;   // of which the line was last asked for: the next is often close behind
    mutable Line _lastLine{1, 0};
};
