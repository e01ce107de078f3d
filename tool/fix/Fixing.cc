#include "tool/fix/Fixing.hh"

#include "tool/control/Decision.hh"

#include <algorithm>
#include <set>
#include <tuple>

namespace {

constexpr int kMostRounds = 50;

CheckedFile checked(const std::string &name, const std::string &text, const Settings &settings) {
    CheckedFile file = checkFile({name, text}, Severity::warning);
    decide(file, settings, nullptr);
    return file;
}

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
    std::set<std::tuple<const Rule *, std::uint32_t, std::string>> known;
    for (int round = 0; round < kMostRounds; ++round) {
        const std::size_t before = made.size();
        for (const Finding &finding : file.findings) {
            if (!selection.takes(finding))
                continue;
            const std::uint32_t place = text.originalOffset(finding.span->begin);
            std::string what = finding.fix.description(text.text());
            if (known.count({finding.rule, place, what}) > 0 || !text.add(finding.fix.edits))
                continue;
            known.emplace(finding.rule, place, what);
            made.push_back({finding.rule, original.positionAt(place), finding.fix.isSafe, std::move(what)});
        }
        if (made.size() == before)
            break;
        text.makeEdits();
        file = checked(input.name, text.text(), settings);
    }
    return {std::move(text), std::move(made), std::move(file)};
}
