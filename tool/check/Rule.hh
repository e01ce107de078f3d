#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <string>
#include <vector>

enum class Severity : unsigned char {
    warning, ///< The database accepts it, and people regret it.
    error    ///< The database refuses it.
};

const char *nameOf(Severity severity);

/// One kind of problem that a file may have, and what there is to know about it.
struct Rule {
    const char *id; ///< People name it in scripts: once published, it stays.
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

/// All rules: those of syntax errors first, the warnings last.
const std::vector<Rule> &allRules();

/// The page about all rules, in Markdown.
std::string rulesAsMarkdown();

/// Breaks a text into lines of at most `width` bytes, as far as its words are not longer, each behind `indent`.
std::string wrapped(const std::string &text, std::size_t width, const std::string &indent = "");
