#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/language/ClauseForm.hh"
#include "tool/model/Declarations.hh"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class Checker;

/// Everything that a text declares and the checker has understood: classes and their members, spaces and their
/// dimensions, in one form, with the places of their names.
///
/// Spaces come first, then object classes, then interaction classes, each directly followed by its members, and each
/// class after its superclass.
class Entities {
public:
    using Index = std::uint32_t;
    static constexpr Index kNone = 0xFFFFFFFF;

    struct Entity {
        ClauseKind kind;
        Index owner; ///< The superclass of a class, the class of a member, the space of a dimension; or kNone.
        long handle;
        std::string_view name;       ///< Its own.
        std::string_view fullName;   ///< Of a class; otherwise its own.
        Declarations::Record record; ///< Of the database.
        RtiFedSpan place;     ///< Its name in the text, quotes included; of length 0 if the text does not have it.
        Index numMembers = 0; ///< They follow it.
        Index numDescendants = 0;
        Index firstSubclass = kNone, nextSibling = kNone;
    };

    /// A name where the text declares it.
    struct Place {
        RtiFedSpan span;
        Index entity = kNone;
        bool isRepeated = false; ///< A duplicate, in its class or in a subclass, which the library refuses.
    };

    /// Takes time in proportion to the declarations.
    explicit Entities(const Checker &text);

    const Entity &operator[](Index index) const { return _entities[index]; }
    Index size() const { return static_cast<Index>(_entities.size()); }

    /// All places, in the order of the text.
    const std::vector<Place> &places() const { return _places; }
    /// The place whose name begins at this offset, or null.
    const Place *placeAt(std::uint32_t offset) const;
    /// The first place whose name does not end before this offset; an iterator into places().
    std::vector<Place>::const_iterator placeFrom(std::uint32_t offset) const;

    /// The entities of this own name, in any letter case, but no more than `most`; empty if there are more.
    std::vector<Index> named(std::string_view name, std::size_t most) const;
    /// The member that a class or space declares itself, or kNone.
    Index member(Index owner, std::string_view name) const;
    /// The space that a name finds, or kNone.
    Index space(std::string_view name) const;
    /// The class of this full name, or kNone.
    Index classNamed(ClauseKind kind, std::string_view fullName) const;

    /// The name of its class or space, a dot, and its own name; of a class or space the full name.
    std::string path(Index entity) const;
    /// The number of members of all superclasses.
    std::size_t numInherited(Index entity) const;

private:
    template <class Tree>
    void readClasses();
    void readSpaces();
    void linkClasses();
    void sortNames();
    void add(ClauseKind kind, Index owner, long handle, const std::string &name, Declarations::Record record);

    /// The entities sorted by the hash of the name, then by owner: lookups of a name, and of a name in a class.
    struct Name {
        std::uint64_t hash;
        Index owner, entity;

        bool operator<(const Name &other) const {
            return hash != other.hash     ? hash < other.hash
                   : owner != other.owner ? owner < other.owner
                                          : entity < other.entity;
        }
    };

    const Checker &_text;
    std::vector<Entity> _entities;
    std::vector<Place> _places;
    std::vector<Name> _names;
};
