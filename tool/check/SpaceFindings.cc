#include "tool/check/SpaceFindings.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/Suggestion.hh"

#include <algorithm>
#include <map>
#include <string>

namespace {

constexpr std::size_t kMostNames = 100; // unknown names that are compared with the spaces

struct Uses {
    std::string written;
    RtiFedSpan first;
    std::size_t count = 0;
};

/// The names of the spaces that the text declares and nothing uses.
std::vector<std::string> unusedSpaces(const Checker &text, const std::set<RtiSpaceHandle> &used) {
    std::vector<std::string> names;
    for (const RtiSpaceHandle &handle : text.database().getRoutingSpaceHandleSet()) {
        const RtiFedSpace &space = *text.database().find(handle);
        if (used.count(handle) == 0 && text.declarations().span(&space))
            names.push_back(space.getName());
    }
    return names;
}

} // namespace

void joinUsesOfMisspeltSpaces(const Checker &text, const std::set<RtiSpaceHandle> &used,
                              std::vector<Finding> &findings) {
    const auto isUse = [](const Finding &finding) { return finding.rule == &ruleOf(RuleId::unknownSpace); };
    const auto nameIn = [&text](const Finding &finding) {
        return RtiStringUtility::toupper(text.declarations().wordAt(*finding.span));
    };
    std::map<std::string, Uses> unknown; // by name in upper case
    for (const Finding &finding : findings)
        if (isUse(finding)) {
            Uses &uses = unknown[nameIn(finding)];
            if (uses.count++ == 0) {
                uses.written = text.declarations().wordAt(*finding.span);
                uses.first = *finding.span;
            }
        }
    if (unknown.empty() || unknown.size() > kMostNames)
        return;
    const std::vector<std::string> unused = unusedSpaces(text, used);
    std::multimap<std::string, const std::pair<const std::string, Uses> *> similar; // by declared name
    for (const auto &name : unknown)
        if (std::string declared = suggestionFor(name.second.written, unused); !declared.empty())
            similar.emplace(std::move(declared), &name);
    for (const auto &[declared, name] : similar) {
        const auto &[upper, uses] = *name;
        if (uses.count < 2 || similar.count(declared) > 1)
            continue;
        const RtiFedSpace *space = text.database().find(text.database().getRoutingSpaceHandle(declared));
        const RtiFedSpan place = *text.declarations().span(space);
        findings.erase(std::remove_if(findings.begin(), findings.end(),
                                      [&, &wrong = upper](const Finding &f) { return isUse(f) && nameIn(f) == wrong; }),
                       findings.end());
        Finding finding{&ruleOf(RuleId::unknownSpace), place,
                        "the space " + inQuotes(declared) + " is declared but not used, and " +
                            std::to_string(uses.count) + " places use " + inQuotes(uses.written) +
                            didYouMean(uses.written)};
        finding.notes.push_back({uses.first, inQuotes(uses.written) + " is first used here"});
        finding.fix = {{{place, asWord(uses.written)}}, bestNameOf(uses.written, {declared}).isSure};
        findings.push_back(std::move(finding));
    }
}
