#include "infrastructure/parser/RtiFedText.hh"

#include <algorithm>
#include <cstring>

namespace {
constexpr RtiFedOffset kCheckpoint = 4096;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
} // namespace

RtiFedOffset RtiFedText::begin() const {
    const bool marked = bytes().substr(0, kByteOrderMark.size()) == kByteOrderMark;
    return marked ? static_cast<RtiFedOffset>(kByteOrderMark.size()) : 0;
}

RtiFedSpan RtiFedText::withQuotes(RtiFedSpan name) const {
    const RtiFedOffset end = name.begin + name.length;
    // Both bytes exist: a name follows a keyword, and the padding follows the text.
    const bool inQuotes = _text[name.begin - 1] == '"' && _text[end] == '"';
    return inQuotes ? RtiFedSpan{name.begin - 1, name.length + 2} : name;
}

RtiFedPosition RtiFedText::position(RtiFedOffset offset) const {
    if (_checkpoints.empty()) {
        _hasReturns = bytes().find('\r') != std::string_view::npos;
        Line line{1, begin()};
        for (RtiFedOffset at = 0;; at += kCheckpoint) {
            _checkpoints.push_back(line);
            if (_size - at < kCheckpoint)
                break;
            pass(line, at, at + kCheckpoint);
        }
    }
    RtiFedOffset at = offset / kCheckpoint * kCheckpoint;
    Line line = _checkpoints[offset / kCheckpoint];
    if (_lastOffset > at && _lastOffset <= offset) {
        at = _lastOffset;
        line = _lastLine;
    }
    pass(line, at, offset);
    _lastOffset = offset; // equivalent: only speed
    _lastLine = line;
    return {line.number, offset - line.begin + 1UL};
}

void RtiFedText::pass(Line &line, RtiFedOffset at, RtiFedOffset end) const {
    end = static_cast<RtiFedOffset>(std::min<std::size_t>(end, _size));
    if (!_hasReturns) {
        for (const char *found = nullptr; at < end; line = {line.number + 1, at}) {
            found = static_cast<const char *>(std::memchr(&_text[at], '\n', end - at));
            if (!found)
                return;
            at = static_cast<RtiFedOffset>(found - _text.data()) + 1;
        }
        return;
    }
    for (; at < end; ++at) {
        const bool pair = at + 1 < _size && _text[at + 1] == '\n';
        if (_text[at] == '\n' || (_text[at] == '\r' && !pair))
            line = {line.number + 1, at + 1};
    }
}
