#pragma once

#include "tool/check/Checker.hh"

#include <string>
#include <vector>

/// A text with comments that allow its findings.
struct AllowedText {
    std::string text;
    std::size_t numComments = 0, numFindings = 0; ///< That were added, and that they allow.
};

/// Adds a comment that allows them for the findings of a text that are not suppressed, except for those about comments.
///
/// A comment is on a line of its own before the innermost clause of the finding, indented as the clause, and names all
/// rules that need it there. If the clause does not begin its line, the comment is at the end of the line of the
/// finding; if there is another comment, the line is broken before the clause. Nothing else is changed.
AllowedText addAllowComments(const Checker &text, const std::vector<Finding> &findings, const std::string &reason);
