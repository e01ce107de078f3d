#pragma once

#include "infrastructure/RtiFedPosition.hh"
#include "tool/fom/FomNames.hh"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// A place in one of the modules of an object model.
struct FomPlace {
    std::size_t module = 0;
    RtiFedSpan span;
};

/// What a module says at a place.
struct FomText {
    std::string text;
    FomPlace place;

    bool given() const { return place.span.length > 0; } ///< Even if the text is empty, because it was not understood.
};

/// How an attribute or interaction class is sent, in the words of FED. The root interaction class and privilegeToDelete
/// may lack a transportation or order: no module needs to repeat those of the standard.
struct FomDelivery {
    FomText transportation, order;
    std::vector<std::size_t> dimensions; ///< Their indices in the model, in ascending order, each once.
};

/// An attribute, which has a delivery, or a parameter.
struct FomMember {
    FomText name; ///< As in FED. Without a place if no module declares the member.
    FomDelivery delivery;
    std::string dataType, semantics; ///< Empty if they are unknown.
};

/// An object class, or an interaction class, which has a delivery.
struct FomClass {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    FomText name;         ///< As in FED.
    std::string fullName; ///< The dotted one in FED.
    std::size_t parent = kNone;
    std::vector<std::size_t> children = {};
    FomDelivery delivery = {};
    std::vector<FomMember> members = {};
    std::string semantics = {};
    bool isDefined = false;         ///< Whether a module says what FED holds: members or a delivery.
    bool isDescribed = false;       ///< Whether a module says anything else about it.
    std::size_t definedBy = kNone;  ///< The first module that defines it.
    std::size_t lastModule = kNone; ///< The last module that has it, and the first place there.
    FomPlace placeInLastModule = {};
};

/// A class tree; each class comes after its superclass, and the root is the first.
using FomClasses = std::vector<FomClass>;

/// Modules of an object model, merged.
struct FomModel {
    struct Dimension {
        FomText name;               ///< As in XML.
        bool isEmptySpace;          ///< Whether an export made it of a space without dimensions.
        std::string semantics;      ///< What a note of an export says about it; of an empty space, about that.
        std::string spaceSemantics; ///< What a note of an export says about its space.
    };

    bool isUnderstood = true; ///< Whether all modules are object models that can be read.
    std::string federation;   ///< Empty if no module has a name.
    std::string version{kUsualFedVersion};
    std::string description;
    std::vector<Dimension> dimensions;
    FomClasses objects, interactions;
    std::size_t fullNames = 0; ///< The bytes of the full names of all classes.

    /// What the modules say and FED cannot hold, with how often they say it.
    std::map<std::string, std::size_t> losses;

    const FomClasses &classes(const FomTree &tree) const { return &tree == &kFomObjects ? objects : interactions; }
    FomClasses &classes(const FomTree &tree) { return &tree == &kFomObjects ? objects : interactions; }
};
