#include "tool/modules/Module.hh"

#include "tool/console/Text.hh"
#include "tool/format/Format.hh"
#include "tool/report/Loading.hh"

#include <utility>

using Kind = SyntaxTree::Kind;

Module::Module(std::string name, std::unique_ptr<const Checker> text)
    : _name(std::move(name)), _original(std::move(text)), _parser(formatted(_original->tree())) {
    findExtents();
}

std::string Module::placeOf(Index clause) const {
    const SyntaxTree &tree = _original->tree();
    const std::vector<Index> words = tree.words(clause);
    const Index token = words.size() > 1 ? words[1] : tree.clauses()[clause].open;
    return textOf(_name, _original->parser().positionAt(tree.begin(token)));
}

void Module::findExtents() {
    const std::vector<SyntaxTree::Clause> &clauses = _tree.clauses();
    _extents.resize(clauses.size());
    for (Index clause = 0; clause < clauses.size(); ++clause) {
        const auto [open, close, parent, end] = clauses[clause];
        Extent &extent = _extents[clause];
        extent.end = parent == SyntaxTree::kNone ? _tree.numTokens() : endOfTrailing(close + 1, columnOf(open));
        extent.headEnd = extent.tail = close;
    }
    for (Index clause = 0; clause < clauses.size(); ++clause)
        if (_tree.hasClauses(clause)) {
            Extent &extent = _extents[clause];
            const std::size_t column = columnOf(clauses[clause + 1].open);
            extent.headEnd = extent.tail = endOfTrailing(_tree.words(clause).back() + 1, column);
            forEachChild(clause, [&](Index child) {
                _extents[child].begin = extent.tail;
                extent.tail = _extents[child].end;
            });
        }
}

/// Returns where the comment ends that follows on the same line, and those that continue it on the lines below.
///
/// In the canonical layout, a comment on a line of its own is indented as the clause below it, which is at `column`,
/// and a comment that continues the one above is in the column of that, further to the right.
Module::Index Module::endOfTrailing(Index after, std::size_t column) const {
    const auto commentFrom = [this](Index token) {
        if (token < _tree.numTokens() && _tree.kind(token) == Kind::blanks)
            ++token;
        return token < _tree.numTokens() && _tree.kind(token) == Kind::comment ? token : SyntaxTree::kNone;
    };
    Index comment = commentFrom(after);
    while (comment != SyntaxTree::kNone) {
        after = comment + 1;
        comment = after < _tree.numTokens() ? commentFrom(after + 1) : SyntaxTree::kNone; // after the line end
        if (comment != SyntaxTree::kNone && columnOf(comment) <= column)
            break;
    }
    return after;
}

std::size_t Module::columnOf(Index token) const {
    return token > 0 && _tree.kind(token - 1) == Kind::blanks ? _tree.bytes(token - 1).size() : 0;
}

std::unique_ptr<Module> readModule(Input input, std::ostream &complaints) {
    if (complainIfImage(input, complaints))
        return nullptr;
    auto text = std::make_unique<const Checker>(std::move(input.contents));
    if (reportSyntaxErrors(text->parser(), input.name, complaints))
        return nullptr;
    return std::make_unique<Module>(std::move(input.name), std::move(text));
}
