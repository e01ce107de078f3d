#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/model/Input.hh"

#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

/// What the model of a file holds, in plain terms, both class trees alike: for commands that show or compare models.
///
/// It is made of a file that the library refuses as well, as far as it can be understood: members of a class that is
/// declared twice all stand in the first, and what a subclass declares again is inherited.
struct Outline {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Properties {
        /// In the short words of FED texts if they are known, else as written; what an image refers to and does not
        /// have as #HANDLE. Empty for what was not understood.
        std::string transportation, ordering;
        std::string space; ///< As its declaration spells it; empty if there is none.

        bool any() const { return !transportation.empty() || !ordering.empty() || !space.empty(); }
    };

    /// An attribute, a parameter or a dimension. Only attributes have properties.
    struct Member {
        std::string name;
        unsigned long handle = 0;
        Properties properties;
        std::optional<RtiFedPosition> place; ///< Of its name. Not in an image, and not of what is not declared.
        std::vector<RtiFedPosition> laterPlaces = {}; ///< Where it is declared again, which the library refuses.
    };

    /// Only interaction classes have properties.
    struct Class {
        std::string name; ///< The full dotted one.
        unsigned long handle = 0;
        Properties properties;
        std::optional<RtiFedPosition> place;
        std::size_t parent = kNone; ///< Its index; it is smaller than that of the class.
        std::vector<std::size_t> children;
        std::size_t numBelow = 0;    ///< How many classes are below it, at any depth.
        std::vector<Member> members; ///< Those it declares itself.
    };

    using Classes = std::vector<Class>;

    struct Space {
        std::string name;
        long handle = 0;
        std::optional<RtiFedPosition> place;
        std::vector<Member> dimensions;
    };

    std::string federation, version;
    std::vector<Space> spaces; ///< By handle, as the classes, but that a class never comes before its parent.
    Classes objects;           ///< The object classes.
    Classes interactions;      ///< The interaction classes.

    /// Whether the library accepts the file. If not, the handles mean nothing: no process of a federation has them.
    bool loads = false;
    unsigned long checksum = 0; ///< Of the model; only if the file loads.

    /// Whether all that the file declares is here. What it declares with a syntax error or a second time is not.
    bool complete = true;

    /// Throws RTI::Exception for an image that cannot be restored.
    explicit Outline(const Input &input);
};

/// The outline of a file that is shown to people. Says on `complaints` if the library refuses the file; null for an
/// image that cannot be restored, of which nothing can be shown.
std::unique_ptr<Outline> outlineToShow(const Input &input, std::ostream &complaints);
