#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

enum class Severity : unsigned char {
    warning, ///< The database accepts it, but it is probably a mistake.
    error    ///< The database refuses it.
};

const char *nameOf(Severity severity);

/// One kind of problem that a file may have, with its explanation.
struct Rule {
    std::size_t index; ///< In allRules().
    const char *id;    ///< Scripts name it: once published, it stays.
    Severity severity;
    const char *title;
    const char *why;   ///< Why the rule exists.
    const char *fix;   ///< How to fix what it finds.
    const char *wrong; ///< An example that it finds.
    const char *right; ///< The example without the problem. Both are empty if there is no short one.

    bool hasExample() const { return *wrong != '\0'; }
    /// Whether it is about the habits of a project: off unless a configuration switches it on.
    bool isHabit() const;
};

/// The rules besides those for syntax errors, which are RtiFedParser::Problem.
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
    misspeltRoot,
    damagedImage,
    notWellFormed,
    notAnObjectModel,
    unknownElement,
    undefinedClass,
    unusableName,
    conflictingModules,
    unusedSpace,
    spaceWithoutDimensions,
    repeatedSpace,
    hiddenDimension,
    letterCase,
    blankInName,
    noPrivilegeToDelete,
    noRtiPrivate,
    danglingReference,
    redeclaredMember,
    badSuppression,
    unusedSuppression,
    className,
    attributeName,
    parameterName,
    spaceName,
    namePrefix,
    fixedTransportation,
    fixedOrdering
};

const Rule &ruleOf(RtiFedParser::Problem problem);
const Rule &ruleOf(RuleId id);

inline constexpr std::size_t kNumProblems = RtiFedParser::foreignBlank + 1;
using Rules = std::array<Rule, kNumProblems + static_cast<std::size_t>(RuleId::fixedOrdering) + 1>;

/// Returns the rule of this id, or null.
const Rule *findRule(std::string_view id);

/// All rules: those of syntax errors in the order of RtiFedParser::Problem, then those of RuleId: errors, warnings,
/// habits.
const Rules &allRules();

/// Returns the words for the files that the library refuses for an error of this rule, after their number, such as
/// `with repeated members`.
std::string summaryOf(const Rule &rule);
