#include "tool/report/Source.hh"

#include "tool/console/Line.hh"
#include "tool/console/Text.hh"

#include <algorithm>

namespace {

constexpr std::size_t kCheckpoint = 4096;

} // namespace

Source::Source(std::string name, const RtiFedParser *text) : _name(std::move(name)) {
    if (!text)
        return;
    _text = text->text();
    _positionAt = [text](std::uint32_t offset) { return text->positionAt(offset); };
}

RtiFedPosition Source::characterPosition(std::uint32_t offset) const {
    const RtiFedPosition place = _positionAt(offset);
    const auto lineBegin = static_cast<std::uint32_t>(offset + 1 - place.column);
    return {place.line, charactersBefore(offset) - charactersBefore(lineBegin) + 1};
}

std::string Source::place(const std::optional<RtiFedSpan> &span) const {
    return textOf(shown(_name), span ? std::optional(begin(*span)) : std::nullopt);
}

std::size_t Source::charactersBefore(std::uint32_t offset) const {
    if (_characters.empty()) {
        std::size_t count = 0;
        for (std::size_t at = 0; at <= text().size(); at += kCheckpoint) {
            _characters.push_back(count);
            count += columns(text().substr(at, kCheckpoint));
        }
    }
    const std::size_t checkpoint = offset / kCheckpoint;
    return _characters[checkpoint] + columns(text().substr(checkpoint * kCheckpoint, offset % kCheckpoint));
}

std::string pathInRepository(std::string fileName) {
    while (beginsWith(fileName, "./"))
        fileName.erase(0, std::min(fileName.find_first_not_of('/', 1), fileName.size()));
    return fileName;
}
