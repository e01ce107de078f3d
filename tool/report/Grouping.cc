#include "tool/report/Grouping.hh"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <tuple>

namespace {

/// Compares two things, and returns a negative number, 0 or a positive number.
template <class Value>
int compare(const Value &a, const Value &b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

int compareNotes(const Finding &a, const Finding &b) {
    const auto isBefore = [](const RtiFedParser::Note &x, const RtiFedParser::Note &y) {
        return std::tie(x.span.begin, x.span.length, x.text) < std::tie(y.span.begin, y.span.length, y.text);
    };
    const auto isLess = [&](const Finding &x, const Finding &y) {
        return std::lexicographical_compare(x.notes.begin(), x.notes.end(), y.notes.begin(), y.notes.end(), isBefore);
    };
    return isLess(a, b) ? -1 : isLess(b, a) ? 1 : 0;
}

int compareSuppressions(const Finding &a, const Finding &b) {
    if (!a.suppression || !b.suppression)
        return compare(a.suppression.has_value(), b.suppression.has_value());
    const auto key = [](const Suppression &suppression) {
        return std::tie(suppression.kind, suppression.justification);
    };
    return compare(key(*a.suppression), key(*b.suppression));
}

/// Returns 0 if two findings are the same mistake. Those about a whole file have no further place to join.
int compareMistakes(const Finding &a, const Finding &b) {
    const auto key = [](const Finding &finding) {
        return std::tuple(finding.rule->index, finding.severity, finding.span.has_value(), finding.textBefore(),
                          finding.textAfter());
    };
    if (const int order = compare(key(a), key(b)))
        return order;
    if (const int order = compare(a.details, b.details))
        return order;
    if (const int order = compare(std::pair(a.fix.empty(), a.fix.isSafe), std::pair(b.fix.empty(), b.fix.isSafe)))
        return order;
    if (const int order = compareNotes(a, b))
        return order;
    return compareSuppressions(a, b);
}

} // namespace

/// The idea: sort the indexes of the findings by mistake; those of one mistake are then neighbours, in the order of
/// the findings. Unlike a map of keys this allocates only an index for each finding, of which a hostile text has a
/// hundred thousand.
std::vector<Finding> grouped(std::vector<Finding> findings) {
    std::vector<std::size_t> order(findings.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return compareMistakes(findings[a], findings[b]) < 0; });
    std::vector<bool> joined(findings.size());
    for (std::size_t first = 0, next = 1; next < order.size(); ++next) {
        Finding &leader = findings[order[first]], &other = findings[order[next]];
        if (!leader.span || compareMistakes(leader, other) != 0) {
            first = next;
            continue;
        }
        leader.furtherPlaces.push_back({*other.span, std::string(other.particularText()), std::move(other.fix)});
        joined[order[next]] = true;
    }
    std::size_t kept = 0;
    for (std::size_t i = 0; i < findings.size(); ++i)
        if (!joined[i] && kept++ != i)
            findings[kept - 1] = std::move(findings[i]);
    findings.erase(findings.begin() + static_cast<std::ptrdiff_t>(kept), findings.end());
    return findings;
}
