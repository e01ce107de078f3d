#pragma once

#include "tool/language/ClauseForm.hh"

#include "infrastructure/RtiFedPosition.hh"

#include <cstddef>
#include <string>
#include <vector>

class Document;

/// An entry of the outline of a document.
struct DocumentSymbol {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    static constexpr std::size_t kMaxDepth = 260; ///< More than classes, their section and their members have.

    ClauseKind kind;
    std::string name;    ///< Printable, never empty; the keyword if the clause has no name yet.
    std::string detail;  ///< The words after the name as the text has them; may be empty.
    RtiFedSpan span;     ///< The clause.
    RtiFedSpan nameSpan; ///< The name within it, or the keyword.
    std::size_t parent;  ///< The index of the entry that this one is in, smaller than its own; or kNone.
};

/// Returns the outline: the federation, the sections, and all that they declare, in the order of the text. A text that
/// does not parse has one too, with the nesting that its parentheses give it, but no deeper than kMaxDepth: what is
/// deeper is in the innermost entry of that depth, so that a recursion over the entries is safe. Takes time in
/// proportion to the text.
std::vector<DocumentSymbol> documentSymbols(const Document &document);
