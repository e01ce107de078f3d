#include "tool/language/DocumentSymbols.hh"

#include "tool/console/Text.hh"
#include "tool/language/Document.hh"

namespace {

bool isShown(ClauseKind kind) {
    return kind != ClauseKind::unknown && kind != ClauseKind::fed && kind != ClauseKind::version &&
           kind != ClauseKind::secLevel;
}

std::string detailOf(const SyntaxTree &tree, const std::vector<SyntaxTree::Index> &words) {
    std::vector<std::string> detail;
    for (std::size_t i = 2; i < words.size() && i <= formOf(ClauseKind::attribute).words.size(); ++i)
        detail.push_back(shown(tree.bytes(words[i]), kTextLimit));
    return joined(detail, " ");
}

} // namespace

std::vector<DocumentSymbol> documentSymbols(const Document &document) {
    const SyntaxTree &tree = document.tree();
    const Clauses &clauses = document.clauses();
    std::vector<DocumentSymbol> symbols;
    std::vector<std::size_t> depths;                           // of the symbols
    std::vector<std::size_t> innermost(tree.clauses().size()); // the symbol that each clause is, or is in
    for (SyntaxTree::Index clause = 0; clause < innermost.size(); ++clause) {
        const SyntaxTree::Index around = tree.clauses()[clause].parent;
        const std::size_t parent = around == SyntaxTree::kNone ? DocumentSymbol::kNone : innermost[around];
        const ClauseKind kind = clauses[clause].kind;
        const std::size_t depth = parent == DocumentSymbol::kNone ? 1 : depths[parent] + 1;
        innermost[clause] = isShown(kind) && depth < DocumentSymbol::kMaxDepth ? symbols.size() : parent;
        if (!isShown(kind))
            continue;
        depths.push_back(depth);
        const std::vector<SyntaxTree::Index> words = tree.words(clause);
        const std::string_view name = clauses.name(clause);
        const std::string_view shownName = name.empty() ? formOf(kind).keyword : name;
        const SyntaxTree::Index named = name.empty() ? words.front() : clauses[clause].name;
        symbols.push_back({kind, shown(shownName, kTextLimit), detailOf(tree, words), tree.span(clause),
                           spanOf(tree, named), parent});
    }
    return symbols;
}
