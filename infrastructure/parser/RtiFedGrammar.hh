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

/// The syntax of one kind of clause, and its words in messages.
struct RtiFedClauseForm {
    std::string_view keyword;
    const char *noun; ///< In a message, before its name or keyword.
    std::size_t numArguments;
    const char *arguments[3]; ///< Each argument in a message.
    bool maySpace;            ///< The name of a routing space may follow the arguments.
    bool named;               ///< The first argument is its name.
    const char *place;        ///< In a message, where it belongs.
    std::size_t numChildren;
    RtiFedClause children[6]; ///< The clauses allowed in it.
};

const RtiFedClauseForm &formOf(RtiFedClause clause);

/// Whether a word is the keyword of this kind of clause, in any letter case.
bool isKeywordOf(RtiFedClause clause, std::string_view word);

/// What RtiFedParser::keyword promises.
std::string_view keywordOf(std::string_view word);

/// The kind of clause that a keyword begins in `parent`, or RtiFedClause::unknown.
RtiFedClause childOf(RtiFedClause parent, std::string_view keyword);

/// The kind of class that a section or class may contain, or RtiFedClause::unknown.
RtiFedClause classIn(RtiFedClause owner);

/// The kind of member that a class or space has, or RtiFedClause::unknown.
RtiFedClause memberOf(RtiFedClause owner);

/// Whether this kind of clause contains no clauses, except perhaps a sec_level.
bool isLeaf(RtiFedClause clause);

inline bool isClass(RtiFedClause clause) {
    return clause == RtiFedClause::objectClass || clause == RtiFedClause::interactionClass;
}
