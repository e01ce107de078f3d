#include "tool/format/Layout.hh"

#include "tool/console/Line.hh"

#include <algorithm>

namespace {

using Kind = SyntaxTree::Kind;
constexpr std::size_t kBeforeComment = 2;
} // namespace

Layout::Layout(const SyntaxTree &tree, const std::vector<SequencePiece> &pieces, std::size_t indentation)
    : _tree(tree), _pieces(pieces), _indentation(indentation), _columns(tree, indentation),
      _separations(pieces.size()) {
    for (std::size_t piece = 0; piece < pieces.size(); ++piece)
        place(piece);
    alignComments();
}

void Layout::place(std::size_t piece) {
    const bool afterComment = piece > 0 && kind(piece - 1) == Kind::comment;
    const SyntaxTree::Index clause = _pieces[piece].clause;
    const std::size_t width = columns(_tree.bytes(_pieces[piece].token));
    switch (kind(piece)) {
    case Kind::comment:
        return placeComment(piece);
    case Kind::open:
        if (!_afterShortClause || _pieces[piece].afterBlankLine)
            alignComments();
        breakLine(piece, true);
        ++_depth;
        _word = 0;
        _afterShortClause = false;
        break;
    case Kind::close:
        // unreached: a text with syntax errors, such as a ")" too many, is not formatted
        _depth -= _depth > 0 ? 1 : 0;
        _afterShortClause = !afterComment && !_tree.hasClauses(clause);
        if (!_afterShortClause) {
            alignComments();
            breakLine(piece, false);
        }
        break;
    default:
        if (afterComment) {
            breakLine(piece, false);
        } else if (_word > 0) {
            _separations[piece].blanks = static_cast<std::uint32_t>(1 + _missing);
            _width += _separations[piece].blanks;
        }
        _missing = std::max(_columns.width(clause, _word), width) - width;
        ++_word;
        break;
    }
    _width += width;
}

void Layout::placeComment(std::size_t piece) {
    if (_pieces[piece].continues) {
        _separations[piece].lineEnds = 1; // aligned with the comment that it continues
    } else if (_pieces[piece].beginsLine) {
        alignComments();
        breakLine(piece, true);
        _afterShortClause = false;
    } else {
        if (!_afterShortClause)
            alignComments();
        _trailing.push_back({piece, _width});
        if (!_afterShortClause)
            alignComments();
    }
}

/// Begins a line with this piece.
void Layout::breakLine(std::size_t piece, bool mayFollowBlankLine) {
    _width = _depth * _indentation;
    if (piece > 0)
        _separations[piece] = {mayFollowBlankLine && _pieces[piece].afterBlankLine ? 2U : 1U,
                               static_cast<std::uint32_t>(_width)};
}

/// Aligns the comments after clauses on adjacent lines, and those that continue them.
void Layout::alignComments() {
    std::size_t column = 0;
    for (const Trailing &comment : _trailing)
        if (comment.width <= kLineLimit)
            column = std::max(column, comment.width);
    for (const Trailing &comment : _trailing) {
        const auto begin = static_cast<std::uint32_t>(std::max(column, comment.width) + kBeforeComment);
        _separations[comment.piece].blanks = begin - static_cast<std::uint32_t>(comment.width);
        for (std::size_t i = comment.piece + 1; i < _pieces.size() && _pieces[i].continues; ++i)
            _separations[i].blanks = begin;
    }
    _trailing.clear();
}
