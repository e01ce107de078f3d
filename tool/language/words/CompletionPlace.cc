#include "tool/language/words/CompletionPlace.hh"

#include "tool/language/words/Clauses.hh"

#include <algorithm>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

/// The innermost clause that is open between the byte before an offset and the byte at it.
Index openClauseAt(const SyntaxTree &tree, std::uint32_t offset) {
    const Index clause = tree.clauseAt(offset);
    const bool beginsHere = clause != SyntaxTree::kNone && tree.begin(tree.clauses()[clause].open) == offset;
    return beginsHere ? tree.clauses()[clause].parent : clause;
}

CompletionPlace::Next nextAfter(const SyntaxTree &tree, Index token) {
    while (token < tree.numTokens() && tree.kind(token) == Kind::blanks)
        ++token;
    if (token == tree.numTokens())
        return CompletionPlace::Next::other;
    return tree.kind(token) == Kind::close        ? CompletionPlace::Next::close
           : SyntaxTree::isWord(tree.kind(token)) ? CompletionPlace::Next::word
                                                  : CompletionPlace::Next::other;
}

} // namespace

CompletionPlace::CompletionPlace(const SyntaxTree &tree, const Clauses &clauses, std::uint32_t offset)
    : replaced{offset, 0} {
    const Index here = tree.tokenAt(offset);
    const Index touched = wordAt(tree, offset);
    const bool isAfterQuote = here > 0 && tree.kind(here - 1) == Kind::strayQuote;
    isText = isAfterQuote ||
             (touched != SyntaxTree::kNone && tree.kind(touched) == Kind::comment && tree.begin(touched) < offset);
    if (touched != SyntaxTree::kNone && SyntaxTree::isWord(tree.kind(touched)))
        replaced = spanOf(tree, touched);
    next = nextAfter(tree, replaced.length > 0 ? touched + 1 : here);
    clause = openClauseAt(tree, replaced.begin);
    if (clause == SyntaxTree::kNone)
        return;
    kind = clauses[clause].kind;
    isAfterClause = tree.hasClauses(clause) && tree.begin(tree.clauses()[clause + 1].open) < replaced.begin;
    const auto words = tree.words(clause);
    word = static_cast<std::size_t>(
        std::count_if(words.begin(), words.end(), [&](Index token) { return tree.begin(token) < replaced.begin; }));
}
