#include "tool/language/NameUses.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/language/Document.hh"
#include "tool/language/words/DottedNames.hh"

#include <algorithm>

namespace {

using Index = SyntaxTree::Index;

constexpr std::size_t kMostMeanings = 8; // of a dotted name: each may be looked for in the whole text

bool contains(RtiFedSpan span, std::uint32_t offset) {
    return span.begin <= offset && offset <= span.begin + span.length;
}

std::optional<NameAt> nameInComment(const Document &document, Index token, std::uint32_t offset) {
    const Entities &entities = document.entities();
    for (const DottedWord &word : dottedWordsIn(document.text(), spanOf(document.tree(), token)))
        for (std::size_t i = 0; i < word.components.size(); ++i) {
            if (!contains(word.components[i], offset))
                continue;
            NameAt name{word.components[i], NameUse::comment, {}};
            for (const DottedMeaning &meaning : meaningsOf(entities, document.text(), word)) {
                const bool isNew = std::none_of(name.meanings.begin(), name.meanings.end(),
                                                [&](const NamedEntity &m) { return m.entity == meaning[i].entity; });
                if (isNew && name.meanings.size() < kMostMeanings)
                    name.meanings.push_back(meaning[i]);
            }
            return name.meanings.empty() ? std::nullopt : std::optional(name);
        }
    return {};
}

std::optional<NameAt> nameInClause(const Document &document, Index token) {
    const SyntaxTree &tree = document.tree();
    const RtiFedSpan span = spanOf(tree, token);
    if (const Entities::Place *place = document.entities().placeAt(span.begin))
        return NameAt{span,
                      place->isRepeated ? NameUse::repeatedDeclaration : NameUse::declaration,
                      {{place->entity, Entities::kNone}}};
    if (document.clauses().role(token) != WordRole::space)
        return {};
    const Entities::Index space = document.entities().space(wordOf(tree, token));
    if (space == Entities::kNone)
        return {};
    return NameAt{span, NameUse::use, {{space, Entities::kNone}}};
}

/// Collects the references to one entity.
class ReferenceSearch {
public:
    ReferenceSearch(const Document &document, Entities::Index entity)
        : _document(document), _tree(document.tree()), _entities(document.entities()), _entity(entity),
          _name(_entities[entity].name),
          _isFoundSpace(_entities[entity].kind == ClauseKind::space && _entities.space(_name) == entity) {}

    std::vector<Reference> run() {
        addDeclarations();
        forEachToken(_tree, [this](Index token, Index clause, std::size_t word) {
            if (_tree.kind(token) == SyntaxTree::Kind::comment)
                addMentions(token);
            else if (_isFoundSpace && word != kNoWord &&
                     roleOf(_document.clauses()[clause].kind, word) == WordRole::space &&
                     RtiFedName::equal(wordOf(_tree, token), _name))
                add(spanOf(_tree, token), NameUse::use);
        });
        std::sort(_found.begin(), _found.end(),
                  // equivalent: no two are at the same place
                  [](const Reference &a, const Reference &b) { return a.span.begin < b.span.begin; });
        return std::move(_found);
    }

private:
    // equivalent: only of what is in a comment it matters
    void add(RtiFedSpan span, NameUse use, bool isCertain = true) { _found.push_back({span, use, isCertain}); }

    void addDeclarations() {
        const Entities::Entity &entity = _entities[_entity];
        if (entity.place.length > 0)
            add(entity.place, NameUse::declaration);
        for (const RtiFedSpan &later : _document.declarations().laterSpans(entity.record))
            add(later, NameUse::repeatedDeclaration);
    }

    void addMentions(Index token) {
        if (_tree.bytes(token).find('.') == std::string_view::npos)
            return; // equivalent: only speed
        for (const DottedWord &word : dottedWordsIn(_document.text(), spanOf(_tree, token)))
            addMentions(word);
    }

    void addMentions(const DottedWord &word) {
        const std::string_view text = _document.text();
        for (std::size_t i = 0; i < word.components.size(); ++i) {
            const RtiFedSpan component = word.components[i];
            if (!RtiFedName::equal(text.substr(component.begin, component.length), _name))
                continue; // equivalent: only speed, since it cannot mean the entity
            const std::vector<DottedMeaning> meanings = meaningsOf(_entities, text, word);
            const auto isMeant = [&](const DottedMeaning &meaning) { return meaning[i].entity == _entity; };
            if (std::any_of(meanings.begin(), meanings.end(), isMeant))
                add(component, NameUse::comment, std::all_of(meanings.begin(), meanings.end(), isMeant));
        }
    }

    const Document &_document;
    const SyntaxTree &_tree;
    const Entities &_entities;
    const Entities::Index _entity;
    const std::string_view _name;
    const bool _isFoundSpace; // a space that its name finds, so that uses of the name are uses of it
    std::vector<Reference> _found;
};

} // namespace

std::optional<NameAt> nameAt(const Document &document, std::uint32_t offset) {
    const SyntaxTree &tree = document.tree();
    const Index token = wordAt(tree, offset);
    if (token == SyntaxTree::kNone)
        return {};
    return tree.kind(token) == SyntaxTree::Kind::comment ? nameInComment(document, token, offset)
                                                         : nameInClause(document, token);
}

std::vector<Reference> referencesTo(const Document &document, Entities::Index entity) {
    return ReferenceSearch(document, entity).run();
}

std::vector<Reference> referencesAt(const Document &document, std::uint32_t offset) {
    const auto name = nameAt(document, offset);
    if (!name)
        return {};
    std::vector<Reference> found;
    for (const NamedEntity &meaning : name->meanings)
        for (const Reference &reference : referencesTo(document, meaning.entity))
            found.push_back(reference);
    std::sort(found.begin(), found.end(),
              // equivalent: one of two at the same place is left
              [](const Reference &a, const Reference &b) { return a.span.begin < b.span.begin; });
    const auto isSame = [](const Reference &a, const Reference &b) { return a.span.begin == b.span.begin; };
    found.erase(std::unique(found.begin(), found.end(), isSame), found.end());
    return found;
}

std::vector<RtiFedSpan> definitionsAt(const Document &document, std::uint32_t offset) {
    std::vector<RtiFedSpan> places;
    if (const auto name = nameAt(document, offset))
        for (const NamedEntity &meaning : name->meanings)
            if (const RtiFedSpan place = document.entities()[meaning.entity].place; place.length > 0)
                places.push_back(place);
    return places;
}
