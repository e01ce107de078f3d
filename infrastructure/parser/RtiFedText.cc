#include "infrastructure/parser/RtiFedText.hh"

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
        Line line{1, begin()};
        for (RtiFedOffset at = 0; at <= _size; step(line, at++))
            if (at % kCheckpoint == 0)
                _checkpoints.push_back(line);
    }
    RtiFedOffset at = offset / kCheckpoint * kCheckpoint;
    Line line = _checkpoints[offset / kCheckpoint];
    if (_lastOffset > at && _lastOffset <= offset) {
        at = _lastOffset;
        line = _lastLine;
    }
    for (; at < offset; ++at)
        step(line, at);
    _lastOffset = offset;
    _lastLine = line;
    return {line.number, offset - line.begin + 1UL};
}

void RtiFedText::step(Line &line, RtiFedOffset offset) const {
    if (offset >= _size)
        return;
    const bool pair = offset + 1 < _size && _text[offset + 1] == '\n';
    if (_text[offset] == '\n' || (_text[offset] == '\r' && !pair))
        line = {line.number + 1, offset + 1};
}
