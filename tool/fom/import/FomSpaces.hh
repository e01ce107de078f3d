#pragma once

#include "tool/fom/import/FomModel.hh"
#include "tool/model/Outline.hh"

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

/// The routing spaces that a model has in FED.
///
/// In XML an attribute or interaction class names any number of dimensions, in FED one space. So each set of dimensions
/// that something names becomes a space:
///  1. All dimensions SPACE.DIMENSION of a SPACE: the space of that name, as an export writes it.
///  2. The dimension that an export makes of a space without dimensions: that space.
///  3. Any other set: a space whose name is those of its dimensions, joined by "_", or the first one and the number of
///     the others if that is long. A dot becomes "_", and a name in use gets a number.
/// Dimensions that nothing names make spaces too: by the first rule if it applies, else one each. Spaces are in the
/// order of their first dimensions.
class FomSpaces {
public:
    /// `similar` are the spaces of a model to compare with: a set that the third rule would name is taken for the only
    /// space of these that has the same dimensions.
    explicit FomSpaces(const FomModel &model, const std::vector<Outline::Space> &similar = {});

    struct Space {
        std::string name;
        std::vector<std::string> dimensions;
        FomPlace place;                        ///< Of the first dimension.
        std::string semantics;                 ///< Of the space.
        std::vector<std::string> ofDimensions; ///< The semantics of each dimension.
    };
    const std::vector<Space> &all() const { return _spaces; }

    /// The name of the space of these dimensions; empty if there are none.
    std::string nameFor(const std::vector<std::size_t> &dimensions) const;

private:
    using Set = std::vector<std::size_t>;                         // indices of dimensions, ascending
    using Numbers = std::unordered_map<std::string, std::size_t>; // the last number of each name in upper case

    void findGroups();
    std::set<Set> usedSets() const;
    void addUnused(std::set<Set> &sets) const;
    bool addExported(const Set &set);
    void addOther(const Set &set);
    const Outline::Space *similarTo(const std::vector<std::string> &dimensions) const;
    void findSimilar(const std::vector<Outline::Space> &spaces);
    static std::string unique(const std::string &name, Numbers &taken);
    void add(const Set &set, const std::string &name, std::vector<std::string> dimensions);

    const FomModel &_model;
    std::map<std::set<std::string>, const Outline::Space *> _similar; // by their dimensions in upper case
    std::map<std::string, Set> _groups;                               // the dimensions SPACE.DIMENSION by their spaces
    std::vector<Space> _spaces;
    std::map<Set, std::size_t> _spaceOf;
    Numbers _taken; // of the spaces
};
