#pragma once

#include "tool/check/Checker.hh"
#include "tool/input/Input.hh"
#include "tool/language/words/Clauses.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

/// A FED text that is merged with others, or of which a part is extracted.
///
/// It is read twice: as its author wrote it, for the places that messages name, and in the canonical layout, in which
/// each clause begins a line and each comment is next to what it is about. Formatting keeps the order of the words and
/// parentheses, so a clause has the same index in both trees.
class Module {
public:
    using Index = SyntaxTree::Index;

    /// What belongs to a clause in the canonical layout, in tokens. These ranges cover the text without a gap: the one
    /// of a clause begins where that of the clause before it ends.
    struct Extent {
        Index begin;   ///< The comments above the clause.
        Index headEnd; ///< After the words of the clause and the comment beside them; its ")" if no clause is in it.
        Index tail;    ///< After the last clause in it; the comments from here to the ")" are about none of these.
        Index end;     ///< After the comment beside its ")".
    };

    /// The text must have no syntax error, but its model need not load. `name` is for messages.
    Module(std::string name, std::unique_ptr<const Checker> text);

    const std::string &name() const { return _name; }
    const Checker &original() const { return *_original; }
    /// The tree of the canonical layout, to which all indices refer.
    const SyntaxTree &tree() const { return _tree; }
    const Clauses &clauses() const { return _clauses; }
    const Extent &extent(Index clause) const { return _extents[clause]; }

    /// Returns FILE:LINE:COLUMN of the name of a clause, as the author wrote the text.
    std::string placeOf(Index clause) const;

    /// Calls `visit` with each clause directly in a clause.
    template <class Visit>
    void forEachChild(Index clause, Visit visit) const {
        for (Index child = clause + 1; child != _tree.clauses()[clause].end; child = _tree.clauses()[child].end)
            visit(child);
    }

private:
    void findExtents();
    Index endOfTrailing(Index after, std::size_t column) const;
    std::size_t columnOf(Index token) const;

    const std::string _name;
    const std::unique_ptr<const Checker> _original;
    const RtiFedParser _parser;
    const SyntaxTree _tree{_parser};
    const Clauses _clauses{_tree};
    std::vector<Extent> _extents; // by clause
};

/// Reads a module. Null, with the reason, for a saved image or a text with syntax errors.
std::unique_ptr<Module> readModule(Input input, std::ostream &complaints);
