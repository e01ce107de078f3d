#pragma once

#include "tool/format/Format.hh"

#include <vector>

/// A word, parenthesis or comment of a text that is formatted.
struct SequencePiece {
    SyntaxTree::Index token = 0;
    SyntaxTree::Index clause = SyntaxTree::kNone; ///< Whose layout decides about it; of a comment, the next one's.
    std::uint32_t gap = 0;                        ///< In the text, the spaces before it begin here.
    bool beginsLine = false;                      ///< In the text.
    bool afterBlankLine = false;                  ///< In the text.
    bool continues = false; ///< A comment that continues the comment before it, on a line of its own.
};

/// Returns the pieces of a text in the order in which they are written again. It is that of the text, except that some
/// comments and ")" change places, so that a comment stays with its clause when each clause gets a line of its own:
///
/// - A comment after several ")" belongs to the last clause that begins on its line, and follows that clause's ")".
/// - The ")" of a clause without clauses in it is written before the comment after its last word.
///
/// A comment on a line of its own below a comment of this kind, in the same column, continues it and follows it.
///
/// `changes` says of each clause whether its layout may change; nothing else is moved.
std::vector<SequencePiece> sequenceOf(const SyntaxTree &tree, const std::vector<bool> &changes);
