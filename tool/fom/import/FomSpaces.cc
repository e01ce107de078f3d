#include "tool/fom/import/FomSpaces.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <utility>

namespace {

/// The dimensions of the Management Object Model of the standard, which FED does not have.
bool isOfStandard(const std::string &dimension) {
    return dimension == "HLAfederate" || dimension == "HLAserviceGroup";
}

std::set<std::string> inUpperCase(const std::vector<std::string> &names) {
    std::set<std::string> upper;
    for (const std::string &name : names)
        upper.insert(RtiStringUtility::toupper(name));
    return upper;
}

} // namespace

FomSpaces::FomSpaces(const FomModel &model, const std::vector<Outline::Space> &similar)
    : _model(model), _similar(similar) {
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
        name = dimensions.front() + "_and_" + std::to_string(dimensions.size() - 1) + "_more";
    std::replace(name.begin(), name.end(), '.', '_');
    add(set, name, dimensions);
}

const Outline::Space *FomSpaces::similarTo(const std::vector<std::string> &dimensions) const {
    const std::set<std::string> upper = inUpperCase(dimensions);
    const Outline::Space *similar = nullptr;
    std::size_t count = 0;
    for (const Outline::Space &space : _similar) {
        std::vector<std::string> names;
        for (const Outline::Member &dimension : space.dimensions)
            names.push_back(dimension.name);
        if (inUpperCase(names.empty() ? std::vector<std::string>{space.name} : names) == upper) {
            similar = &space;
            ++count;
        }
    }
    return count == 1 && _taken.count(RtiStringUtility::toupper(similar->name)) == 0 ? similar : nullptr;
}

std::string FomSpaces::unique(std::string name, std::set<std::string> &taken) const {
    std::string candidate = name;
    for (std::size_t number = 2; !taken.insert(RtiStringUtility::toupper(candidate)).second; ++number)
        candidate = name + '_' + std::to_string(number);
    return candidate;
}

void FomSpaces::add(const Set &set, std::string name, std::vector<std::string> dimensions) {
    std::set<std::string> taken;
    for (std::string &dimension : dimensions)
        dimension = unique(std::move(dimension), taken);
    _spaceOf[set] = _spaces.size();
    const FomModel::Dimension &first = _model.dimensions[set.front()];
    Space &space = _spaces.emplace_back(Space{unique(std::move(name), _taken),
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
