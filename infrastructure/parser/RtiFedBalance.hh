#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <vector>

/// How the parentheses of a whole text match, and where by its look one is missing or too much. Made only after an
/// error, to lead its reader to the place.
struct RtiFedBalance {
    /// Where the look of the text, the indentation of its lines, contradicts its parentheses.
    struct Suspect {
        enum Look : unsigned char {
            closeUnderOuter, ///< `at`, the ")" of `clause`, begins a line under the beginning of `other` around it.
            openUnderClause, ///< `at`, the "(" of a clause in `clause`, begins a line just under it.
            moreBehindClose  ///< Behind `at`, the ")" of `clause`, a line begins to the right of that clause.
        };
        Look look;
        RtiFedOffset clause; ///< The "(" of a clause.
        RtiFedOffset at;
        RtiFedOffset other = 0;
    };

    explicit RtiFedBalance(const RtiFedText &text);

    long missingCloses = 0; ///< How many ")" are missing; below 0, how many there are too many.
    /// In the order of the text: one for each missing ")" as far as the look tells, or where there is one too many.
    std::vector<Suspect> suspects;
};
