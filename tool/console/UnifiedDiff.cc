#include "tool/console/UnifiedDiff.hh"

#include "tool/console/LineDiff.hh"
#include "tool/console/TerminalBuffer.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

constexpr std::size_t kContext = 3;

class DiffWriter {
public:
    DiffWriter(const Lines &a, const Lines &b, bool color, std::ostream &os) : _a(a), _b(b), _color(color), _os(os) {}

    /// Writes changes that are so close to each other that their context meets.
    void writeHunk(const LineChange *first, const LineChange *last) {
        const std::size_t before = std::min(first->beginA, kContext);
        const std::size_t after = std::min(_a.size() - last->endA, kContext);
        _os << Colored{_color ? "\033[36m" : nullptr, "@@ -" + range(first->beginA - before, last->endA + after) +
                                                          " +" + range(first->beginB - before, last->endB + after) +
                                                          " @@"}
            << '\n';
        std::size_t at = first->beginA - before;
        for (const LineChange *change = first; change <= last; ++change) {
            writeLines(' ', _a, at, change->beginA);
            writeLines('-', _a, change->beginA, change->endA);
            writeLines('+', _b, change->beginB, change->endB);
            at = change->endA;
        }
        writeLines(' ', _a, at, last->endA + after);
    }

private:
    /// `LINE,COUNT` of lines counted from 1. There are some, as neither text is empty.
    static std::string range(std::size_t begin, std::size_t end) {
        return std::to_string(begin + 1) + (end == begin + 1 ? "" : ',' + std::to_string(end - begin));
    }

    void writeLines(char mark, const Lines &lines, std::size_t begin, std::size_t end) {
        const char *const colors = mark == '-' ? "\033[31m" : mark == '+' ? "\033[32m" : nullptr;
        for (std::size_t i = begin; i < end; ++i) {
            const bool whole = lines[i].back() == '\n';
            const std::string_view line = lines[i].substr(0, lines[i].size() - (whole ? 1 : 0));
            _os << Colored{_color ? colors : nullptr, mark + std::string(line)} << '\n';
            if (!whole)
                _os << "\\ No newline at end of file\n";
        }
    }

    const Lines &_a, &_b;
    const bool _color;
    std::ostream &_os;
};

} // namespace

void writeUnifiedDiff(std::string_view before, std::string_view after, const std::string &name, bool color,
                      std::ostream &os) {
    const Lines a = linesOf(before), b = linesOf(after);
    const std::vector<LineChange> changes = changedLines(a, b);
    if (changes.empty())
        return;
    const char *const strong = color ? "\033[1m" : nullptr;
    os << Colored{strong, "--- " + shown(name)} << '\n' << Colored{strong, "+++ " + shown(name)} << '\n';
    DiffWriter writer(a, b, color, os);
    for (std::size_t first = 0, last = 0; first < changes.size(); first = last + 1) {
        for (last = first; last + 1 < changes.size() && changes[last + 1].beginA - changes[last].endA <= 2 * kContext;)
            ++last;
        writer.writeHunk(&changes[first], &changes[last]);
    }
}
