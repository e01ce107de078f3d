#include "tool/syntax/TextStyle.hh"

#include <algorithm>
#include <iterator>

namespace {

using Index = SyntaxTree::Index;
using Kind = SyntaxTree::Kind;

/// Returns the most frequent difference between the indentation of a clause and of the clause around it.
std::string usualIndentation(const SyntaxTree &tree) {
    std::map<std::string_view, std::size_t> counts;
    for (const SyntaxTree::Clause &clause : tree.clauses()) {
        if (clause.parent == SyntaxTree::kNone)
            continue;
        const auto inner = indentationOf(tree, clause.open);
        const auto outer = indentationOf(tree, tree.clauses()[clause.parent].open);
        if (inner && outer && inner->size() > outer->size() && inner->substr(0, outer->size()) == *outer)
            ++counts[inner->substr(outer->size())];
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
                                       [](const auto &a, const auto &b) { return a.second < b.second; });
    return most == counts.end() ? "  " : std::string(most->first);
}

bool mostCloseOnOwnLine(const SyntaxTree &tree) {
    long surplus = 0;
    for (Index i = 0; i < tree.clauses().size(); ++i)
        if (tree.hasClauses(i) && tree.clauses()[i].close < tree.numTokens())
            surplus += indentationOf(tree, tree.clauses()[i].close) ? 1 : -1;
    return surplus >= 0;
}

/// Names of equal length show nothing.
bool mostAreInColumns(const SyntaxTree &tree) {
    long surplus = 0;
    // Of the clause before, if it is an attribute. equivalent: lastColumn counts only with lastName
    std::size_t lastName = 0, lastColumn = 0;
    for (Index i = 0; i < tree.clauses().size(); ++i) {
        const std::vector<Index> words = tree.words(i);
        const bool isAttribute = words.size() > 2 && tree.keyword(i) == "attribute";
        const std::size_t name = isAttribute ? tree.bytes(words[1]).size() : 0;
        const std::size_t column = isAttribute ? tree.begin(words[2]) - tree.begin(words[1]) : 0;
        if (isAttribute && lastName > 0 && name != lastName)
            surplus += column == lastColumn ? 1 : -1;
        lastName = name;
        lastColumn = column;
    }
    return surplus >= 0;
}

std::map<std::string, std::string, std::less<>> unusualKeywords(const SyntaxTree &tree) {
    std::map<std::string, std::string, std::less<>> spellings;
    for (Index i = 0; i < tree.clauses().size(); ++i)
        if (const std::string_view keyword = tree.keyword(i);
            !keyword.empty() && spellings.find(keyword) == spellings.end())
            spellings.emplace(keyword, tree.bytes(tree.words(i).front()));
    for (auto spelling = spellings.begin(); spelling != spellings.end();)
        spelling = spelling->first == spelling->second ? spellings.erase(spelling) : std::next(spelling);
    return spellings;
}

} // namespace

TextStyle styleOf(const SyntaxTree &tree) {
    return {std::string(lineEndOf(tree)), usualIndentation(tree), mostCloseOnOwnLine(tree), mostAreInColumns(tree),
            unusualKeywords(tree)};
}

std::string_view lineEndOf(const SyntaxTree &tree) {
    constexpr std::string_view kLineEnds[] = {"\n", "\r\n", "\r"};
    std::size_t counts[std::size(kLineEnds)] = {};
    for (Index token = 0; token < tree.numTokens(); ++token) // equivalent: what follows the text is no line end
        if (tree.kind(token) == Kind::lineEnd)
            ++counts[std::find(std::begin(kLineEnds), std::end(kLineEnds), tree.bytes(token)) - kLineEnds];
    return kLineEnds[std::max_element(std::begin(counts), std::end(counts)) - counts];
}

std::optional<std::string_view> indentationOf(const SyntaxTree &tree, Index token) {
    if (token == 0 || tree.kind(token - 1) == Kind::lineEnd || tree.kind(token - 1) == Kind::byteOrderMark)
        return std::string_view();
    const Index before = token - 1;
    const bool beginsLine =
        tree.kind(before) == Kind::blanks &&
        (before == 0 || tree.kind(before - 1) == Kind::lineEnd || tree.kind(before - 1) == Kind::byteOrderMark);
    return beginsLine ? std::optional(tree.bytes(before)) : std::nullopt;
}
