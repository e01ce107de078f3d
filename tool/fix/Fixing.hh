#pragma once

#include "tool/check/CheckedFile.hh"
#include "tool/control/Settings.hh"
#include "tool/fix/EditedText.hh"

#include <string>
#include <vector>

/// Which fixes are made.
struct FixSelection {
    bool unsafe = false;                  ///< Whether those that need a decision are made too.
    std::vector<const Rule *> rules = {}; ///< Only of these; of all if it is empty.

    /// Whether a finding has a fix that is made. What a comment or configuration allows is left alone.
    bool takes(const Finding &finding) const;
};

/// A fix that was made.
struct MadeFix {
    const Rule *rule;
    RtiFedPosition place; ///< In the text before any fix.
    bool isSafe;
    std::string text; ///< What it did, as Fix::description().
};

/// A text after its fixes.
struct FixedText {
    EditedText text;
    std::vector<MadeFix> made; ///< In the order in which they were made.
    CheckedFile left;          ///< The text with what is still found in it.
};

/// Makes the fixes of a FED text.
///
/// The idea: check the text, make all fixes at once that do not touch each other, and begin again, until there is
/// nothing to do. So each fix is judged in the text in which it is made: one that a syntax error hid comes in a later
/// round, and one that an earlier fix made needless does not come at all. Fixes that undo each other come to an end
/// too; after three hundred rounds, what is left is for another run.
FixedText withFixes(const Input &input, const Settings &settings, const FixSelection &selection);
