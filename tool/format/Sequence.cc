#include "tool/format/Sequence.hh"

#include "tool/console/Line.hh"

#include <algorithm>
#include <utility>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

class Sequencer {
public:
    Sequencer(const SyntaxTree &tree, const std::vector<bool> &changes) : _tree(tree), _changes(changes) {}

    std::vector<SequencePiece> run() {
        for (Index token = 0; token < _tree.numTokens(); ++token) {
            const RtiFedPiece::Kind kind = _tree.kind(token);
            if (kind == Kind::lineEnd) {
                ++_lineEnds;
                _lineBegin = _tree.end(token);
            } else if (kind == Kind::byteOrderMark) {
                _gap = _lineBegin = _tree.end(token);
            } else if (kind != Kind::blanks) {
                add(token);
                _gap = _tree.end(token);
                _lineEnds = 0;
            }
        }
        return std::move(_pieces);
    }

private:
    static constexpr std::size_t kNowhere = static_cast<std::size_t>(-1); // equivalent: no piece has either index

    RtiFedPiece::Kind kindOf(std::size_t piece) const { return _tree.kind(_pieces[piece].token); }

    void add(Index token) {
        SequencePiece piece{token, _clause, _gap, _lineEnds > 0 || _pieces.empty(), _lineEnds > 1};
        if (piece.beginsLine)
            _lineToken = token;
        const std::size_t lastComment = std::exchange(_lastComment, kNowhere);
        switch (_tree.kind(token)) {
        case Kind::comment:
            return addComment(piece, lastComment);
        case Kind::open:
            piece.clause = _clause = _nextClause++;
            break;
        case Kind::close:
            // unreached: a text with syntax errors is not formatted, so that each ")" closes a clause
            _clause = _clause == SyntaxTree::kNone ? _clause : _tree.clauses()[_clause].parent;
            return addClose(piece);
        default:
            break; // equivalent: the last label
        }
        _pieces.push_back(piece);
    }

    void addComment(SequencePiece &comment, std::size_t lastComment) {
        const std::size_t column = columns(_tree.text().substr(_lineBegin, _tree.begin(comment.token) - _lineBegin));
        std::size_t at = _pieces.size();
        if (!comment.beginsLine) {
            at = placeOfTrailing();
            comment.clause = _pieces[at - 1].clause;
            comment.continues = kindOf(at - 1) == Kind::comment; // the ")" between them was moved
        } else if (lastComment != kNowhere && _lineEnds == 1 && column == _lastColumn &&
                   (_pieces[lastComment].continues || !_pieces[lastComment].beginsLine)) {
            at = lastComment + 1;
            comment.continues = true;
            comment.clause = _pieces[lastComment].clause;
        } else {
            comment.clause = clauseBelow(comment.token);
        }
        insert(at, comment);
        _lastComment = at;
        _lastColumn = column;
    }

    /// Returns where a comment belongs that follows a piece on the same line.
    std::size_t placeOfTrailing() const {
        for (std::size_t i = _pieces.size(); i-- > 0 && kindOf(i) == Kind::close;) {
            const Index clause = _pieces[i].clause;
            // unreached: likewise
            if (clause != SyntaxTree::kNone && _tree.clauses()[clause].open >= _lineToken)
                return _changes[clause] ? i + 1 : _pieces.size();
        }
        return _pieces.size();
    }

    /// Returns the clause that a comment on a line of its own belongs to: the next one, unless the one around it ends
    /// before.
    Index clauseBelow(Index comment) {
        // equivalent: what follows the text is no "("
        for (_next = std::max(_next, comment); _next < _tree.numTokens(); ++_next)
            if (!SyntaxTree::isSpace(_tree.kind(_next)) && _tree.kind(_next) != Kind::comment)
                return _tree.kind(_next) == Kind::open ? _nextClause : _clause;
        return _clause;
    }

    void addClose(const SequencePiece &close) {
        std::size_t at = _pieces.size();
        // unreached: the "(" of the clause comes before, in a text without syntax errors
        while (at > 0 && _pieces[at - 1].continues)
            --at;
        // unreached: likewise, and its keyword
        const bool follows = at > 1 && kindOf(at - 1) == Kind::comment && !_pieces[at - 1].beginsLine &&
                             SyntaxTree::isWord(kindOf(at - 2));
        // unreached: likewise
        const bool moves = follows && close.clause != SyntaxTree::kNone && _changes[close.clause];
        // unreached: words come before the clauses in a clause, in a text without syntax errors
        insert(moves && !_tree.hasClauses(close.clause) ? at - 1 : _pieces.size(), close);
    }

    void insert(std::size_t at, const SequencePiece &piece) {
        _pieces.insert(_pieces.begin() + static_cast<std::ptrdiff_t>(at), piece);
    }

    const SyntaxTree &_tree;
    const std::vector<bool> &_changes;
    std::vector<SequencePiece> _pieces;
    Index _clause = SyntaxTree::kNone; // around the current token
    Index _nextClause = 0;
    Index _next = 0; // after the comments that begin at the current one. equivalent: no other piece is looked for
    std::uint32_t _gap = 0;              // where the last piece of the text ends
    std::size_t _lineEnds = 0;           // since then. equivalent: nothing separates the first piece
    std::uint32_t _lineBegin = 0;        // of the current line
    Index _lineToken = 0;                // its first piece. equivalent: set by the first piece
    std::size_t _lastComment = kNowhere; // where the last piece of the text is, if it is a comment
    std::size_t _lastColumn = 0;         // of that comment. equivalent: set with it
};

} // namespace

std::vector<SequencePiece> sequenceOf(const SyntaxTree &tree, const std::vector<bool> &changes) {
    return Sequencer(tree, changes).run();
}
