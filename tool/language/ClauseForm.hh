#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// The kinds of clauses of a FED text.
enum class ClauseKind : unsigned char {
    unknown, ///< Its first word is not a keyword.
    fed,
    federation,
    version,
    federate,
    spaces,
    space,
    dimension,
    objects,
    objectClass,
    attribute,
    interactions,
    interactionClass,
    parameter,
    secLevel
};

/// What a word of a clause is.
enum class WordRole : unsigned char {
    none, ///< A word that does not belong there.
    keyword,
    name,
    transportation,
    ordering,
    space,
    value ///< A version or a security level.
};

/// What an editor knows of a kind of clause. A test compares it with the parser.
struct ClauseForm {
    std::string_view keyword;
    const char *noun;              ///< In texts, before its name.
    std::array<WordRole, 4> words; ///< Those after the keyword.
    std::size_t numRequired;       ///< Of these words.
    bool isUnique;                 ///< Whether only one is allowed in the enclosing clause.
    std::array<ClauseKind, 6> children;
    const char *explanation; ///< One sentence, for a person who does not know the keyword.
};

const ClauseForm &formOf(ClauseKind kind);

/// The role of a word by its index in its clause, the keyword at 0.
WordRole roleOf(ClauseKind kind, std::size_t word);

/// Returns the kind of clause that a keyword, in its usual spelling, begins. `class` gives an interaction class in the
/// section of interactions, and an object class elsewhere.
ClauseKind kindOf(std::string_view keyword, bool inInteractions);

inline bool isClass(ClauseKind kind) {
    return kind == ClauseKind::objectClass || kind == ClauseKind::interactionClass;
}
inline bool isMember(ClauseKind kind) {
    return kind == ClauseKind::attribute || kind == ClauseKind::parameter || kind == ClauseKind::dimension;
}
