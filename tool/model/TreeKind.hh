#pragma once

#include <array>

/// One of the two class trees of a model, in the words of messages and output.
struct TreeKind {
    const char *className;      ///< In messages.
    const char *memberName;     ///< In messages.
    const char *root;           ///< The root class, in which the Management Object Model is.
    const char *heading;        ///< In listings.
    bool membersHaveProperties; ///< Whether its members have a transportation, ordering and space, else its classes.
    /// Keys of docs/model.schema.json.
    const char *classesKey, *membersKey, *membersFromKey, *effectiveMembersKey;
};

inline constexpr TreeKind kObjectTree = {"object class",  "attribute",  "ObjectRoot",     "Object classes",     true,
                                         "objectClasses", "attributes", "attributesFrom", "effectiveAttributes"};
inline constexpr TreeKind kInteractionTree = {
    "interaction class",  "parameter",  "InteractionRoot", "Interaction classes", false,
    "interactionClasses", "parameters", "parametersFrom",  "effectiveParameters"};

inline constexpr std::array<const TreeKind *, 2> kTreeKinds = {&kObjectTree, &kInteractionTree};
