#include "tool/page/DeclarationRefs.hh"

#include "tool/check/Checker.hh"
#include "tool/language/words/Comments.hh"

#include <map>

DeclarationRefs::DeclarationRefs(const Checker &text) : _tree(text.tree()), _entities(text) {
    number();
    findClauses();
}

/// Entities and the JSON of a model have the same order: spaces, object classes and interaction classes by handle. In a
/// text, unlike in an image, the handle of a class is greater than that of its superclass.
void DeclarationRefs::number() {
    std::map<ClauseKind, std::uint32_t> counts;
    std::uint32_t owner = 0, member = 0;
    _refs.reserve(_entities.size());
    for (Entities::Index entity = 0; entity < _entities.size(); ++entity)
        if (const ClauseKind kind = _entities[entity].kind; isMember(kind)) {
            _refs.push_back({owner, member++});
        } else {
            owner = counts[kind]++;
            member = 0;
            _refs.push_back({owner, kNone});
        }
}

/// The name of a declaration is directly in its clause. A further declaration of a class is about the class, whose
/// members then are all in the first one. A further declaration of an inherited member is about the class that it is
/// in, where a reader looks for the mistake, not about the superclass that has the member.
void DeclarationRefs::findClauses() {
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
    for (SyntaxTree::Index clause = 0; clause < _about.size(); ++clause) // a clause comes after the one around it
        if (const SyntaxTree::Index around = _tree.clauses()[clause].parent;
            _about[clause] == kNone && around != SyntaxTree::kNone)
            _about[clause] = _about[around];
}

Json DeclarationRefs::at(std::uint32_t offset) const {
    const SyntaxTree::Index clause = _tree.clauseAt(offset);
    return clause == SyntaxTree::kNone || _about[clause] == kNone ? Json() : asJson(_about[clause]);
}

void DeclarationRefs::forEachDocumentation(const std::function<void(const Json &, const std::string &)> &visit) const {
    std::map<Entities::Index, std::string> texts; // a class that is declared again may have several
    for (SyntaxTree::Index clause = 0; clause < _declared.size(); ++clause)
        if (_declared[clause] != kNone)
            if (const std::string text = documentationOf(_tree, clause); !text.empty()) {
                std::string &all = texts[_declared[clause]];
                all += (all.empty() ? "" : "\n") + text;
            }
    for (const auto &[entity, text] : texts)
        visit(asJson(entity), text);
}

Json DeclarationRefs::asJson(Entities::Index entity) const {
    const auto [owner, member] = _refs[entity];
    const ClauseKind kind = _entities[entity].kind;
    const bool ofObjects = kind == ClauseKind::objectClass || kind == ClauseKind::attribute;
    const bool ofSpaces = kind == ClauseKind::space || kind == ClauseKind::dimension;
    Json ref{ofObjects ? "object" : ofSpaces ? "space" : "interaction", owner};
    if (member != kNone)
        ref.push_back(member);
    return ref;
}
