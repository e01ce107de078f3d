#include "tool/fix/Fixing.hh"

#include "tool/control/Decision.hh"

#include <algorithm>
#include <functional>

namespace {

constexpr int kMostRounds = 300; // more than classes have levels, each of which may hide the next one

CheckedFile checked(const std::string &name, const std::string &text, const Settings &settings) {
    CheckedFile file = checkFile({name, text}, Severity::warning);
    decide(file, settings, nullptr);
    return file;
}

/// Notices when fixes undo each other, so that the rounds go in a circle.
///
/// The idea: texts that return are known by their hashes. Of the texts of a circle, the one with the least hash is the
/// result, from wherever the circle is entered, so that another run gives the same. The fixes that led round the circle
/// are forgotten.
class Course {
public:
    /// Returns whether to make another round of fixes of this text.
    bool goesOn(const std::string &text, std::vector<MadeFix> &made) {
        const Stop stop{std::hash<std::string>()(text), made.size()};
        const auto sameText = [&stop](const Stop &other) { return other.hash == stop.hash; };
        const auto before = std::find_if(_stops.begin(), _stops.end(), sameText);
        // unreached: no fixes are known that undo each other
        if (before == _stops.end()) {
            _stops.push_back(stop);
            return true;
        }
        // unreached: likewise
        const auto least =
            std::min_element(before, _stops.end(), [](const Stop &a, const Stop &b) { return a.hash < b.hash; });
        // unreached: likewise
        if (least->hash != stop.hash)
            return true; // round again, up to that one
        // unreached: likewise
        made.erase(made.begin() + static_cast<std::ptrdiff_t>(least->numMade), made.end());
        // unreached: likewise
        return false;
    }

private:
    struct Stop {
        std::size_t hash, numMade;
    };
    std::vector<Stop> _stops; // the texts so far
};

} // namespace

bool FixSelection::takes(const Finding &finding) const {
    if (finding.fix.empty() || finding.suppression || (!finding.fix.isSafe && !unsafe))
        return false;
    return rules.empty() || std::find(rules.begin(), rules.end(), finding.rule) != rules.end();
}

FixedText withFixes(const Input &input, const Settings &settings, const FixSelection &selection) {
    EditedText text(input.contents);
    std::vector<MadeFix> made;
    CheckedFile file = checked(input.name, text.text(), settings);
    const RtiFedParser original(input.contents); // for places
    Course course;
    // unreached: likewise, so that a round without a fix is the last one
    for (int round = 0; round < kMostRounds && course.goesOn(text.text(), made); ++round) {
        const std::size_t before = made.size();
        for (const Finding &finding : file.findings) {
            if (!selection.takes(finding))
                continue;
            const std::uint32_t place = text.originalOffset(finding.span->begin);
            std::string what = finding.fix.description(text.text());
            if (text.add(finding.fix.edits))
                made.push_back({finding.rule, original.positionAt(place), finding.fix.isSafe, std::move(what)});
        }
        if (made.size() == before)
            break;
        text.makeEdits();
        file = checked(input.name, text.text(), settings);
    }
    return {std::move(text), std::move(made), std::move(file)};
}
