#include "tool/syntax/SyntaxTree.hh"

#include <algorithm>

SyntaxTree::SyntaxTree(const RtiFedParser &parser) : _parser(&parser) {
    const auto size = static_cast<std::uint32_t>(text().size());
    for (std::uint32_t at = 0; at < size;) {
        const RtiFedPiece piece = parser.pieceAt(at);
        _tokens.push_back({at, piece.kind});
        at += piece.span.length;
    }
    _tokens.push_back({size, Kind::nul});
    readClauses();
}

void SyntaxTree::readClauses() {
    std::vector<Index> open;
    const auto close = [&](Index token) {
        _clauses[open.back()].close = token;
        _clauses[open.back()].end = static_cast<Index>(_clauses.size());
        open.pop_back();
    };
    for (Index token = 0; token < numTokens(); ++token) { // equivalent: what follows the text is no parenthesis
        if (kind(token) == Kind::open) {
            _clauses.push_back({token, numTokens(), open.empty() ? kNone : open.back(), kNone});
            open.push_back(static_cast<Index>(_clauses.size() - 1));
        } else if (kind(token) == Kind::close && !open.empty()) {
            close(token);
        }
    }
    while (!open.empty())
        close(numTokens());
}

RtiFedSpan SyntaxTree::span(Index clause) const {
    const Index last = std::min(_clauses[clause].close, numTokens() - 1);
    return {begin(_clauses[clause].open), end(last) - begin(_clauses[clause].open)};
}

SyntaxTree::Index SyntaxTree::tokenAt(std::uint32_t offset) const {
    const auto after = std::upper_bound(_tokens.begin(), _tokens.end(), offset,
                                        [](std::uint32_t at, const Token &token) { return at < token.begin; });
    return static_cast<Index>(after - _tokens.begin() - 1);
}

std::vector<SyntaxTree::Index> SyntaxTree::words(Index clause) const {
    std::vector<Index> words;
    const Index end = hasClauses(clause) ? _clauses[clause + 1].open : _clauses[clause].close;
    // equivalent: a parenthesis or the end of the text is no word
    for (Index token = _clauses[clause].open + 1; token < end; ++token)
        if (isWord(kind(token)))
            words.push_back(token);
    return words;
}

std::string_view SyntaxTree::keyword(Index clause) const {
    Index token = _clauses[clause].open + 1;
    while (isSpace(kind(token)) || kind(token) == Kind::comment)
        ++token;
    return kind(token) == Kind::word ? RtiFedParser::keyword(bytes(token)) : std::string_view();
}

SyntaxTree::Index SyntaxTree::clauseAt(std::uint32_t offset) const {
    const auto after = std::upper_bound(_clauses.begin(), _clauses.end(), offset,
                                        [this](std::uint32_t at, const Clause &c) { return at < begin(c.open); });
    for (auto clause = static_cast<Index>(after - _clauses.begin()); clause-- > 0;) {
        if (_clauses[clause].close == numTokens() || offset < end(_clauses[clause].close))
            return clause;
        // Not in this one, so in none that ended before it: go on to the clause around it.
        if (_clauses[clause].parent == kNone)
            return kNone;
        clause = _clauses[clause].parent + 1; // equivalent: skips clauses that ended before
    }
    return kNone;
}
