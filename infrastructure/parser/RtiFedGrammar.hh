#pragma once

#include <cstddef>
#include <string_view>

/// The clauses of a FED text. Each is "(", its keyword, its arguments, the clauses in it, ")".
enum class RtiFedClause : unsigned char {
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
    secLevel,
    unknown
};

/// What one kind of clause looks like.
struct RtiFedClauseForm {
    std::string_view keyword;
    const char *noun; ///< What it is called in a message, in front of its name or keyword.
    std::size_t numArguments;
    const char *arguments[3]; ///< What each argument is called in a message.
    bool maySpace;            ///< The name of a routing space may follow the arguments.
    bool named;               ///< The first argument is its name.
    std::size_t numChildren;
    RtiFedClause children[6]; ///< The clauses that may stand in it.
};

const RtiFedClauseForm &formOf(RtiFedClause clause);

/// Whether a word is the keyword of this kind of clause, in any letter case.
bool isKeywordOf(RtiFedClause clause, std::string_view word);

/// The kind of clause that a keyword begins inside of `parent`, or RtiFedClause::unknown.
RtiFedClause childOf(RtiFedClause parent, std::string_view keyword);

/// The kind of class that may stand in a section or class, or RtiFedClause::unknown.
RtiFedClause classIn(RtiFedClause owner);

/// The kind of member that a class or space has, or RtiFedClause::unknown.
RtiFedClause memberOf(RtiFedClause owner);

/// Whether no clause but a sec_level may stand in this kind of clause.
bool isLeaf(RtiFedClause clause);

inline bool isClass(RtiFedClause clause) {
    return clause == RtiFedClause::objectClass || clause == RtiFedClause::interactionClass;
}
