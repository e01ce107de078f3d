#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <vector>

/// How the parentheses of a whole text balance, and if they do not, where the mistakes are, as far as the text shows
/// it.
///
/// The count alone does not show where a parenthesis is missing or superfluous, and the grammar may notice it many
/// lines later. RtiFedBalanceSearch compares the ways in which the text can be corrected. If one is clearly the best,
/// it is the suspect; if up to three are about equally good, the suspect names all of them; otherwise there is none. So
/// a suspect is a judgement, not a fact, and a message must say so.
struct RtiFedBalance {
    struct Suspect {
        enum Change : unsigned char {
            missingClose, ///< A ")" is missing at `at`, which is directly after a token.
            surplusClose, ///< The ")" at `at` is superfluous.
            surplusOpen   ///< The "(" at `at` is superfluous.
        };
        static constexpr std::size_t kMostPlaces = 3;

        Change change;
        RtiFedOffset at;
        /// Where a person is shown the mistake, in the order of the text. If a ")" seems to be lost from a line of its
        /// own, that is in that line.
        RtiFedOffset places[kMostPlaces];
        std::size_t numPlaces;
    };

    explicit RtiFedBalance(const RtiFedText &text);

    long missingCloses = 0; ///< Negative if there are too many.
    /// In the order of the text. Not among them are the mistakes that the grammar shows where they are.
    std::vector<Suspect> suspects;
    std::size_t numMistakes = 0; ///< The least number of parentheses that must change, suspects or not, if it is known.
    bool isUnclear = false;      ///< There is a mistake that may be at more than three places.
};
