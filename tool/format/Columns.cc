#include "tool/format/Columns.hh"

#include "tool/console/Line.hh"

#include <algorithm>
#include <optional>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

constexpr std::size_t kBeforeName = std::string_view("(attribute ").size();

/// Returns the widths of the words after the keyword. Nothing if a comment is between the words.
std::optional<std::array<std::size_t, 4>> widthsOf(const SyntaxTree &tree, Index clause) {
    std::array<std::size_t, 4> widths{};
    const std::vector<Index> words = tree.words(clause);
    // unreached: a text with syntax errors is not formatted
    if (words.size() > widths.size() + 1)
        return std::nullopt;
    // equivalent: the last word is no comment
    for (Index token = tree.clauses()[clause].open; token < words.back(); ++token)
        if (tree.kind(token) == Kind::comment)
            return std::nullopt;
    for (std::size_t i = 1; i < words.size(); ++i)
        widths[i - 1] = columns(tree.bytes(words[i]));
    return widths;
}

} // namespace

Columns::Columns(const SyntaxTree &tree, std::size_t indentation) : _tableOf(tree.clauses().size(), 0) {
    std::vector<std::vector<Row>> rows; // of the open clauses
    std::vector<Index> open;
    const auto close = [&] {
        addTable(rows[open.size() - 1], indentation * open.size());
        rows[open.size() - 1].clear();
        open.pop_back();
    };
    for (Index clause = 0; clause < tree.clauses().size(); ++clause) {
        while (!open.empty() && open.back() != tree.clauses()[clause].parent)
            close();
        if (!open.empty() && tree.keyword(clause) == "attribute")
            if (const auto widths = widthsOf(tree, clause))
                rows[open.size() - 1].push_back({clause, *widths});
        open.push_back(clause);
        rows.resize(std::max(rows.size(), open.size()));
    }
    while (!open.empty())
        close();
}

void Columns::addTable(std::vector<Row> &rows, std::size_t indentation) {
    // equivalent: rows with equal widths may be in any order
    std::stable_sort(rows.begin(), rows.end(), [](const Row &a, const Row &b) { return a.widths[0] < b.widths[0]; });
    // A table grows with each row, so the rows with shorter names are in it up to the first one that makes it too wide.
    Table table{};
    // equivalent: every ordering is longer
    std::size_t widestEnd = 0, widestSpace = 0; // the ordering of an attribute without space; the space
    for (const Row &row : rows) {
        const auto &[name, transportation, ordering, space] = row.widths;
        widestSpace = std::max(widestSpace, space);
        widestEnd = std::max(widestEnd, ordering);
        const Table grown{name, std::max(table[1], transportation), std::max(table[2], space > 0 ? ordering : 0)};
        const std::size_t end = std::max(widestEnd, widestSpace > 0 ? grown[2] + 1 + widestSpace : 0);
        if (indentation + kBeforeName + grown[0] + 1 + grown[1] + 1 + end + 1 > kLineLimit)
            break;
        table = grown;
        _tableOf[row.clause] = static_cast<Index>(_tables.size());
    }
    if (!rows.empty())
        _tables.push_back(table);
}
