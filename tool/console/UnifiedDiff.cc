#include "tool/console/UnifiedDiff.hh"

#include "tool/console/TerminalBuffer.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using Lines = std::vector<std::string_view>; // with their line ends

constexpr std::size_t kContext = 3;

/// A run of lines of both texts, each from its first line to before its last.
struct Segment {
    std::size_t beginA, endA, beginB, endB;

    bool empty() const { return beginA == endA && beginB == endB; }
};

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

/// Finds the lines that two texts do not share.
///
/// A line that is in both texts exactly once almost surely is the same one, so such lines, as many as are in the same
/// order, are fixed first. The texts between two of them are compared in the same way, where further lines may be
/// unique. Equal lines at both ends of such a part are the same, too. What remains has no unique line in common and
/// counts as changed. The result is right whatever it takes for the same, though not always the shortest; and it needs
/// neither the memory nor the time that a shortest one may need where most lines change, as when a text is formatted.
class LineComparison {
public:
    LineComparison(const Lines &a, const Lines &b) {
        std::unordered_map<std::string_view, std::size_t> numbers;
        const auto number = [&](const Lines &lines, std::vector<std::size_t> &result) {
            for (const std::string_view line : lines)
                result.push_back(numbers.emplace(line, numbers.size()).first->second);
        };
        number(a, _a);
        number(b, _b);
        _occurrences.resize(numbers.size());
        compare();
    }

    /// The changed parts, in the order of the texts.
    const std::vector<Segment> &changes() const { return _changes; }

private:
    struct Occurrence {
        std::size_t inA = 0, inB = 0;     // how often
        std::size_t lineA = 0, lineB = 0; // where
    };
    using Pair = std::pair<std::size_t, std::size_t>; // of lines that are the same, of _a and _b

    void compare() {
        std::vector<Segment> left = {{0, _a.size(), 0, _b.size()}};
        while (!left.empty()) {
            const Segment segment = trimmed(left.back());
            left.pop_back();
            if (segment.empty())
                continue;
            const std::vector<Pair> pairs = uniquePairs(segment);
            if (pairs.empty())
                _changes.push_back(segment);
            std::size_t endA = segment.endA, endB = segment.endB;
            std::vector<Segment> parts; // from the last one
            for (auto pair = pairs.rbegin(); pair != pairs.rend(); ++pair) {
                parts.push_back({pair->first + 1, endA, pair->second + 1, endB});
                endA = pair->first;
                endB = pair->second;
            }
            if (!pairs.empty())
                parts.push_back({segment.beginA, endA, segment.beginB, endB});
            left.insert(left.end(), parts.begin(), parts.end()); // the first part comes next
        }
    }

    Segment trimmed(Segment s) const {
        for (; s.beginA < s.endA && s.beginB < s.endB && _a[s.beginA] == _b[s.beginB]; ++s.beginA)
            ++s.beginB;
        for (; s.beginA < s.endA && s.beginB < s.endB && _a[s.endA - 1] == _b[s.endB - 1]; --s.endA)
            --s.endB;
        return s;
    }

    /// Returns the lines that are unique in both texts of a segment, as many as are in the same order.
    std::vector<Pair> uniquePairs(const Segment &s) {
        std::vector<Pair> pairs; // by line of _a
        if (s.beginA == s.endA || s.beginB == s.endB)
            return pairs;
        for (std::size_t i = s.beginA; i < s.endA; ++i)
            _occurrences[_a[i]] = {};
        for (std::size_t i = s.beginB; i < s.endB; ++i)
            _occurrences[_b[i]] = {};
        for (std::size_t i = s.beginB; i < s.endB; ++i) {
            ++_occurrences[_b[i]].inB;
            _occurrences[_b[i]].lineB = i;
        }
        for (std::size_t i = s.beginA; i < s.endA; ++i)
            ++_occurrences[_a[i]].inA;
        for (std::size_t i = s.beginA; i < s.endA; ++i)
            if (_occurrences[_a[i]].inA == 1 && _occurrences[_a[i]].inB == 1)
                pairs.emplace_back(i, _occurrences[_a[i]].lineB);
        return longestAscending(pairs);
    }

    /// Returns the longest subsequence whose lines of _b ascend: for each length, `last` has the pair with the lowest
    /// line that ends a subsequence of that length.
    static std::vector<Pair> longestAscending(const std::vector<Pair> &pairs) {
        constexpr auto kNone = static_cast<std::size_t>(-1);
        std::vector<std::size_t> last, previous(pairs.size(), kNone);
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const auto place =
                std::lower_bound(last.begin(), last.end(), pairs[i].second,
                                 [&](std::size_t j, std::size_t line) { return pairs[j].second < line; });
            if (place != last.begin())
                previous[i] = *(place - 1);
            if (place == last.end())
                last.push_back(i);
            else
                *place = i;
        }
        std::vector<Pair> longest;
        for (std::size_t i = last.empty() ? kNone : last.back(); i != kNone; i = previous[i])
            longest.push_back(pairs[i]);
        std::reverse(longest.begin(), longest.end());
        return longest;
    }

    std::vector<std::size_t> _a, _b; // equal lines have equal numbers
    std::vector<Occurrence> _occurrences;
    std::vector<Segment> _changes;
};

class DiffWriter {
public:
    DiffWriter(const Lines &a, const Lines &b, bool color, std::ostream &os) : _a(a), _b(b), _color(color), _os(os) {}

    /// Writes changes that are so close to each other that their context meets.
    void writeHunk(const Segment *first, const Segment *last) {
        const std::size_t before = std::min(first->beginA, kContext);
        const std::size_t after = std::min(_a.size() - last->endA, kContext);
        _os << Colored{_color ? "\033[36m" : nullptr, "@@ -" + range(first->beginA - before, last->endA + after) +
                                                          " +" + range(first->beginB - before, last->endB + after) +
                                                          " @@"}
            << '\n';
        std::size_t at = first->beginA - before;
        for (const Segment *change = first; change <= last; ++change) {
            writeLines(' ', _a, at, change->beginA);
            writeLines('-', _a, change->beginA, change->endA);
            writeLines('+', _b, change->beginB, change->endB);
            at = change->endA;
        }
        writeLines(' ', _a, at, last->endA + after);
    }

private:
    /// `LINE,COUNT` of lines counted from 1; the line before them if there are none.
    static std::string range(std::size_t begin, std::size_t end) {
        return std::to_string(begin + (begin < end ? 1 : 0)) +
               (end == begin + 1 ? "" : ',' + std::to_string(end - begin));
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
    const LineComparison comparison(a, b);
    const std::vector<Segment> &changes = comparison.changes();
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
