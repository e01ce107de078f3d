#pragma once

#include "infrastructure/RtiFedText.hh"

#include <optional>

/// How the parentheses of a whole text match. Looked at only after an error, to tell where one was forgotten.
struct RtiFedBalance {
    /// A clause whose ")" begins a line under the beginning of a clause around it: by the look of the text it was left
    /// open, and that ")" is the outer clause's.
    struct Suspect {
        RtiFedOffset clause; ///< Its "(".
        RtiFedOffset close;  ///< The ")" that closes it.
        RtiFedOffset under;  ///< The "(" of the outer clause.
    };

    explicit RtiFedBalance(const RtiFedText &text);

    long missing = 0; ///< How many ")" are missing; negative if there are too many.
    std::optional<Suspect> suspect;
};
