#include "tool/check/MomFindings.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <map>

namespace {

using Requirements = std::vector<RtiFedDatabaseMomVerifier::Requirement>;
using NamesByClass = std::map<std::string, std::vector<std::string>>;

/// The names of missing classes by their superclass, which is empty for a class directly below the root.
NamesByClass classesByOwner(const Requirements &requirements) {
    NamesByClass names;
    for (const auto &[className, classMissing, members] : requirements)
        if (classMissing) {
            const auto dot = className.rfind('.');
            names[dot == std::string::npos ? "" : className.substr(0, dot)].emplace_back(lastComponent(className));
        }
    return names;
}

/// Finds what one tree lacks, and adds it to the finding about the whole MOM.
template <class Tree>
class MomCheck {
public:
    MomCheck(const Checker &text, const std::function<bool(std::string_view)> &mayBeDeclared)
        : _text(text), _missing(Tree::missing(text.database())) {
        for (auto &required : _missing) {
            required.classMissing = required.classMissing && !mayBeDeclared(lastComponent(required.className));
            auto &members = required.members;
            members.erase(std::remove_if(members.begin(), members.end(), mayBeDeclared), members.end());
        }
    }

    /// Adds a line for each incomplete class, and returns the number of missing names.
    std::size_t describe(Finding &finding) const {
        std::size_t count = 0;
        const bool allMissing =
            !_missing.empty() && _missing.front().classMissing && _missing.front().className == "Manager";
        if (allMissing)
            finding.details.push_back(std::string("the ") + Tree::kind.className + " Manager with everything in it");
        for (const auto &[className, classMissing, members] : _missing) {
            count += members.size() + (classMissing ? 1 : 0);
            if (allMissing)
                continue;
            const std::string memberNoun = plural(members.size(), Tree::kind.memberName) + " ";
            if (classMissing)
                finding.details.push_back(std::string("the ") + Tree::kind.className + " " + className +
                                          (members.empty() ? "" : " with the " + memberNoun + joined(members)));
            else if (!members.empty())
                finding.details.push_back("the " + memberNoun + joined(members) + " of the " + Tree::kind.className +
                                          " " + className);
        }
        return count;
    }

    /// Notes the declarations that are probably a missing name misspelt.
    ///
    /// The idea: only classes of the same superclass and members of the same class are compared with a missing name,
    /// and those that the MOM requires anyway are left out, so that even short names are matched reliably.
    void addLikely(Finding &finding) const {
        const Requirements all = Tree::missing(RtiFedDatabase(RtiFedDatabaseConstructorArg("", RTI_false)));
        const NamesByClass classes = classesByOwner(all);
        for (auto &[owner, missing] : classesByOwner(_missing))
            if (const auto *node = Tree::find(_text.database(), owner.empty() ? Tree::kind.root : owner))
                for (const auto &handle : node->getChildrenClasses())
                    noteIfNear(*_text.database().find(handle), classes.at(owner), missing, finding);
        for (auto [className, classMissing, missing] : _missing) {
            const auto required = std::find_if(all.begin(), all.end(),
                                               [&name = className](const auto &r) { return r.className == name; });
            if (const auto *node = classMissing ? nullptr : Tree::find(_text.database(), className))
                for (const auto &member : node->members())
                    noteIfNear(member, required->members, missing, finding);
        }
    }

private:
    template <class Record>
    void noteIfNear(const Record &record, const std::vector<std::string> &required, std::vector<std::string> &missing,
                    Finding &finding) const {
        const std::string name(lastComponent(record.getName()));
        const auto place = _text.declarations().span(&record);
        const auto isIt = [&name](const std::string &other) { return RtiFedName::equal(name, other); };
        if (missing.empty() || !place || std::any_of(required.begin(), required.end(), isIt))
            return;
        const std::string meant = noteSimilar(finding, *place, name, missing);
        if (!meant.empty())
            missing.erase(std::find(missing.begin(), missing.end(), meant));
    }

    const Checker &_text;
    Requirements _missing;
};

std::optional<Finding> missing(const Checker &text, const std::function<bool(std::string_view)> &mayBeDeclared) {
    const MomCheck<Objects> objects(text, mayBeDeclared);
    const MomCheck<Interactions> interactions(text, mayBeDeclared);
    Finding finding{&ruleOf(RuleId::momIncomplete), text.parser().span(), {}};
    const std::size_t count = objects.describe(finding) + interactions.describe(finding);
    if (count <= text.parser().numLostNames()) // the missing names may be among those
        return {};
    finding.text = "the Management Object Model (MOM) is incomplete, " + counted(count, "name") +
                   (count == 1 ? " is missing:" : " are missing:");
    objects.addLikely(finding);
    interactions.addLikely(finding);
    return finding;
}

/// Lookups find the MOM without its root, but the database looks for it by its full name to give it its space.
template <class Tree>
std::optional<Finding> misplaced(const Checker &text) {
    const auto *manager = Tree::find(text.database(), "Manager");
    if (!manager || Tree::find(text.database(), std::string(Tree::kind.root) + ".Manager"))
        return {};
    return Finding{&ruleOf(RuleId::momMisplaced), text.declarations().span(manager),
                   std::string("the ") + Tree::kind.className +
                       " \"Manager\" of the MOM is outside its root, expected it in \"" + Tree::kind.root + "\""};
}

} // namespace

std::vector<Finding> momFindings(const Checker &text, const std::function<bool(std::string_view)> &mayBeDeclared) {
    std::vector<Finding> findings;
    for (auto &finding : {missing(text, mayBeDeclared), misplaced<Objects>(text), misplaced<Interactions>(text)})
        if (finding)
            findings.push_back(*finding);
    return findings;
}
