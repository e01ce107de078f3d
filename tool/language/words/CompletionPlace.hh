#pragma once

#include "tool/language/ClauseForm.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <cstddef>
#include <cstdint>
#include <string_view>

class Clauses;

/// Where a cursor is in its clause, judging by the text before it.
struct CompletionPlace {
    using Index = SyntaxTree::Index;

    CompletionPlace(const SyntaxTree &tree, const Clauses &clauses, std::uint32_t offset);

    bool isText = false;              ///< In a comment, or after a quote that is not closed: nothing can be completed.
    RtiFedSpan replaced;              ///< The word at the cursor, or nothing.
    Index clause = SyntaxTree::kNone; ///< The innermost clause that is open there.
    ClauseKind kind = ClauseKind::unknown;
    std::size_t word = 0;       ///< The number of words of the clause before the cursor.
    bool isAfterClause = false; ///< Other clauses of the clause come before it.

    enum class Next : unsigned char { close, word, other };
    Next next = Next::other; ///< What follows on the line.

    /// The role of a word that would be inserted.
    WordRole role() const { return isAfterClause ? WordRole::none : roleOf(kind, word); }
    /// Whether a clause may begin there.
    bool mayBeginClause() const { return isAfterClause || word > formOf(kind).numRequired; }
};
