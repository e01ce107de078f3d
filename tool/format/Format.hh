#pragma once

#include "tool/syntax/SyntaxTree.hh"

#include <cstddef>
#include <optional>
#include <string>

/// Lines of a text, both included.
struct LineRange {
    unsigned long first, last;
};

/// More could put a comment of its own line below the comment after "(spaces", whose continuation it would become.
inline constexpr std::size_t kMaxIndentation = 8;

struct FormatOptions {
    std::size_t indentation = 2;    ///< Blanks for each level of nesting, 1 to kMaxIndentation.
    std::optional<LineRange> lines; ///< Only clauses that begin there are changed; by default, all.
};

/// Returns a text that parses in the canonical layout, which docs/formatting.md describes. Only these bytes change:
/// spaces and line ends between words, parentheses and comments; blanks at the end of comments; the letter case of
/// keywords. Words and parentheses keep their order, and so do the comments.
std::string formatted(const SyntaxTree &tree, const FormatOptions &options = {});
