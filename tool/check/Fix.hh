#pragma once

#include "tool/syntax/Replacement.hh"

#include <string>
#include <string_view>
#include <vector>

/// What can be done about a finding: edits of the text that are made together.
struct Fix {
    std::vector<Replacement> edits = {};
    /// Whether it may be made without asking: it has one meaning, and takes nothing away that the model had.
    bool isSafe = false;
    std::string text = {}; ///< What it does, such as `remove the attribute "Height"`; empty if the edits say all.

    bool empty() const { return edits.empty(); }
    /// Returns what it does; `source` is the text that it edits.
    std::string description(std::string_view source) const;
};
