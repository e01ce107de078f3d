#include "tool/comparison/Comparison.hh"

#include "fed/RtiFedDatabase.hh"
#include "fed/storage/RtiFedNameMap.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/comparison/Renames.hh"

#include <algorithm>
#include <map>
#include <unordered_map>
#include <utility>

namespace {

using Element = Comparison::Element;
using Change = Comparison::Change;

/// The name and the description of each verdict.
constexpr std::pair<const char *, const char *> kVerdicts[] = {
    {"identical", "the files are the same bytes"},
    {"same", "the models are the same; only text, comments or form of the files differ"},
    {"relabelled", "letter case, or the name of the federation or version, differs"},
    {"renumbered", "every name is still there with the same properties, but handles moved"},
    {"additions", "everything in the old model is still there with the same properties, and more"},
    {"incompatible", "something in the old model was removed or changed"}};
static_assert(std::size(kVerdicts) == static_cast<std::size_t>(Comparison::Verdict::incompatible) + 1);

bool equalInAnyCase(std::string_view a, std::string_view b) {
    return a == b || RtiStringUtility::toupper(a) == RtiStringUtility::toupper(b);
}

Element elementOf(const Outline::Space &space) {
    return {Element::Kind::space, {}, space.name, space.handle, nullptr, space.place};
}

Element elementOf(Element::Kind kind, const Outline::Class &node) {
    const std::string_view name = node.name;
    const std::size_t dot = node.parent == Outline::kNone ? std::string_view::npos : name.rfind('.');
    const std::string_view owner = dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
    return {kind, owner, name.substr(dot + 1), static_cast<long>(node.handle), &node.properties, node.place};
}

Element elementOf(Element::Kind kind, std::string_view owner, const Outline::Member &member) {
    return {kind, owner, member.name, static_cast<long>(member.handle), &member.properties, member.place};
}

Element dimensionOf(const Outline::Space &space, const Outline::Member &dimension) {
    return elementOf(Element::Kind::dimension, space.name, dimension);
}

/// The spaces by name, without duplicates: those are found by their handles only and are not in the image.
RtiFedNameMap<const Outline::Space *> namedSpaces(const Outline &outline) {
    RtiFedNameMap<const Outline::Space *> spaces;
    for (const Outline::Space &space : outline.spaces)
        spaces.insert(space.name, &space);
    return spaces;
}

/// The dimensions by name in upper case and the number of earlier dimensions of that name.
std::map<std::pair<std::string, std::size_t>, const Outline::Member *> namedDimensions(const Outline::Space &space) {
    std::map<std::pair<std::string, std::size_t>, const Outline::Member *> dimensions;
    std::map<std::string, std::size_t> number;
    for (const Outline::Member &dimension : space.dimensions) {
        const std::string name = RtiStringUtility::toupper(dimension.name);
        dimensions[{name, number[name]++}] = &dimension;
    }
    return dimensions;
}

/// One of the class trees of an outline, with lookups like those of the library.
class Tree {
public:
    Tree(const TreeKind &kind, const Outline &outline)
        : classes(outline.classes(kind)), _ofObjects(&kind == &kObjectTree) {
        _byName.reserve(classes.size());
        _firstMembers.reserve(classes.size());
        for (const Outline::Class &node : classes) {
            _byName.insert(node.name, &node);
            _firstMembers.push_back(_numMembers);
            _numMembers += node.members.size();
            if (node.members.size() > kFew)
                for (const Outline::Member &member : node.members)
                    _manyMembers[&node].insert(member.name, &member);
        }
    }

    /// The number of a member among those of all classes.
    std::size_t numberOf(const Outline::Class &owner, const Outline::Member &member) const {
        return _firstMembers[static_cast<std::size_t>(&owner - classes.data())] +
               static_cast<std::size_t>(&member - owner.members.data());
    }
    std::size_t numMembers() const { return _numMembers; }

    const Outline::Class *find(const Outline::Class &other) const { return _byName.find(other.name); }

    const Outline::Class *parentOf(const Outline::Class &node) const {
        return node.parent == Outline::kNone ? nullptr : &classes[node.parent];
    }

    /// The class, or its nearest ancestor, that the other tree has too; null if there is none.
    const Outline::Class *nearestIn(const Tree &other, const Outline::Class &node) const {
        const Outline::Class *known = &node;
        while (known && !other.find(*known))
            known = parentOf(*known);
        return known;
    }

    /// The member of that name which the class declares or inherits, and the class that declares it; both null if there
    /// is none. The class may be null.
    std::pair<const Outline::Class *, const Outline::Member *> findMember(const Outline::Class *node,
                                                                          std::string_view memberName) const {
        for (; node; node = parentOf(*node))
            if (const auto *member = ownMember(*node, memberName))
                return {node, member};
        return {};
    }

    Element element(const Outline::Class &node) const {
        return elementOf(_ofObjects ? Element::Kind::objectClass : Element::Kind::interactionClass, node);
    }
    Element element(const Outline::Class &node, const Outline::Member &member) const {
        return elementOf(_ofObjects ? Element::Kind::attribute : Element::Kind::parameter, node.name, member);
    }

    /// Collects all members of a class, and all its descendants with theirs, except descendants of classes that the
    /// other tree has too.
    void collect(const Outline::Class &node, const Tree &other, std::vector<Element> &contents) const {
        for (const Outline::Member &member : node.members)
            contents.push_back(element(node, member));
        for (const std::size_t child : node.children)
            if (!other.find(classes[child])) {
                contents.push_back(element(classes[child]));
                collect(classes[child], other, contents);
            }
    }

    const std::vector<Outline::Class> &classes;

private:
    static constexpr std::size_t kFew = 16; // members, among which a search is as fast as a map

    /// The member of that name which the class itself declares, or null.
    const Outline::Member *ownMember(const Outline::Class &node, std::string_view name) const {
        if (node.members.size() > kFew)
            return _manyMembers.at(&node).find(name);
        for (const Outline::Member &member : node.members)
            if (RtiFedName::equal(member.name, name))
                return &member;
        return nullptr;
    }

    bool _ofObjects;
    RtiFedNameMap<const Outline::Class *> _byName;
    std::vector<std::size_t> _firstMembers; // for each class, the number of its first member
    std::size_t _numMembers = 0;
    std::unordered_map<const Outline::Class *, RtiFedNameMap<const Outline::Member *>> _manyMembers;
};

} // namespace

/// Finds the changes of one class tree.
///
/// The idea: classes match by their full names. A class without a match is added or removed with everything below it,
/// and is reported at its topmost class only. Members of matching classes match where they are available: one that the
/// class still inherits moved up and is no loss; one that only subclasses declare now was removed from the class, and
/// those declarations are noted at its removal.
class Comparison::ClassTreeComparison {
public:
    ClassTreeComparison(Comparison &comparison, const TreeKind &kind, const Outline &before, const Outline &after)
        : _comparison(comparison), _before(kind, before), _after(kind, after), _matched(_after.numMembers()) {}

    void run() {
        for (const Outline::Class &node : _before.classes)
            if (const Outline::Class *match = _after.find(node))
                compareClass(node, *match);
            else
                reportTopmost(Change::Kind::removed, node, _before, _after);
        for (const Outline::Class &node : _after.classes) {
            const bool isNew = !_before.find(node);
            if (isNew)
                reportTopmost(Change::Kind::added, node, _after, _before);
            compareNewMembers(node, isNew);
        }
    }

private:
    void compareClass(const Outline::Class &node, const Outline::Class &match) {
        const Element then = _before.element(node), now = _after.element(match);
        _comparison.compareElements(then, now);
        const Outline::Class *parent = _before.parentOf(node), *newParent = _after.parentOf(match);
        // unreached: only an image that another program made puts a class below another one than its name says
        if (!equalInAnyCase(parent ? parent->name : "", newParent ? newParent->name : ""))
            _comparison.change(Change::Kind::superclass, then, now);
        for (const Outline::Member &member : node.members)
            compareMember(node, member, match);
    }

    void compareMember(const Outline::Class &node, const Outline::Member &member, const Outline::Class &match) {
        const Element then = _before.element(node, member);
        const auto [owner, available] = _after.findMember(&match, member.name);
        if (!available) {
            _removal[&member] = _comparison._changes.size();
            _comparison.changeExistence(Change::Kind::removed, then);
            return;
        }
        const Element now = _after.element(*owner, *available);
        _matched[_after.numberOf(*owner, *available)] = true;
        if (owner != &match)
            _comparison.change(Change::Kind::movedUp, then, now);
        _comparison.compareElements(then, now);
    }

    /// Reports a class that only one of the trees has, unless it is among the contents of its superclass.
    void reportTopmost(Change::Kind kind, const Outline::Class &node, const Tree &tree, const Tree &other) {
        const Outline::Class *parent = tree.parentOf(node);
        if (parent && !other.find(*parent))
            return;
        _comparison.changeExistence(kind, tree.element(node));
        tree.collect(node, other, _comparison._changes.back().contents);
    }

    /// Compares the members of a class that no old member matched. If the class was there, or has an ancestor that was,
    /// a member may redeclare one that was available there.
    void compareNewMembers(const Outline::Class &node, bool inNewClass) {
        if (node.members.empty())
            return;
        const Outline::Class *known = _after.nearestIn(_before, node);
        for (const Outline::Member &member : node.members) {
            if (_matched[_after.numberOf(node, member)])
                continue;
            const Element now = _after.element(node, member);
            const auto [owner, inherited] = _before.findMember(known ? _before.find(*known) : nullptr, member.name);
            const auto removal = _removal.find(inherited);
            if (removal != _removal.end())
                _comparison._changes[removal->second].contents.push_back(now);
            if (inNewClass) // among the contents of that class
                continue;
            if (inherited)
                _comparison.compareElements(_before.element(*owner, *inherited), now);
            else
                _comparison.changeExistence(Change::Kind::added, now);
        }
    }

    Comparison &_comparison;
    const Tree _before, _after;
    std::vector<bool> _matched;                                        // of the new members, by their numbers
    std::unordered_map<const Outline::Member *, std::size_t> _removal; // the index of an old member's change
};

Comparison::Comparison(const Outline &before, const Outline &after, bool sameBytes)
    : _sameBytes(sameBytes), _handlesCompared(before.loads && after.loads && before.hasHandles && after.hasHandles) {
    const Element federation{Element::Kind::federation, {}, before.federation};
    const Element newFederation{Element::Kind::federation, {}, after.federation};
    if (before.loads && !after.loads && before.hasHandles && after.hasHandles) // XML has none
        change(Change::Kind::refused, federation, newFederation);
    if (!sameBytes)
        noteUnclear(before, after);
    compareElements(federation, newFederation);
    compareElements({Element::Kind::version, {}, before.version}, {Element::Kind::version, {}, after.version});
    compareSpaces(before, after);
    for (const TreeKind *kind : kTreeKinds)
        ClassTreeComparison(*this, *kind, before, after).run();
    findRenames(_changes, before, after);
}

/// Adds a change for each model that was not understood completely.
void Comparison::noteUnclear(const Outline &before, const Outline &after) {
    const auto unclear = [](const Outline &outline) {
        return Element{Element::Kind::federation, {}, outline.federation, 0, nullptr, outline.incompleteAt};
    };
    if (before.incompleteAt)
        change(Change::Kind::unclear, unclear(before), {});
    if (after.incompleteAt)
        change(Change::Kind::unclear, {}, unclear(after));
}

std::string Comparison::Element::fullName() const {
    return std::string(owner) + (owner.empty() ? "" : ".") + std::string(name);
}

const Comparison::Element &Comparison::Change::element() const {
    return !after || (before && before->owner.size() > after->owner.size()) ? *before : *after;
}

std::string Comparison::Change::value(const Element &of) const {
    switch (kind) {
    case Kind::renamed:
        return std::string(of.name);
    case Kind::movedUp:
    case Kind::superclass:
        return std::string(of.owner);
    case Kind::transportation:
        return of.properties->transportation;
    case Kind::ordering:
        return of.properties->ordering;
    case Kind::space:
        return of.properties->space;
    case Kind::renumbered:
    case Kind::reordered:
        return std::to_string(of.handle);
    default:
        return {};
    }
}

const char *Comparison::nameOf(Verdict verdict) {
    return kVerdicts[static_cast<std::size_t>(verdict)].first;
}

const char *Comparison::descriptionOf(Verdict verdict) {
    return kVerdicts[static_cast<std::size_t>(verdict)].second;
}

const char *Comparison::nameOf(Element::Kind kind) {
    constexpr const char *kNames[] = {"federation",
                                      "version",
                                      "space",
                                      "dimension",
                                      kObjectTree.className,
                                      kObjectTree.memberName,
                                      kInteractionTree.className,
                                      kInteractionTree.memberName};
    static_assert(std::size(kNames) == static_cast<std::size_t>(Element::Kind::parameter) + 1);
    return kNames[static_cast<std::size_t>(kind)];
}

const char *Comparison::nameOf(Change::Kind kind) {
    constexpr const char *kNames[] = {"renamed",        "renumbered", "added", "moved up",  "removed", "superclass",
                                      "transportation", "ordering",   "space", "reordered", "refused", "unclear"};
    static_assert(std::size(kNames) == static_cast<std::size_t>(Change::Kind::unclear) + 1);
    return kNames[static_cast<std::size_t>(kind)];
}

const char *Comparison::nameOf(Change::Likelihood likelihood) {
    return likelihood == Change::Likelihood::probable ? "probable" : "possible";
}

Comparison::Verdict Comparison::meaning(Change::Kind kind) {
    switch (kind) {
    case Change::Kind::renamed:
        return Verdict::relabelled;
    case Change::Kind::renumbered:
        return Verdict::renumbered;
    case Change::Kind::added:
    case Change::Kind::movedUp:
        return Verdict::additions;
    default:
        return Verdict::incompatible;
    }
}

Comparison::Verdict Comparison::verdict() const {
    Verdict verdict = _sameBytes ? Verdict::identical : Verdict::same;
    for (const Change &change : _changes)
        verdict = std::max(verdict, meaning(change.kind));
    return verdict;
}

void Comparison::compareSpaces(const Outline &before, const Outline &after) {
    const auto spacesBefore = namedSpaces(before), spacesAfter = namedSpaces(after);
    const auto changeAll = [this](Change::Kind kind, const Outline &outline, const auto &own, const auto &others) {
        for (const Outline::Space &space : outline.spaces) {
            if (own.find(space.name) != &space || others.find(space.name))
                continue;
            // The database adds this space together with the MOM, so that its absence is no change of its own.
            if (!_handlesCompared && !space.place && space.name == RtiFedDatabase::_momDefaultSpace)
                continue;
            changeExistence(kind, elementOf(space));
            for (const Outline::Member &dimension : space.dimensions)
                _changes.back().contents.push_back(dimensionOf(space, dimension));
        }
    };
    changeAll(Change::Kind::removed, before, spacesBefore, spacesAfter);
    for (const Outline::Space &space : before.spaces) {
        const Outline::Space *match = spacesAfter.find(space.name);
        if (!match || spacesBefore.find(space.name) != &space)
            continue;
        compareElements(elementOf(space), elementOf(*match));
        compareDimensions(space, *match);
    }
    changeAll(Change::Kind::added, after, spacesAfter, spacesBefore);
}

void Comparison::compareDimensions(const Outline::Space &before, const Outline::Space &after) {
    const auto dimensionsBefore = namedDimensions(before), dimensionsAfter = namedDimensions(after);
    for (const auto &[name, dimension] : dimensionsBefore) {
        const auto match = dimensionsAfter.find(name);
        if (match == dimensionsAfter.end())
            changeExistence(Change::Kind::removed, dimensionOf(before, *dimension));
        else
            compareElements(dimensionOf(before, *dimension), dimensionOf(after, *match->second));
    }
    for (const auto &[name, dimension] : dimensionsAfter)
        if (dimensionsBefore.count(name) == 0)
            changeExistence(Change::Kind::added, dimensionOf(after, *dimension));
}

/// Compares two elements that match.
void Comparison::compareElements(const Element &before, const Element &after) {
    if (before.name != after.name)
        change(Change::Kind::renamed, before, after);
    if (before.kind == Element::Kind::dimension) {
        if (before.handle != after.handle)
            change(Change::Kind::reordered, before, after);
    } else if (_handlesCompared && before.handle != after.handle) {
        change(Change::Kind::renumbered, before, after);
    }
    if (before.properties && after.properties)
        compareProperties(before, after);
}

void Comparison::compareProperties(const Element &before, const Element &after) {
    const auto compare = [&](Change::Kind kind, std::string Outline::Properties::*property) {
        if (!equalInAnyCase(before.properties->*property, after.properties->*property))
            change(kind, before, after);
    };
    compare(Change::Kind::transportation, &Outline::Properties::transportation);
    compare(Change::Kind::ordering, &Outline::Properties::ordering);
    compare(Change::Kind::space, &Outline::Properties::space);
}

void Comparison::change(Change::Kind kind, std::optional<Element> before, std::optional<Element> after) {
    _changes.push_back({kind, before, after});
}

void Comparison::changeExistence(Change::Kind kind, const Element &element) {
    kind == Change::Kind::added ? change(kind, {}, element) : change(kind, element, {});
}
