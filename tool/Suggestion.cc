#include "tool/Suggestion.hh"

#include "infrastructure/RtiFedParser.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>

namespace {

constexpr std::size_t kLongest = 64; // of the words that are compared: each costs their product

/// How many letters must be inserted, left out, replaced or swapped with the next to make one word of the other.
std::size_t distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> twoAbove(b.size() + 1), above(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        twoAbove.swap(above);
        above.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] != b[j - 1] ? 1 : 0)});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
        }
    }
    return row[b.size()];
}

} // namespace

std::string suggestionFor(std::string_view word, const std::vector<std::string> &candidates) {
    const std::string meant = RtiStringUtility::toupper(std::string(word));
    const std::string *nearest = nullptr;
    std::size_t least = std::max<std::size_t>(1, word.size() / 3) + 1; // of many letters, more may be wrong
    for (const std::string &candidate : candidates) {
        if (std::max(candidate.size(), word.size()) > kLongest)
            continue;
        if (std::max(candidate.size(), word.size()) - std::min(candidate.size(), word.size()) >= least)
            continue; // each letter too many or too few is one step
        const std::size_t d = distance(meant, RtiStringUtility::toupper(candidate));
        if (d < least && d < candidate.size()) {
            least = d;
            nearest = &candidate;
        }
    }
    return nearest ? *nearest : "";
}

std::string didYouMean(const std::string &suggestion) {
    return suggestion.empty() ? "" : "; did you mean \"" + RtiFedParser::printable(suggestion) + "\"?";
}
