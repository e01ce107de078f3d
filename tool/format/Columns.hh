#pragma once

#include "tool/syntax/SyntaxTree.hh"

#include <array>
#include <cstddef>
#include <vector>

/// The longest line, in characters, that the alignment of attributes and comments may produce.
inline constexpr std::size_t kLineLimit = 100;

/// The columns of the attributes of each class: how wide name, transportation and ordering are written when a word
/// follows.
///
/// All attributes of a class share their columns, so that they can be read as a table. But a line may not become longer
/// than kLineLimit for it: if the table would, the attributes with the longest names are left out of it, as few as
/// possible. An attribute with a comment between its words is left out too.
class Columns {
public:
    Columns(const SyntaxTree &tree, std::size_t indentation);

    /// The width of a word (counted from 0, the keyword) of a clause, if another one follows; 0 for its own width.
    std::size_t width(SyntaxTree::Index clause, std::size_t word) const {
        return word >= 1 && word <= 3 ? _tables[_tableOf[clause]][word - 1] : 0;
    }

private:
    using Table = std::array<std::size_t, 3>;
    struct Row {
        SyntaxTree::Index clause;
        std::array<std::size_t, 4> widths; // of name, transportation, ordering, space
    };

    void addTable(std::vector<Row> &rows, std::size_t indentation);

    std::vector<Table> _tables = {Table()};  // the first one is that of other clauses
    std::vector<SyntaxTree::Index> _tableOf; // of each clause
};
