#include "tool/report/MeantClasses.hh"

#include "fed/RtiFedInteractionClass.hh"
#include "fed/RtiFedObjectClass.hh"
#include "fed/storage/RtiFedName.hh"
#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"

#include <string_view>
#include <utility>

namespace {

/// Returns the classes that a name means: those of this full name, with or without the root, else those whose name ends
/// in it.
std::vector<std::size_t> classesNamed(const std::string &name, std::string_view rootPrefix,
                                      const Outline::Classes &classes) {
    std::vector<std::size_t> byFullName, byEnd;
    for (std::size_t i = 0; i < classes.size(); ++i) {
        const std::string_view fullName = classes[i].name;
        if (RtiFedName::equal(fullName, name) || (RtiFedName::beginsWith(fullName, rootPrefix) &&
                                                  RtiFedName::equal(fullName.substr(rootPrefix.size()), name)))
            byFullName.push_back(i);
        else if (endsIn(fullName, name))
            byEnd.push_back(i);
    }
    return byFullName.empty() ? byEnd : byFullName;
}

} // namespace

std::vector<MeantClass> meantClasses(const std::string &name, const std::string &fileName, const Outline &outline,
                                     std::ostream &complaints) {
    std::vector<MeantClass> meant;
    std::vector<std::string> candidates;
    for (const auto &[kind, prefix] : {std::pair(&kObjectTree, RtiFedObjectClass::_rootPrefix),
                                       std::pair(&kInteractionTree, RtiFedInteractionClass::_rootPrefix)}) {
        const Outline::Classes &classes = outline.classes(*kind);
        const std::vector<std::size_t> found = classesNamed(name, prefix, classes);
        if (found.size() > 1) {
            complaints << fileName << ": there are " << found.size() << " classes " << inQuotes(name, std::string::npos)
                       << ", such as " << inQuotes(classes[found[0]].name, std::string::npos) << " and "
                       << inQuotes(classes[found[1]].name, std::string::npos) << "; give more of the name\n";
            return {};
        }
        if (found.size() == 1)
            meant.push_back({kind, found.front()});
        for (const Outline::Class &node : classes)
            candidates.emplace_back(endLike(node.name, name));
    }
    if (meant.empty())
        complaints << fileName << ": there is no class " << inQuotes(name, std::string::npos)
                   << didYouMean(suggestionFor(name, candidates)) << '\n';
    return meant;
}
