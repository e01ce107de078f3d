#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <cstddef>

enum class Severity : unsigned char {
    warning, ///< The database accepts it, and people regret it.
    error    ///< The database refuses it.
};

const char *nameOf(Severity severity);

/// One kind of problem that a file may have, and what there is to know about it.
struct Rule {
    std::size_t index; ///< In allRules().
    const char *id;    ///< People name it in scripts: once published, it stays.
    Severity severity;
    const char *title;
    const char *why;   ///< Why it exists.
    const char *mend;  ///< How to mend what it finds.
    const char *wrong; ///< An example that it finds,
    const char *right; ///< and the same mended. Both are empty if there is no short one.

    bool hasExample() const { return *wrong != '\0'; }
};

/// The rules beside those of the syntax errors, which are the parser's problems.
enum class RuleId : unsigned char {
    unknownTransportation,
    unknownOrdering,
    unknownSpace,
    swappedWords,
    shiftedWords,
    repeatedClass,
    ambiguousClass,
    refusedClass,
    repeatedMember,
    inheritedMember,
    repeatedDimension,
    momIncomplete,
    momMisplaced,
    damagedImage,
    unusedSpace,
    spaceWithoutDimensions,
    repeatedSpace,
    hiddenDimension,
    letterCase,
    noPrivilegeToDelete,
    noRtiPrivate,
    danglingReference
};

const Rule &ruleOf(RtiFedParser::Problem problem);
const Rule &ruleOf(RuleId id);

inline constexpr std::size_t kNumProblems = RtiFedParser::tooManyErrors + 1;
using Rules = std::array<Rule, kNumProblems + static_cast<std::size_t>(RuleId::danglingReference) + 1>;

/// All rules: those of syntax errors in the order of RtiFedParser::Problem, then those of RuleId, the warnings last.
const Rules &allRules();
