#include "tool/fom/import/FomSpaces.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <utility>

namespace {

/// The dimensions of the Management Object Model of the standard, which FED does not have.
bool isOfStandard(const std::string &dimension) {
    return dimension == "HLAfederate" || dimension == "HLAserviceGroup";
}

/// Returns a name with something after it, for which a long name is cut between characters.
std::string withSuffix(std::string name, const std::string &suffix) {
    if (name.size() + suffix.size() > kMaxNameLength) {
        name.resize(kMaxNameLength - suffix.size());
        while ((name.back() & 0xC0) == 0x80)
            name.pop_back();
        if ((name.back() & 0xC0) == 0xC0)
            name.pop_back();
    }
    return name + suffix;
}

std::set<std::string> inUpperCase(const std::vector<std::string> &names) {
    std::set<std::string> upper;
    for (const std::string &name : names)
        upper.insert(RtiStringUtility::toupper(name));
    return upper;
}

} // namespace

FomSpaces::FomSpaces(const FomModel &model, const std::vector<Outline::Space> &similar) : _model(model) {
    findSimilar(similar);
    findGroups();
    std::set<Set> sets = usedSets();
    addUnused(sets);
    std::vector<Set> others;
    for (const Set &set : sets) // those whose names are given come first
        if (!addExported(set))
            others.push_back(set);
    for (const Set &set : others)
        addOther(set);
    std::vector<std::pair<Set, Space>> ordered;
    for (const auto &[set, index] : _spaceOf) // in the order of their first dimensions
        ordered.emplace_back(set, std::move(_spaces[index]));
    _spaces.clear();
    for (auto &[set, space] : ordered) {
        _spaceOf[set] = _spaces.size();
        _spaces.push_back(std::move(space));
    }
}

void FomSpaces::findGroups() {
    for (std::size_t i = 0; i < _model.dimensions.size(); ++i)
        if (const auto names = fedDimension(_model.dimensions[i].name.text))
            _groups[names->first].push_back(i);
}

std::set<FomSpaces::Set> FomSpaces::usedSets() const {
    std::set<Set> sets;
    for (const FomClass &node : _model.objects)
        for (const FomMember &member : node.members)
            sets.insert(member.delivery.dimensions);
    for (const FomClass &node : _model.interactions)
        sets.insert(node.delivery.dimensions);
    sets.erase(Set());
    return sets;
}

/// Adds the sets of the dimensions that no other set has.
void FomSpaces::addUnused(std::set<Set> &sets) const {
    std::set<std::size_t> used;
    for (const Set &set : sets)
        used.insert(set.begin(), set.end());
    const auto isUsed = [&](std::size_t dimension) { return used.count(dimension) > 0; };
    for (const auto &[space, group] : _groups)
        if (std::none_of(group.begin(), group.end(), isUsed)) {
            sets.insert(group);
            used.insert(group.begin(), group.end());
        }
    for (std::size_t i = 0; i < _model.dimensions.size(); ++i)
        if (!isUsed(i) && !isOfStandard(_model.dimensions[i].name.text))
            sets.insert({i});
}

/// Adds the space that an export made this set of, if it did.
bool FomSpaces::addExported(const Set &set) {
    const FomModel::Dimension &first = _model.dimensions[set.front()];
    if (const auto empty = fedEmptySpace(first.name.text); empty && first.isEmptySpace && set.size() == 1) {
        add(set, *empty, {});
        return true;
    }
    const auto names = fedDimension(first.name.text);
    if (!names || _groups.at(names->first) != set)
        return false;
    std::vector<std::string> dimensions;
    for (const std::size_t i : set)
        dimensions.push_back(fedDimension(_model.dimensions[i].name.text)->second);
    add(set, names->first, dimensions);
    return true;
}

void FomSpaces::addOther(const Set &set) {
    std::vector<std::string> dimensions;
    for (const std::size_t i : set)
        dimensions.push_back(fedName(_model.dimensions[i].name.text));
    if (const Outline::Space *similar = similarTo(dimensions))
        return add(set, similar->name, similar->dimensions.empty() ? std::vector<std::string>() : dimensions);
    std::string name = joined(dimensions, "_");
    if (dimensions.size() > 1 && name.size() > kNameLimit)
        name = withSuffix(dimensions.front(), "_and_" + std::to_string(dimensions.size() - 1) + "_more");
    std::replace(name.begin(), name.end(), '.', '_');
    add(set, name, dimensions);
}

/// Finds the spaces to compare with by their dimensions. A set that two spaces have finds neither.
void FomSpaces::findSimilar(const std::vector<Outline::Space> &spaces) {
    for (const Outline::Space &space : spaces) {
        std::vector<std::string> names;
        for (const Outline::Member &dimension : space.dimensions)
            names.push_back(dimension.name);
        const auto [other, isNew] =
            _similar.emplace(inUpperCase(names.empty() ? std::vector<std::string>{space.name} : names), &space);
        if (!isNew)
            other->second = nullptr;
    }
}

const Outline::Space *FomSpaces::similarTo(const std::vector<std::string> &dimensions) const {
    if (_similar.empty())
        return nullptr;
    const auto found = _similar.find(inUpperCase(dimensions));
    if (found == _similar.end() || !found->second)
        return nullptr;
    return _taken.count(RtiStringUtility::toupper(found->second->name)) == 0 ? found->second : nullptr;
}

/// Returns the name, or the first free one with a number. The numbers go on where they ended for the same name, since
/// counting from 2 each time would take quadratic time.
std::string FomSpaces::unique(const std::string &name, Numbers &taken) {
    const auto [known, isNew] = taken.emplace(RtiStringUtility::toupper(name), 1);
    if (isNew)
        return name;
    std::size_t number = known->second;
    std::string candidate;
    do
        candidate = withSuffix(name, '_' + std::to_string(++number));
    while (!taken.emplace(RtiStringUtility::toupper(candidate), 1).second);
    taken[RtiStringUtility::toupper(name)] = number; // equivalent: only speed
    return candidate;
}

void FomSpaces::add(const Set &set, const std::string &name, std::vector<std::string> dimensions) {
    Numbers taken;
    for (std::string &dimension : dimensions)
        dimension = unique(dimension, taken);
    _spaceOf[set] = _spaces.size();
    const FomModel::Dimension &first = _model.dimensions[set.front()];
    Space &space = _spaces.emplace_back(Space{unique(name, _taken),
                                              std::move(dimensions),
                                              first.name.place,
                                              first.isEmptySpace ? first.semantics : first.spaceSemantics,
                                              {}});
    for (std::size_t i = 0; i < space.dimensions.size(); ++i)
        space.ofDimensions.push_back(_model.dimensions[set[i]].semantics);
}

std::string FomSpaces::nameFor(const std::vector<std::size_t> &dimensions) const {
    return dimensions.empty() ? "" : _spaces[_spaceOf.at(dimensions)].name;
}
