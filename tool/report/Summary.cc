#include "tool/report/Summary.hh"

#include "tool/console/Text.hh"

#include <algorithm>
#include <utility>
#include <vector>

void Summary::addFile(const Tally &tally) {
    if (tally.gravest) {
        ++_numRefused;
        ++_reasons[summaryOf(*tally.gravest)];
        return;
    }
    ++_numLoading;
    _withErrors += tally.errors > 0 ? 1 : 0;
    _withWarnings += tally.errors == 0 && tally.warnings > 0 ? 1 : 0;
}

std::string Summary::text() const {
    std::vector<std::string> found;
    if (_withErrors > 0)
        found.push_back(std::to_string(_withErrors) + " with errors");
    if (_withWarnings > 0)
        found.push_back(std::to_string(_withWarnings) + " with warnings");
    std::string text = std::to_string(_numLoading) + " load" + (found.empty() ? "" : " (" + joined(found) + ')');
    if (_numUnread > 0)
        text += ", " + std::to_string(_numUnread) + " cannot be read";
    if (_numRefused == 0)
        return text;
    std::vector<std::pair<std::string, std::size_t>> reasons(_reasons.begin(), _reasons.end());
    std::stable_sort(reasons.begin(), reasons.end(), [](const auto &a, const auto &b) { return a.second > b.second; });
    std::vector<std::string> parts;
    parts.reserve(reasons.size());
    for (const auto &[reason, number] : reasons)
        parts.push_back(std::to_string(number) + ' ' + reason);
    return text + ", " + std::to_string(_numRefused) + " refused: " + joined(parts);
}
