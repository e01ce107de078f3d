#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <vector>

/// How the parentheses of a whole text balance, and where its indentation contradicts them.
///
/// The count alone does not show where a parenthesis is missing or superfluous, and the grammar may notice it many
/// lines later. But most texts are indented, and people indent by the nesting they mean: so the first line whose
/// indentation does not fit the nesting is close to the mistake. Three checks compare the two, each walking the text
/// and correcting the nesting wherever it finds a contradiction, so that one mistake is found once. What they find only
/// directs the reader of a message to a place; it never changes how the text is read. They find nothing in a text that
/// is written on one line, and may be misled by a text whose indentation does not follow its nesting, or mixes tabs and
/// blanks.
struct RtiFedBalance {
    struct Suspect {
        enum Evidence : unsigned char {
            closeUnderOuter, ///< `at`, the ")" of `clause`, begins a line and is aligned with `outer` around it.
            openUnderClause, ///< `at`, the "(" of a clause in `clause`, begins a line and is aligned with `clause`.
            textAfterClose   ///< After `at`, the ")" of `clause`, a line begins to the right of `clause`.
        };
        Evidence evidence;
        RtiFedOffset clause; ///< The "(" of a clause.
        RtiFedOffset at;
        RtiFedOffset outer = 0;
    };

    explicit RtiFedBalance(const RtiFedText &text);

    long missingCloses = 0; ///< Negative if there are too many.
    /// In the order of the text: where a ")" is missing or, if there are too many, superfluous.
    std::vector<Suspect> suspects;
};
