#include "tool/lsp/PositionedText.hh"

#include "tool/console/Utf8.hh"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::uint32_t kCheckpoint = 1024; // equivalent: only speed

/// A character: its bytes, and its units in an encoding.
struct Character {
    std::uint32_t size, units;
};

Character characterAt(std::string_view text, std::uint32_t at, PositionEncoding encoding) {
    const auto size = std::max<std::uint32_t>(1, static_cast<std::uint32_t>(characterSize(text.substr(at))));
    const bool isPair = encoding == PositionEncoding::utf16 && size == 4;
    return {size, encoding == PositionEncoding::utf8 ? size : isPair ? 2U : 1U};
}

/// Returns the number of ASCII characters from `at` on, up to `end`, eight at a time.
std::uint32_t asciiRun(const std::string &text, std::uint32_t at, std::uint32_t end) {
    const std::uint32_t begin = at;
    // equivalent: only speed, since the rest is counted one by one
    std::uint64_t bytes = 0;
    for (; end - at >= sizeof bytes; at += sizeof bytes) { // equivalent: likewise
        std::memcpy(&bytes, text.data() + at, sizeof bytes);
        if ((bytes & 0x8080808080808080U) != 0) // equivalent: likewise
            break;
    }
    // equivalent: a 0x80 where a character should begin is one, too
    while (at < end && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at - begin;
}

} // namespace

PositionedText::PositionedText(std::string text, PositionEncoding encoding)
    : _text(std::move(text)), _encoding(encoding), _lines{0} {
    const std::vector<std::uint32_t> more = linesAfter(0, static_cast<std::uint32_t>(_text.size()));
    _lines.insert(_lines.end(), more.begin(), more.end());
}

/// Returns where lines begin after `begin`, up to `end`, which is not within a line end.
std::vector<std::uint32_t> PositionedText::linesAfter(std::uint32_t begin, std::uint32_t end) const {
    std::vector<std::uint32_t> lines;
    for (std::uint32_t at = begin; at < end; ++at) {
        // equivalent: a zero byte follows the text
        if (_text[at] == '\r' && at + 1 < _text.size() && _text[at + 1] == '\n')
            ++at;
        else if (_text[at] != '\n' && _text[at] != '\r')
            continue;
        lines.push_back(at + 1);
    }
    return lines;
}

std::uint32_t PositionedText::lineOf(std::uint32_t offset) const {
    const auto after = std::upper_bound(_lines.begin(), _lines.end(), offset);
    return static_cast<std::uint32_t>(after - _lines.begin()) - 1;
}

std::uint32_t PositionedText::lineEnd(std::uint32_t line) const {
    if (line + 1 == numLines())
        return static_cast<std::uint32_t>(_text.size());
    const std::uint32_t last = _lines[line + 1] - 1;
    return _text[last] == '\n' && last > _lines[line] && _text[last - 1] == '\r' ? last - 1 : last;
}

TextPosition PositionedText::positionAt(std::uint32_t offset) const {
    const std::uint32_t line = lineOf(offset);
    if (_encoding == PositionEncoding::utf8)
        return {line, offset - _lines[line]};
    return {line, counted(countedNear(offset, _lines[line]), offset).units};
}

/// Returns a place before an offset and near it, in its line.
PositionedText::Counted PositionedText::countedNear(std::uint32_t offset, std::uint32_t lineBegin) const {
    if (offset - lineBegin < kCheckpoint) // equivalent: only speed
        return {lineBegin, 0};
    if (_checkpoints.empty())
        countAll();
    const Counted near = _checkpoints[offset / kCheckpoint];
    // equivalent: no unit is before the beginning of a line
    return near.offset > lineBegin ? near : Counted{lineBegin, 0};
}

/// Counts on to the last beginning of a character up to `until`, which is in the same line.
PositionedText::Counted PositionedText::counted(Counted from, std::uint32_t until) const {
    for (;;) {
        const std::uint32_t run = asciiRun(_text, from.offset, until);
        from.offset += run;
        from.units += run;
        if (from.offset == until)
            return from;
        const Character character = characterAt(_text, from.offset, _encoding);
        if (from.offset + character.size > until) // within the character
            return from;
        from.offset += character.size;
        from.units += character.units;
    }
}

void PositionedText::countAll() const {
    const auto size = static_cast<std::uint32_t>(_text.size());
    Counted at{0, 0};
    std::uint32_t line = 0;
    // equivalent: but for sanitizers, since what is read instead of the last one is mostly zero
    for (std::uint32_t checkpoint = 0; checkpoint <= size; checkpoint += kCheckpoint) {
        // equivalent: a checkpoint at the beginning of a line is not used
        while (line + 1 < numLines() && _lines[line + 1] <= checkpoint) {
            ++line;
            at = {_lines[line], 0};
        }
        at = counted(at, checkpoint);
        _checkpoints.push_back(at);
    }
}

std::uint32_t PositionedText::offsetAt(TextPosition position) const {
    if (position.line >= numLines())
        return static_cast<std::uint32_t>(_text.size());
    const std::uint32_t end = lineEnd(position.line);
    std::uint32_t offset = _lines[position.line], left = position.character;
    for (;;) {
        const std::uint32_t run = asciiRun(_text, offset, offset + std::min(left, end - offset));
        offset += run;
        left -= run;
        if (offset == end || left == 0)
            return offset;
        const Character character = characterAt(_text, offset, _encoding);
        if (character.units > left)
            return offset;
        offset += character.size;
        left -= character.units;
    }
}

/// The lines from the one before the edit, since a CR at its end may become the first half of a line end, to the line
/// in which the edit ends are found anew.
void PositionedText::replace(std::uint32_t begin, std::uint32_t end, std::string_view with) {
    const std::uint32_t first = lineOf(begin) - (lineOf(begin) > 0 ? 1 : 0);
    // equivalent: more lines may be found anew
    const std::uint32_t last = std::min(lineOf(end) + 1, numLines() - 1);
    const bool toEnd = last + 1 == numLines();
    const std::uint32_t stop = toEnd ? static_cast<std::uint32_t>(_text.size()) : _lines[last];
    const auto growth = static_cast<std::uint32_t>(with.size()) - (end - begin); // modulo 2^32, which adding undoes
    _text.replace(begin, end - begin, with);
    const std::vector<std::uint32_t> found = linesAfter(_lines[first], stop + growth);
    const auto from = _lines.begin() + first + 1, to = toEnd ? _lines.end() : _lines.begin() + last + 1;
    for (auto line = to; line != _lines.end(); ++line)
        *line += growth;
    _lines.insert(_lines.erase(from, to), found.begin(), found.end());
    _checkpoints.clear();
}
