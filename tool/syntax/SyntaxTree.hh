#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// A FED text as tokens and clauses, without loss: the tokens one after the other are the text, byte for byte, whatever
/// the text is. Spaces and comments are tokens too.
///
/// The parser cuts the text, and a clause is from a "(" to its ")". So the tree and the parser cannot disagree about a
/// text that parses. The tree repairs nothing: in a text that does not parse, a clause without ")" ends with the
/// text, and a surplus ")" belongs to no clause.
///
/// Clauses are in the order of the text, each before those in it; this needs no recursion at any nesting. The tree
/// never changes: SyntaxEdits changes the text.
class SyntaxTree {
public:
    using Kind = RtiFedPiece::Kind;
    using Index = std::uint32_t; ///< Of a token or clause.
    static constexpr Index kNone = 0xFFFFFFFF;

    struct Token {
        std::uint32_t begin; ///< Its offset; it ends where the next one begins.
        Kind kind;
    };

    struct Clause {
        Index open;   ///< Its "(".
        Index close;  ///< Its ")"; if it has none, the number of tokens.
        Index parent; ///< The clause around it, or kNone.
        Index end;    ///< The clause after the last one in it. The first one in it, if any, directly follows it.
    };

    /// Reads the text of the parser, which must outlive the tree.
    explicit SyntaxTree(const RtiFedParser &parser);

    std::string_view text() const { return _parser->text(); }

    const std::vector<Clause> &clauses() const { return _clauses; }
    Index numTokens() const { return static_cast<Index>(_tokens.size() - 1); }
    /// The kind of a token; Kind::nul for the number of tokens, so that one may look at what follows any token.
    Kind kind(Index token) const { return _tokens[token].kind; }

    /// The offset of the first byte of a token; the size of the text for the number of tokens.
    std::uint32_t begin(Index token) const { return _tokens[token].begin; }
    std::uint32_t end(Index token) const { return _tokens[token + 1].begin; }
    std::string_view bytes(Index token) const { return text().substr(begin(token), end(token) - begin(token)); }

    /// The bytes of a clause, from its "(" to its ")".
    RtiFedSpan span(Index clause) const;
    unsigned long line(Index token) const { return _parser->positionAt(begin(token)).line; }

    /// The token with this byte; the number of tokens for the size of the text.
    Index tokenAt(std::uint32_t offset) const;
    /// The bytes from one token to another one.
    RtiFedSpan spanOfTokens(Index first, Index last) const { return {begin(first), end(last) - begin(first)}; }

    /// The words of a clause before the first clause in it, the keyword first.
    std::vector<Index> words(Index clause) const;

    /// The usual spelling of the keyword of a clause; empty if its first word is none.
    std::string_view keyword(Index clause) const;

    /// Whether other clauses are in a clause.
    bool hasClauses(Index clause) const { return _clauses[clause].end > clause + 1; }

    /// The innermost clause with this byte, or kNone.
    Index clauseAt(std::uint32_t offset) const;

    static bool isWord(Kind kind) { return kind == RtiFedPiece::Kind::word || kind == RtiFedPiece::Kind::quotedWord; }
    static bool isSpace(Kind kind) { return kind == RtiFedPiece::Kind::blanks || kind == RtiFedPiece::Kind::lineEnd; }

private:
    void readClauses();

    const RtiFedParser *_parser;
    std::vector<Token> _tokens; // and one more, where the text ends
    std::vector<Clause> _clauses;
};
