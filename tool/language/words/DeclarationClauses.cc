#include "tool/language/words/DeclarationClauses.hh"

#include "tool/check/Checker.hh"
#include "tool/language/words/Comments.hh"

#include <algorithm>
#include <map>
#include <set>

namespace {

using Index = SyntaxTree::Index;

/// The first clause that is about more than the federation as a whole, or the number of clauses.
Index firstDeclaring(const SyntaxTree &tree) {
    const auto numClauses = static_cast<Index>(tree.clauses().size());
    if (numClauses == 0 || tree.keyword(0) != "FED")
        return 0;
    Index clause = 1;
    const auto isAboutTheFile = [&tree](Index at) {
        const std::string_view keyword = tree.keyword(at);
        return keyword == "Federation" || keyword == "FEDversion" || keyword == "Federate";
    };
    while (clause < numClauses && isAboutTheFile(clause))
        ++clause;
    return clause;
}

/// Appends the documentation of a clause to the texts of others.
void addDocumentation(const SyntaxTree &tree, Index clause, std::string &all) {
    if (const std::string text = documentationOf(tree, clause); !text.empty())
        all += (all.empty() ? "" : "\n") + text;
}

} // namespace

DeclarationClauses::DeclarationClauses(const Checker &text) : _tree(text.tree()), _entities(text) {
    number();
    findClauses();
}

/// Entities and the outline of a model have the same order: spaces, object classes and interaction classes by handle.
/// In a text, unlike in an image, the handle of a class is greater than that of its superclass.
void DeclarationClauses::number() {
    std::map<ClauseKind, std::uint32_t> counts;
    std::uint32_t owner = 0, member = 0; // equivalent: the first one is no member, and sets both
    _refs.reserve(_entities.size());     // equivalent: only memory
    for (Entities::Index entity = 0; entity < _entities.size(); ++entity)
        if (const ClauseKind kind = _entities[entity].kind; isMember(kind)) {
            _refs.push_back({kind, owner, member++});
        } else {
            owner = counts[kind]++;
            member = 0;
            _refs.push_back({kind, owner});
        }
}

/// The name of a declaration is directly in its clause. A further declaration of a class is about the class, whose
/// members then are all in the first one. A further declaration of an inherited member is about the class that it is
/// in, where a reader looks for the mistake, not about the superclass that has the member.
void DeclarationClauses::findClauses() {
    _declared.assign(_tree.clauses().size(), kNone);
    for (const Entities::Place &place : _entities.places()) {
        const SyntaxTree::Index clause = _tree.clauseAt(place.span.begin);
        if (clause == SyntaxTree::kNone)
            continue;
        const SyntaxTree::Index around = _tree.clauses()[clause].parent;
        const Entities::Entity &entity = _entities[place.entity];
        if (place.isRepeated && isMember(entity.kind) &&
            (around == SyntaxTree::kNone || _declared[around] != entity.owner))
            continue;
        _declared[clause] = place.entity;
    }
    _about = _declared;
    // A clause comes after the one around it. equivalent: none is around the first one
    for (SyntaxTree::Index clause = 0; clause < _about.size(); ++clause)
        if (const SyntaxTree::Index around = _tree.clauses()[clause].parent;
            _about[clause] == kNone && around != SyntaxTree::kNone)
            _about[clause] = _about[around];
}

std::optional<DeclarationRef> DeclarationClauses::at(std::uint32_t offset) const {
    const Index clause = _tree.clauseAt(offset);
    if (clause == SyntaxTree::kNone || _about[clause] == kNone)
        return {};
    return _refs[_about[clause]];
}

std::string DeclarationClauses::documentationOfFile() const {
    const auto numClauses = static_cast<Index>(_tree.clauses().size());
    const Index declaring = firstDeclaring(_tree);
    std::set<Index> others;
    // equivalent: comments of the clause after it are not read
    for (Index clause = 0; clause < std::min(declaring + 1, numClauses); ++clause)
        if (clause == declaring || _tree.keyword(clause) == "Federate")
            for (const Index comment : commentsOf(_tree, clause))
                others.insert(comment);
    std::string text;
    std::vector<Index> paragraph;
    const auto endParagraph = [&] {
        if (const std::string lines = textOf(_tree, paragraph); !lines.empty())
            text += (text.empty() ? "" : "\n\n") + lines;
        paragraph.clear();
    };
    const Index end = declaring < numClauses ? _tree.clauses()[declaring].open : _tree.numTokens();
    for (Index token = 0; token < end; ++token) { // equivalent: no comment is there
        if (_tree.kind(token) != SyntaxTree::Kind::comment || others.count(token) > 0)
            continue;
        if (!paragraph.empty() && _tree.line(token) > _tree.line(paragraph.back()) + 1)
            endParagraph();
        paragraph.push_back(token);
    }
    endParagraph();
    return text;
}

std::string DeclarationClauses::documentationOfSections(std::string_view keyword) const {
    std::string text;
    for (Index clause = 0; clause < _declared.size(); ++clause) // equivalent: the first one is FED
        if (_declared[clause] == kNone && _tree.keyword(clause) == keyword)
            addDocumentation(_tree, clause, text);
    return text;
}

void DeclarationClauses::forEachDocumentation(
    const std::function<void(const DeclarationRef &, const std::string &)> &visit) const {
    std::map<Entities::Index, std::string> texts;               // a class that is declared again may have several
    for (Index clause = 0; clause < _declared.size(); ++clause) // equivalent: the first one is FED
        if (_declared[clause] != kNone)
            addDocumentation(_tree, clause, texts[_declared[clause]]);
    for (const auto &[entity, text] : texts)
        if (!text.empty())
            visit(_refs[entity], text);
}
