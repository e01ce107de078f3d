#include "tool/check/Suggestion.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"
#include "tool/model/DeliveryWords.hh"

#include <algorithm>
#include <iterator>

namespace {

// equivalent: a guess at what costs too much time
constexpr std::size_t kLongest = 64; // length of the words that are compared
constexpr std::size_t kShortest = 3; // in shorter words, a changed letter is no mere typing error
constexpr std::size_t kMost = 1000;  // candidates that one word is compared with. equivalent: likewise a guess

/// Returns a word without the differences that do not count.
std::string skeletonOf(std::string_view word) {
    std::string letters;
    for (const char c : word)
        if (c != '_' && c != '-' && c != ' ')
            letters += static_cast<char>(RtiStringUtility::toupper(c));
    return beginsWith(letters, "HLA") ? letters.substr(3) : letters;
}

/// Returns how many letters must be inserted, removed, replaced or swapped with the next one to make `b` of `a`.
///
/// Entry j of a row is the distance between the first i letters of `a` and the first j letters of `b`; each row follows
/// from the two rows above it, so that only three are kept.
std::size_t distance(std::string_view a, std::string_view b) {
    // equivalent: more entries are not used
    std::vector<std::size_t> twoAbove(b.size() + 1), above(b.size() + 1), row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) // equivalent: the first entry is 0 already
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        twoAbove.swap(above);
        above.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, above[j - 1] + (a[i - 1] != b[j - 1] ? 1 : 0)});
            // equivalent: but for sanitizers, since no letter is before the first ones
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], twoAbove[j - 2] + 1);
        }
    }
    return row[b.size()];
}

bool isTypingError(std::string_view written, std::string_view meant) {
    const auto digitsOf = [](std::string_view word) {
        std::string digits;
        std::copy_if(word.begin(), word.end(), std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
        return digits;
    };
    const std::string a = skeletonOf(written), b = skeletonOf(meant);
    return !b.empty() && (a == b || (b.size() >= kShortest && distance(a, b) == 1 && digitsOf(a) == digitsOf(b)));
}

} // namespace

std::string suggestionFor(std::string_view word, const std::vector<std::string> &candidates) {
    if (word.size() > kLongest || candidates.size() > kMost) // equivalent: likewise a guess
        return {};
    const std::string meant = skeletonOf(word);
    const std::string *nearest = nullptr;
    std::size_t least = std::max<std::size_t>(1, meant.size() / 3) + 1; // longer words may have more mistakes
    for (const std::string &candidate : candidates) {
        if (candidate.size() > kLongest) // equivalent: likewise a guess
            continue;
        const std::string skeleton = skeletonOf(candidate);
        // equivalent: only speed, since the distance is as large at least
        if (std::max(meant.size(), skeleton.size()) - std::min(meant.size(), skeleton.size()) >= least)
            continue; // equivalent: likewise
        const std::size_t d = distance(meant, skeleton);
        if (d < least && d < skeleton.size()) {
            least = d;
            nearest = &candidate;
        }
    }
    return nearest ? *nearest : "";
}

Suggestion bestOf(std::string_view word, const std::vector<std::string> &candidates) {
    Suggestion best{suggestionFor(word, candidates)};
    std::vector<std::string> others;
    std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(others),
                 [&](const std::string &other) { return meaningOf(other) != meaningOf(best.word); });
    best.isSure = isTypingError(word, best.word) && suggestionFor(word, others).empty();
    return best;
}

Suggestion bestNameOf(std::string_view word, const std::vector<std::string> &candidates) {
    Suggestion best = bestOf(word, candidates);
    const std::string a = skeletonOf(word), b = skeletonOf(best.word);
    best.isSure =
        best.isSure && (a == b || a.size() != b.size() || a.substr(0, a.size() - 1) != b.substr(0, b.size() - 1));
    return best;
}

std::string didYouMean(const std::string &suggestion) {
    return suggestion.empty() ? "" : "; did you mean " + inQuotes(suggestion) + "?";
}

std::string unknownRule(std::string_view id) {
    std::vector<std::string> ids;
    for (const Rule &rule : allRules())
        ids.emplace_back(rule.id);
    const std::string meant = suggestionFor(id, ids);
    return "unknown rule " + inQuotes(id) + (meant.empty() ? "; rtifed explain lists the rules" : didYouMean(meant));
}

std::string noteSimilar(Finding &finding, RtiFedSpan place, const std::string &name,
                        const std::vector<std::string> &missing) {
    std::string meant = suggestionFor(name, missing);
    if (!meant.empty()) {
        finding.notes.push_back({place, inQuotes(name) + " is declared here" + didYouMean(meant)});
        finding.fix.edits.push_back({place, meant});
    }
    return meant;
}

std::string asWord(std::string_view name) {
    const bool plain = !name.empty() && name.find_first_of(" \t\v\f();") == std::string_view::npos;
    return plain ? std::string(name) : '"' + std::string(name) + '"';
}
