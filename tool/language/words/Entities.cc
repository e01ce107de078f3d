#include "tool/language/words/Entities.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/check/Checker.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <unordered_map>

Entities::Entities(const Checker &text) : _text(text) {
    readSpaces();
    readClasses<Objects>();
    readClasses<Interactions>();
    linkClasses();
    sortNames();
    std::sort(_places.begin(), _places.end(),
              // equivalent: no two are at the same place
              [](const Place &a, const Place &b) { return a.span.begin < b.span.begin; });
}

void Entities::add(ClauseKind kind, Index owner, long handle, const std::string &name, Declarations::Record record) {
    const RtiFedSpan place = _text.declarations().span(record).value_or(RtiFedSpan());
    const Index added = size();
    _entities.push_back({kind, owner, handle, isClass(kind) ? lastComponent(name) : name, name, record, place});
    if (place.length > 0)
        _places.push_back({place, added, false});
    for (const RtiFedSpan &later : _text.declarations().laterSpans(record))
        _places.push_back({later, added, true});
}

void Entities::readSpaces() {
    for (const RtiSpaceHandle &handle : _text.database().getRoutingSpaceHandleSet()) {
        const RtiFedSpace &space = *_text.database().find(handle);
        const Index owner = size();
        add(ClauseKind::space, kNone, handle._value, space.getName(), &space);
        for (unsigned long i = 0; i < space.getNumberOfDimensions(); ++i) {
            const RtiFedDimension &dimension = *space.getDimension(i);
            add(ClauseKind::dimension, owner, static_cast<long>(dimension.getHandle()._value), dimension.getName(),
                &dimension);
        }
        _entities[owner].numMembers = size() - owner - 1;
    }
}

template <class Tree>
void Entities::readClasses() {
    constexpr bool ofObjects = Tree::kind.membersHaveProperties;
    std::unordered_map<const void *, Index> known;
    for (const auto &handle : Tree::handles(_text.database())) {
        const typename Tree::Node &node = *_text.database().find(handle);
        const Index added = size();
        const auto *const parent = node.getParentClass();
        known.emplace(&node, added);
        add(ofObjects ? ClauseKind::objectClass : ClauseKind::interactionClass, parent ? known.at(parent) : kNone,
            static_cast<long>(handle._value), node.getName(), &node);
        for (const auto &member : node.members())
            add(ofObjects ? ClauseKind::attribute : ClauseKind::parameter, added,
                static_cast<long>(member.getHandle()._value), member.getName(), &member);
        _entities[added].numMembers = size() - added - 1;
    }
}

/// Each class comes after its superclass, so that a walk from the end has counted all below a class when it is there.
void Entities::linkClasses() {
    for (Index i = size(); i-- > 0;) { // equivalent: the first one has no superclass
        Entity &entity = _entities[i];
        if (!isClass(entity.kind) || entity.owner == kNone)
            continue;
        Entity &superclass = _entities[entity.owner];
        entity.nextSibling = superclass.firstSubclass;
        superclass.firstSubclass = i;
        superclass.numDescendants += 1 + entity.numDescendants;
    }
}

void Entities::sortNames() {
    _names.reserve(_entities.size()); // equivalent: only memory
    for (Index i = 0; i < size(); ++i)
        _names.push_back({RtiFedName(_entities[i].name).hash(), _entities[i].owner, i});
    std::sort(_names.begin(), _names.end());
}

const Entities::Place *Entities::placeAt(std::uint32_t offset) const {
    const auto found = std::lower_bound(_places.begin(), _places.end(), offset,
                                        [](const Place &place, std::uint32_t at) { return place.span.begin < at; });
    return found != _places.end() && found->span.begin == offset ? &*found : nullptr;
}

std::vector<Entities::Place>::const_iterator Entities::placeFrom(std::uint32_t offset) const {
    return std::lower_bound(_places.begin(), _places.end(), offset, [](const Place &place, std::uint32_t at) {
        return place.span.begin + place.span.length < at;
    });
}

std::vector<Entities::Index> Entities::named(std::string_view name, std::size_t most) const {
    std::vector<Index> found;
    // equivalent: the first one is in none, so that it is not in itself
    const Name first{RtiFedName(name).hash(), 0, 0};
    for (auto at = std::lower_bound(_names.begin(), _names.end(), first); at != _names.end() && at->hash == first.hash;
         ++at) {
        if (found.size() == most)
            return {};
        if (RtiFedName::equal(_entities[at->entity].name, name)) // unreached: another name with this hash
            found.push_back(at->entity);
    }
    return found;
}

Entities::Index Entities::member(Index owner, std::string_view name) const {
    const Name first{RtiFedName(name).hash(), owner, 0}; // equivalent: the first one is no member
    for (auto at = std::lower_bound(_names.begin(), _names.end(), first);
         at != _names.end() && at->hash == first.hash && at->owner == owner; ++at)
        // unreached: another name with this hash
        if (isMember(_entities[at->entity].kind) && RtiFedName::equal(_entities[at->entity].name, name))
            return at->entity;
    return kNone;
}

Entities::Index Entities::space(std::string_view name) const {
    const Name first{RtiFedName(name).hash(), kNone, 0};
    for (auto at = std::lower_bound(_names.begin(), _names.end(), first); at != _names.end() && at->hash == first.hash;
         ++at)
        // unreached: another name with this hash
        if (_entities[at->entity].kind == ClauseKind::space && RtiFedName::equal(_entities[at->entity].name, name))
            return at->entity;
    return kNone;
}

Entities::Index Entities::classNamed(ClauseKind kind, std::string_view fullName) const {
    const std::string_view name = lastComponent(fullName);
    const Name first{RtiFedName(name).hash(), 0, 0}; // equivalent: the first one is not in itself
    // equivalent: but for sanitizers, since names with another hash are other names
    for (auto at = std::lower_bound(_names.begin(), _names.end(), first); at != _names.end() && at->hash == first.hash;
         ++at)
        if (const Entity &entity = _entities[at->entity];
            entity.kind == kind && RtiFedName::equal(entity.fullName, fullName))
            return at->entity;
    return kNone;
}

std::string Entities::path(Index entity) const {
    const Entity &named = _entities[entity];
    return isMember(named.kind) ? std::string(_entities[named.owner].fullName) + '.' + std::string(named.name)
                                : std::string(named.fullName);
}

std::size_t Entities::numInherited(Index entity) const {
    std::size_t count = 0;
    for (Index above = _entities[entity].owner; above != kNone; above = _entities[above].owner)
        count += _entities[above].numMembers;
    return count;
}
