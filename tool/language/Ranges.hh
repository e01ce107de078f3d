#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <cstdint>
#include <vector>

class Document;

/// Lines that an editor can hide, all but the first.
struct FoldingRange {
    RtiFedSpan span;        ///< From the first line to the last one; both are lines of the range.
    bool isComment = false; ///< Consecutive lines with nothing but a comment; otherwise a clause.
};

/// Returns the clauses over several lines and the runs of comment lines, in the order of their first bytes. A line that
/// begins with the ")" of a clause stays visible when the clause is folded. Takes time in proportion to the text.
std::vector<FoldingRange> foldingRanges(const Document &document);

/// Returns what "expand selection" selects at an offset, each span larger than the one before and around it: a word,
/// the words of its clause, the clause, the contents of the clause around it, and so on up to the whole text. In a
/// comment, the word, the comment, and the run of comment lines are first. Empty for an empty text. Of very deeply
/// nested parentheses only the inner ones and the whole text are selected.
///
/// Takes time in proportion to the nesting at the offset and the lengths of the words and comments around it.
std::vector<RtiFedSpan> selectionAt(const Document &document, std::uint32_t offset);
