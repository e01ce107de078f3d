#include "tool/console/Line.hh"

#include "tool/console/TerminalBuffer.hh"

#include <algorithm>

namespace {

constexpr std::string_view kMore = "...";

bool beginsCharacter(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

} // namespace

std::size_t columns(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
}

std::string_view firstColumns(std::string_view text, std::size_t count) {
    std::size_t end = 0;
    for (; end < text.size(); ++end)
        if (beginsCharacter(text[end]) && count-- == 0)
            break;
    return text.substr(0, end);
}

Line &Line::add(std::string_view text, Style style) {
    _text += text;
    _parts.push_back({_text.size(), style});
    _width += columns(text);
    return *this;
}

Line &Line::pad(std::size_t column) {
    const std::size_t count = column > _width + 2 ? column - _width : 2;
    _text.append(count, ' ');
    _parts.push_back({_text.size(), plain});
    _width += count;
    return *this;
}

void Line::print(const Console &console) const {
    const bool cut = console.width > 0 && _width > console.width;
    if (!cut && !console.color) { // as in a file, which may have very many lines
        console.out << _text << '\n';
        return;
    }
    const std::string_view end = cut ? kMore.substr(0, console.width) : std::string_view();
    std::size_t left = cut ? console.width - end.size() : _width;
    std::size_t begin = 0;
    for (const Part &part : _parts) {
        const std::string_view shown = firstColumns(std::string_view(_text).substr(begin, part.end - begin), left);
        begin = part.end;
        left -= columns(shown);
        const bool styled = console.color && part.style != plain && !shown.empty();
        console.out << Colored{!styled ? nullptr : part.style == strong ? "\033[1m" : "\033[2m", std::string(shown)};
    }
    console.out << end << '\n';
}
