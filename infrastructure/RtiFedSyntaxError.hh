#pragma once

#include "infrastructure/RtiFedBalance.hh"
#include "infrastructure/RtiFedGrammar.hh"

/// One syntax error, small, since a text may have very many: what was expected where. The text is made from it and the
/// FED text when it is asked for.
struct RtiFedSyntaxError {
    enum Problem : unsigned char {
        expectedFed,      ///< The text does not begin with "(FED".
        expectedArgument, ///< `number` counts the arguments of `kind` from 0.
        expectedClause,   ///< One of the clauses that may stand in `clause`.
        expectedClose,    ///< The ")" of `clause`.
        leftOpen,         ///< As expectedClose, where the look of the text may tell which clause was meant.
        secondClause,     ///< `other` is the first of its kind.
        missingClause,    ///< `kind` does not stand in the FED clause.
        nestedTooDeeply,
        dotInClassName,
        nameTooLong, ///< `number` is its length, as below.
        fullNameTooLong,
        namesTooLong,
        unterminatedQuote,
        trailingText, ///< `other` is the ")" that closed the FED clause.
        nulByte,
        textTooLong
    };

    Problem problem;
    RtiFedClause kind = RtiFedClause::unknown;
    bool afterFirst = false; ///< The clause has others in it already, so a sec_level comes too late.
    RtiFedOffset at = 0;     ///< The first byte of the offending token.
    RtiFedOffset clause = 0; ///< The "(" of the clause in which it stands.
    RtiFedOffset other = 0;
    RtiFedOffset number = 0;

    std::string describe(const RtiFedText &text, const std::optional<RtiFedBalance::Suspect> &suspect) const;
};
