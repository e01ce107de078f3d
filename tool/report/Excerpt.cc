#include "tool/report/Excerpt.hh"

#include <algorithm>
#include <vector>

namespace {

constexpr std::size_t kTabStop = 8;
constexpr std::size_t kLongestCharacter = 4; // in bytes of UTF-8; equivalent: more is only slower
constexpr std::string_view kCut = "...";

using Cells = std::vector<std::string>; // the text of each column

void addCells(Cells &cells, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t size = RtiFedParser::printableSize(bytes);
        if (bytes.front() == '\t') {
            cells.resize(cells.size() / kTabStop * kTabStop + kTabStop, " ");
        } else if (size > 0) { // equivalent: below, ASCII characters stay as they are
            cells.emplace_back(bytes.substr(0, size));
        } else {
            for (const char c : RtiFedParser::printable(bytes.substr(0, 1)))
                cells.emplace_back(1, c);
        }
        bytes.remove_prefix(std::max<std::size_t>(size, 1));
    }
}

/// The bytes from `begin` on up to the end of the line, but not many more than fill `width` columns.
std::string_view restOfLine(std::string_view text, std::size_t begin, std::size_t width) {
    text = text.substr(begin, width * kLongestCharacter);
    return text.substr(0, text.find_first_of("\r\n"));
}

void overwrite(Cells &cells, std::size_t at) {
    for (std::size_t i = 0; i < kCut.size(); ++i)
        cells[at + i] = kCut[i];
}

} // namespace

Excerpt::Excerpt(std::string_view text, RtiFedSpan span, unsigned long column, std::size_t width) {
    const std::size_t before = std::min<std::size_t>(column - 1, width * kLongestCharacter);
    const std::string_view rest = restOfLine(text, span.begin, 2 * width); // equivalent: more is not shown
    const std::size_t meant = std::min<std::size_t>(span.length, rest.size());

    Cells cells;
    addCells(cells, text.substr(span.begin - before, before));
    std::size_t first = cells.size();
    addCells(cells, rest.substr(0, meant));
    std::size_t last = std::max(cells.size(), first + 1);
    addCells(cells, rest.substr(meant));

    // Show the span in the middle, with as much of the line on both sides as fits. equivalent: what just fits is not
    // cut
    if (cells.size() > width) {
        const std::size_t spare = width - std::min(last - first, width - 4 * kCut.size());
        const std::size_t begin = std::min(first - std::min(first, spare / 2), cells.size() - width);
        const bool cutBefore = begin > 0, cutAfter = begin + width < cells.size();
        cells = Cells(cells.begin() + static_cast<std::ptrdiff_t>(begin),
                      cells.begin() + static_cast<std::ptrdiff_t>(begin + width));
        first -= begin;
        last =
            std::max(std::min(last - begin, width), first + 1); // a span at the end of the line has one column after it
        if (cutBefore)
            overwrite(cells, 0);
        if (cutAfter)
            overwrite(cells, width - kCut.size());
    }
    for (const std::string &cell : cells)
        line += cell;
    carets = std::string(first, ' ') + '^' + std::string(last - first - 1, '~');
}
