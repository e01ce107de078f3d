#pragma once

#include "tool/language/ClauseForm.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct MomClass;

/// What each clause of a tree is, judging by the keywords alone. So a clause in a wrong place is one too, and all of a
/// text that does not parse is known.
class Clauses {
public:
    using Index = SyntaxTree::Index;

    struct Clause {
        ClauseKind kind = ClauseKind::unknown;
        Index name = SyntaxTree::kNone; ///< The token of its name; kNone if it has none.
        const MomClass *mom = nullptr;  ///< The class that the RTI uses, if the clause is one by its path.
    };

    /// Takes time in proportion to the text.
    explicit Clauses(const SyntaxTree &tree);

    const Clause &operator[](Index clause) const { return _clauses[clause]; }

    /// Whether the RTI uses what the clause declares: a class or a member by its path.
    bool isMom(Index clause) const;

    /// The role of a word by its place in its clause; none outside of clauses.
    WordRole role(Index token) const;

    /// The name without its quotes; empty if there is none.
    std::string_view name(Index clause) const;

private:
    void readName(Index clause, Index token);

    const SyntaxTree &_tree;
    std::vector<Clause> _clauses;
};

/// The text of a word, without quotes.
std::string_view wordOf(const SyntaxTree &tree, SyntaxTree::Index token);

/// The bytes of a token.
RtiFedSpan spanOf(const SyntaxTree &tree, SyntaxTree::Index token);

/// The word or comment with this byte or, if there is none, the one that ends before it: a cursor after a word is at
/// this word. kNone if there is none either.
SyntaxTree::Index wordAt(const SyntaxTree &tree, std::uint32_t offset);

constexpr std::size_t kNoWord = static_cast<std::size_t>(-1);

/// Calls `visit` with each token, its clause (kNone outside of clauses), and, for a word before the first clause in
/// its clause, its index there, the keyword at 0; kNoWord for anything else. A parenthesis belongs to its own clause.
template <class Visit>
void forEachToken(const SyntaxTree &tree, Visit visit) {
    struct Open {
        SyntaxTree::Index clause;
        std::size_t numWords;
    };
    std::vector<Open> open;
    SyntaxTree::Index next = 0;
    for (SyntaxTree::Index token = 0; token < tree.numTokens(); ++token) {
        const SyntaxTree::Kind kind = tree.kind(token);
        if (kind == SyntaxTree::Kind::open) {
            if (!open.empty())
                open.back().numWords = kNoWord;
            open.push_back({next++, 0});
        }
        const bool counts = SyntaxTree::isWord(kind) && !open.empty() && open.back().numWords != kNoWord;
        visit(token, open.empty() ? SyntaxTree::kNone : open.back().clause, counts ? open.back().numWords++ : kNoWord);
        if (kind == SyntaxTree::Kind::close && !open.empty())
            open.pop_back();
    }
}
