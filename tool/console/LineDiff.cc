#include "tool/console/LineDiff.hh"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace {

/// The comparison that the header describes.
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
    std::vector<LineChange> changes() && { return std::move(_changes); }

private:
    struct Occurrence {
        std::size_t inA = 0, inB = 0;     // how often
        std::size_t lineA = 0, lineB = 0; // where
    };
    using Pair = std::pair<std::size_t, std::size_t>; // of lines that are the same, of _a and _b

    void compare() {
        std::vector<LineChange> left = {{0, _a.size(), 0, _b.size()}};
        while (!left.empty()) {
            const LineChange segment = trimmed(left.back());
            left.pop_back();
            if (segment.empty())
                continue;
            const std::vector<Pair> pairs = uniquePairs(segment);
            if (pairs.empty())
                _changes.push_back(segment);
            std::size_t endA = segment.endA, endB = segment.endB;
            std::vector<LineChange> parts; // from the last one
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

    LineChange trimmed(LineChange s) const {
        for (; s.beginA < s.endA && s.beginB < s.endB && _a[s.beginA] == _b[s.beginB]; ++s.beginA)
            ++s.beginB;
        for (; s.beginA < s.endA && s.beginB < s.endB && _a[s.endA - 1] == _b[s.endB - 1]; --s.endA)
            --s.endB;
        return s;
    }

    /// Returns the lines that are unique in both texts of a segment, as many as are in the same order.
    std::vector<Pair> uniquePairs(const LineChange &s) {
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
    std::vector<LineChange> _changes;
};

} // namespace

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return lines;
}

std::vector<LineChange> changedLines(const Lines &a, const Lines &b) {
    return LineComparison(a, b).changes();
}
