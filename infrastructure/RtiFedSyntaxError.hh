#pragma once

#include "infrastructure/RtiFedBalance.hh"
#include "infrastructure/RtiFedGrammar.hh"

#include <optional>
#include <string>

/// A clause as a message names it.
struct RtiFedClauseName {
    RtiFedClause kind = RtiFedClause::unknown;
    RtiFedOffset begin = 0; ///< Its "(".
    RtiFedSpan label;       ///< Its name, or its keyword if that is unknown; of length 0 if it has none.
};

/// One syntax error, small, since a text may have many: what was expected where. The message is made from it and the
/// FED text when it is asked for.
struct RtiFedSyntaxError {
    enum Problem : unsigned char {
        expectedFed,      ///< The text does not begin with "(FED".
        expectedArgument, ///< `number` counts the arguments of the clause from 0.
        expectedClause,   ///< One of the clauses that may stand in the clause.
        expectedClose,    ///< The ")" of the clause, or a clause if one may stand there.
        leftOpen,         ///< As expectedClose, where the look of the text may tell which clause was meant.
        secondClause,     ///< `other` is the first of its kind.
        missingClause,    ///< `number` is the kind that does not stand in the FED clause.
        nestedTooDeeply,
        dotInClassName,
        nameTooLong, ///< `number` is its length, as below.
        fullNameTooLong,
        namesTooLong,
        strayQuote,
        trailingText, ///< `other` is the ")" that closed the FED clause.
        nulByte,
        textTooLong,
        tooManyErrors
    };

    Problem problem;
    bool afterFirst = false; ///< The clause has others in it already, so a sec_level comes too late.
    RtiFedOffset at = 0;     ///< The first byte of the offending token.
    RtiFedClauseName clause; ///< In which it stands.
    RtiFedOffset other = 0;
    RtiFedOffset number = 0;
    std::optional<RtiFedBalance::Suspect> suspect;

    std::string describe(const RtiFedText &text) const;
};
