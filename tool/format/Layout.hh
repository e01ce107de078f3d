#pragma once

#include "tool/format/Columns.hh"
#include "tool/format/Sequence.hh"

#include <cstdint>
#include <vector>

/// The space before a piece: line ends, then blanks.
struct Separation {
    std::uint32_t lineEnds = 0, blanks = 0;
};

/// Decides about the space before each piece of a text.
class Layout {
public:
    Layout(const SyntaxTree &tree, const std::vector<SequencePiece> &pieces, std::size_t indentation);

    const std::vector<Separation> &separations() const { return _separations; }

private:
    /// A comment that follows something else on its line.
    struct Trailing {
        std::size_t piece;
        std::size_t width; ///< Of the line before it.
    };

    void place(std::size_t piece);
    void placeComment(std::size_t piece);
    void breakLine(std::size_t piece, bool mayFollowBlankLine);
    void alignComments();
    RtiFedPiece::Kind kind(std::size_t piece) const { return _tree.kind(_pieces[piece].token); }

    const SyntaxTree &_tree;
    const std::vector<SequencePiece> &_pieces;
    const std::size_t _indentation;
    const Columns _columns;
    std::vector<Separation> _separations;
    std::size_t _depth = 0;          // the number of open clauses
    std::size_t _width = 0;          // of the line so far
    std::size_t _word = 0;           // the number of words of the clause so far
    std::size_t _missing = 0;        // blanks that the last word lacks to the width of its column
    bool _afterShortClause = false;  // the line is a whole clause, and perhaps comments
    std::vector<Trailing> _trailing; // the comments to align
};
