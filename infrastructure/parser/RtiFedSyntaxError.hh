#pragma once

#include "infrastructure/RtiFedErrorTypes.hh"
#include "infrastructure/parser/RtiFedGrammar.hh"
#include "infrastructure/parser/balance/RtiFedBalance.hh"

#include <optional>
#include <string>

/// A clause as a message names it.
struct RtiFedClauseName {
    RtiFedClause kind = RtiFedClause::unknown;
    RtiFedOffset begin = 0; ///< Its "(".
    RtiFedSpan label;       ///< Its name, or its keyword if that is unknown; of length 0 if it has neither.
};

/// One syntax error: what was expected where. It is small, since a text may have many; the message is made from it and
/// the FED text on demand.
struct RtiFedSyntaxError {
    using Problem = RtiFedErrorTypes::Problem;

    Problem problem{};
    bool isUnclear = false;                       ///< The layout does not show where the mistake is.
    bool afterFirst = false;                      ///< The clause already has others in it, so a sec_level is too late.
    RtiFedClause missing = RtiFedClause::unknown; ///< Of missingClause: its kind.
    RtiFedOffset at = 0;                          ///< The first byte of the unexpected token.
    RtiFedOffset earlier = 0;                     ///< Of secondClause: the first; of trailingText: the ")" of FED.
    RtiFedClauseName clause;                      ///< The innermost clause.
    std::size_t argument = 0;                     ///< Of expectedArgument: the index of the first one.
    std::size_t numMissing = 1;                   ///< Of expectedArgument.
    RtiFedOffset wordsEnd = 0;  ///< Of expectedArgument: the end of the words before it, if these end an earlier line.
    std::size_t nameLength = 0; ///< Of nameTooLong and fullNameTooLong.
    std::optional<RtiFedBalance::Suspect> suspect; ///< The error is not a fact, but judged by the layout of the text.

    /// Where the text must be changed: where something is missing, or the unexpected token.
    RtiFedOffset place() const;

    RtiFedErrorTypes::Error resolve(const RtiFedText &text) const;

private:
    std::string missingWords() const;
    std::string belongs(const RtiFedText &text) const;
    std::string describe(const RtiFedText &text) const;
    RtiFedSpan span(const RtiFedText &text) const;
    std::vector<RtiFedErrorTypes::Note> notes(const RtiFedText &text) const;
    std::string describeSuspect(const RtiFedText &text) const;
    std::vector<RtiFedErrorTypes::Note> notesOfSuspect(const RtiFedText &text) const;
    std::vector<std::string> keywords() const;
    std::optional<RtiFedErrorTypes::Correction> correction(const RtiFedText &text) const;
};
