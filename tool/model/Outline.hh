#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/model/TreeKind.hh"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

class Declarations;
class RtiFedDatabase;

/// The contents of a model in plain terms, with both class trees in one form: for commands that show or compare models.
///
/// A file that the library refuses has an outline too, as far as it can be understood: the members of a class that is
/// declared more than once are all in the first, and a member that a subclass declares again is inherited.
struct Outline {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Properties {
        /// In the short words of FED texts; an unknown word as it is written; an unknown handle of an image as #HANDLE.
        /// Empty if it was not understood.
        std::string transportation, ordering;
        std::string space; ///< As its declaration spells it; empty if there is none.

        bool any() const { return !transportation.empty() || !ordering.empty() || !space.empty(); }
    };

    /// An attribute, a parameter or a dimension. Only attributes have properties.
    struct Member {
        std::string name;
        unsigned long handle = 0;
        Properties properties;
        std::optional<RtiFedPosition> place; ///< Of its name; nothing in an image, or if the text does not declare it.
        std::vector<RtiFedPosition> laterPlaces = {}; ///< Of further declarations, which the library refuses.
    };

    /// Only interaction classes have properties.
    struct Class {
        std::string name; ///< The full dotted one.
        unsigned long handle = 0;
        Properties properties;
        std::optional<RtiFedPosition> place;
        std::size_t parent = kNone; ///< The index of the superclass, smaller than that of the class.
        std::vector<std::size_t> children;
        std::size_t numDescendants = 0;
        std::vector<Member> members; ///< Those that the class declares itself.
    };

    using Classes = std::vector<Class>;

    struct Space {
        std::string name;
        long handle = 0;
        std::optional<RtiFedPosition> place;
        std::vector<Member> dimensions;
    };

    std::string federation, version;
    std::vector<Space> spaces;     ///< By handle.
    Classes objects, interactions; ///< By handle, except that a class never comes before its superclass.

    const Classes &classes(const TreeKind &tree) const { return &tree == &kObjectTree ? objects : interactions; }

    /// Whether the library accepts the file. If not, the handles mean nothing: no process of a federation has them.
    bool loads = false;
    /// Whether the classes and members have handles, which they have only in FED.
    bool hasHandles = true;
    unsigned long checksum = 0; ///< Of the model; only if the file loads.

    /// The first place where the file declares something that is not in the outline: declarations with a syntax error
    /// and duplicate declarations are not. Absent if everything is in it.
    std::optional<RtiFedPosition> incompleteAt;

    /// Whether each name that the file declares is certainly in the outline, so that a name that is not in it is not in
    /// the file either.
    bool hasAllNames = true;

    /// The outline of a file of which nothing is understood.
    Outline() = default;
    /// Reads a database; `isAccepted` is false for one that was built from as much of a text as can be understood.
    /// `declarations` is null for an image.
    Outline(const RtiFedDatabase &database, const Declarations *declarations, bool isAccepted);
};

/// Returns the classes that have no superclass: in a text that the library refuses there may be several.
std::vector<std::size_t> rootsOf(const Outline::Classes &classes);
