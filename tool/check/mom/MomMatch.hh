#pragma once

#include "fed/storage/RtiFedName.hh"
#include "tool/check/Checker.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

/// Which classes of a tree are those of the Management Object Model (MOM), also if they are misspelt or misplaced.
///
/// The idea: walk over the classes that the MOM requires, each after its superclass. A class is looked for by its name
/// in the class that matches its superclass; then by a similar name there; then by its name anywhere in the tree. What
/// is in a class that was matched so is looked for in that class, so that one wrong name is one mistake, not one for
/// each name below it. A class with a similar name or in another place may be a class of the federation, so it is
/// matched only if something that the MOM requires is in it. The root is matched in the same way. A class that nothing
/// matches is missing.
template <class Tree>
class MomMatch {
public:
    using Node = typename Tree::Node;
    using Requirement = RtiFedDatabaseMomVerifier::Requirement;
    enum class How : unsigned char { missing, inPlace, misspelt, elsewhere };

    struct Match {
        const Requirement *required = nullptr; ///< Null for the root.
        std::string name;                      ///< The last component of its required name.
        const Match *owner = nullptr;          ///< The match of the superclass; null for the root.
        How how = How::missing;
        const Node *node = nullptr;
        std::vector<std::string> missingMembers = {};
        /// Members with a name similar to a missing one, and that name, which is not among the missing ones then.
        std::vector<std::pair<const typename Tree::Member *, std::string>> misspeltMembers = {};

        /// The innermost class that has or should have this class and was matched; null if not even the root was.
        const Match *existingOwner() const {
            const Match *match = owner;
            while (match && !match->node)
                match = match->owner;
            return match;
        }
    };

    explicit MomMatch(const RtiFedDatabase &database)
        : _database(database), _required(Tree::missing(RtiFedDatabase(RtiFedDatabaseConstructorArg("", RTI_false)))) {
        _matches.reserve(_required.size() + 1); // equivalent: only memory, if pointers to matches stay valid
        _matches.push_back({nullptr, Tree::kind.root, nullptr});
        matchRoot();
        std::map<std::string, const Match *> byName;
        for (const Requirement &required : _required) {
            const auto dot = required.className.rfind('.');
            const Match *owner = dot == std::string::npos ? &root() : byName.at(required.className.substr(0, dot));
            Match match{&required, std::string(lastComponent(required.className)), owner};
            matchClass(match);
            if (match.node)
                matchMembers(match);
            byName.emplace(required.className, &_matches.emplace_back(std::move(match)));
        }
    }

    const Match &root() const { return _matches.front(); }
    /// The root, then the required classes, each after its superclass.
    const std::vector<Match> &all() const { return _matches; }

private:
    static bool isNamed(const Node &node, const std::string &name) {
        return RtiFedName::equal(lastComponent(node.getName()), name);
    }

    void matchRoot() {
        Match &match = _matches.front();
        match.node = Tree::find(_database, match.name);
        match.how = match.node ? How::inPlace : How::missing;
        if (match.node)
            return;
        for (const auto &handle : Tree::handles(_database)) {
            const Node &node = *_database.find(handle);
            const Node *const manager = findChild(node, _required.front().className);
            const bool hasMom = manager && resembles(*manager, _required.front());
            if (node.getParentClass() || (!hasMom && suggestionFor(node.getName(), {match.name}).empty()))
                continue;
            match.node = &node;
            match.how = How::misspelt;
            if (hasMom)
                return;
        }
    }

    void matchClass(Match &match) {
        const Node *const owner = match.owner->node;
        const auto set = [&match](const Node *node, How how) {
            match.node = node;
            match.how = node ? how : How::missing;
            return node != nullptr;
        };
        if (owner && set(findChild(*owner, match.name), How::inPlace))
            return;
        if (owner && set(findSimilarChild(*owner, match), How::misspelt))
            return;
        set(findElsewhere(match), How::elsewhere);
    }

    const Node *findChild(const Node &owner, const std::string &name) const {
        for (const auto &handle : owner.getChildrenClasses())
            if (const Node *child = _database.find(handle); isNamed(*child, name))
                return child;
        return nullptr;
    }

    /// Only classes that the MOM does not require anyway are compared with the names that are missing, so that even
    /// short names are matched reliably.
    const Node *findSimilarChild(const Node &owner, const Match &wanted) const {
        std::vector<std::string> required, missing;
        for (const Requirement &other : _required)
            if (isBelow(other, wanted.owner->required)) {
                required.emplace_back(lastComponent(other.className));
                if (!findChild(owner, required.back()))
                    missing.push_back(required.back());
            }
        for (const auto &handle : owner.getChildrenClasses()) {
            const Node &child = *_database.find(handle);
            const std::string name(lastComponent(child.getName()));
            if (!isOneOf(required, name) && suggestionFor(name, missing) == wanted.name &&
                resembles(child, *wanted.required))
                return &child;
        }
        return nullptr;
    }

    const Node *findElsewhere(const Match &wanted) {
        if (_byName.empty())
            for (const auto &handle : Tree::handles(_database)) {
                const Node &node = *_database.find(handle);
                _byName.emplace(RtiFedName::upper(std::string(lastComponent(node.getName()))), &node);
            }
        const auto [begin, end] = _byName.equal_range(RtiFedName::upper(wanted.name));
        for (auto it = begin; it != end; ++it)
            if (resembles(*it->second, *wanted.required))
                return it->second;
        return nullptr;
    }

    /// Whether something that the MOM requires in a class, or a name similar to it, is in this class; or the MOM
    /// requires nothing in it.
    bool resembles(const Node &node, const Requirement &wanted) const {
        std::vector<std::string> names = wanted.members;
        for (const Requirement &other : _required)
            if (isBelow(other, &wanted))
                names.emplace_back(lastComponent(other.className));
        const auto isWanted = [&names](const auto &record) {
            const std::string name(lastComponent(record.getName()));
            return isOneOf(names, name) || !suggestionFor(name, names).empty();
        };
        if (names.empty())
            return true;
        for (const auto &member : node.members())
            if (isWanted(member))
                return true;
        const auto &children = node.getChildrenClasses();
        return std::any_of(children.begin(), children.end(),
                           [&](const auto &handle) { return isWanted(*_database.find(handle)); });
    }

    /// Whether a required class is directly below another one; null means the root.
    static bool isBelow(const Requirement &required, const Requirement *owner) {
        const auto dot = required.className.rfind('.');
        return dot == std::string::npos ? !owner : owner && required.className.compare(0, dot, owner->className) == 0;
    }

    static bool isOneOf(const std::vector<std::string> &names, const std::string &name) {
        return std::any_of(names.begin(), names.end(),
                           [&name](const std::string &other) { return RtiFedName::equal(other, name); });
    }

    void matchMembers(Match &match) const {
        const std::vector<std::string> &required = match.required->members;
        for (const std::string &member : required) {
            const Node *node = match.node;
            while (node && !Tree::findMember(*node, member))
                node = node->getParentClass();
            if (!node)
                match.missingMembers.push_back(member);
        }
        std::vector<std::string> &missing = match.missingMembers;
        for (const auto &member : match.node->members()) {
            const std::string meant = missing.empty() || isOneOf(required, member.getName())
                                          ? std::string()
                                          : suggestionFor(member.getName(), missing);
            if (meant.empty())
                continue;
            match.misspeltMembers.emplace_back(&member, meant);
            missing.erase(std::find(missing.begin(), missing.end(), meant));
        }
    }

    const RtiFedDatabase &_database;
    const std::vector<Requirement> _required; // of a database without any class: all
    std::vector<Match> _matches;
    std::unordered_multimap<std::string, const Node *> _byName; // by the last component in upper case
};
