#include "tool/language/HoverText.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/language/Document.hh"
#include "tool/language/Hover.hh"
#include "tool/language/words/MomNames.hh"

#include <algorithm>
#include <vector>

namespace {

using Index = Entities::Index;

constexpr std::size_t kMostListed = 10; // names of a list

/// Writes the description of one entity, a paragraph for each fact.
class Describer {
public:
    Describer(const Document &document, Markup markup)
        : _document(document), _entities(document.entities()), _markup(markup) {}

    std::string describe(const NamedEntity &named, NameUse use) {
        const Entities::Entity &entity = _entities[named.entity];
        const bool isInherited = named.via != Entities::kNone && named.via != entity.owner;
        add(strong(_markup, formOf(entity.kind).noun) + " " + codeOf(_entities.path(named.entity)));
        if (use == NameUse::repeatedDeclaration)
            add("A duplicate, which the library refuses: it is declared first in line " +
                std::to_string(_document.parser().positionAt(entity.place.begin).line) + ".");
        add(propertiesOf(entity));
        if (isInherited)
            add(codeOf(_entities.path(named.via)) + " inherits it from " + codeOf(_entities.path(entity.owner)) + ".");
        addStructure(named.entity);
        add(handleOf(entity));
        if (entity.place.length > 0) {
            add(explanationOfMom(entity.place));
            const std::string documentation = documentationOf(_document, entity.place, _markup);
            if (!documentation.empty())
                _text += separator(_markup) + documentation;
        }
        return std::move(_text);
    }

private:
    void add(const std::string &paragraph) {
        if (!paragraph.empty())
            _text += (_text.empty() ? "" : "\n\n") + paragraph;
    }

    std::string codeOf(std::string_view text) const { return code(_markup, text); }

    std::string propertiesOf(const Entities::Entity &entity) const {
        if (entity.kind != ClauseKind::attribute && entity.kind != ClauseKind::interactionClass)
            return {};
        const auto word = [&](Declarations::Argument argument) {
            const std::string written = _document.declarations().written(entity.record, argument);
            return written.empty() ? std::string() : codeOf(written);
        };
        std::string text = word(Declarations::transportation);
        const std::string ordering = word(Declarations::ordering), space = word(Declarations::space);
        text += (text.empty() || ordering.empty() ? "" : ", ") + ordering;
        return space.empty() ? text : text + ", in the routing space " + space;
    }

    /// Handles are numbered in the order of the text, so that each correction may change those of all that follows.
    std::string handleOf(const Entities::Entity &entity) const {
        return "Handle " + std::to_string(entity.handle) +
               (_document.checker().findsNoError() ? "" : ", provisional: the file does not load");
    }

    std::string explanationOfMom(RtiFedSpan name) const {
        const SyntaxTree::Index clause = _document.tree().clauseAt(name.begin);
        if (clause == SyntaxTree::kNone || !_document.clauses().isMom(clause))
            return {};
        const Clauses &clauses = _document.clauses();
        if (const MomClass *mom = clauses[clause].mom)
            return mom->explanation;
        const MomClass &owner = *clauses[_document.tree().clauses()[clause].parent].mom;
        return owner.path.empty() ? "The federate that owns it may delete the object."
                                  : "Part of the Management Object Model (MOM).";
    }

    void addStructure(Index index) {
        const Entities::Entity &entity = _entities[index];
        if (isClass(entity.kind)) {
            addMembers(index, memberNoun(entity.kind));
            addInherited(index);
            if (entity.numDescendants > 0)
                add(counted(entity.numDescendants, "subclass") + ": " + descendantsOf(index));
        } else if (entity.kind == ClauseKind::space) {
            addMembers(index, "dimension");
        } else if (entity.kind != ClauseKind::dimension) {
            if (const Index heirs = _entities[entity.owner].numDescendants; heirs > 0)
                add("Inherited by " + counted(heirs, "class") + ": " + descendantsOf(entity.owner));
        }
    }

    static const char *memberNoun(ClauseKind kind) { return formOf(formOf(kind).children[0]).noun; }

    std::string membersOf(Index owner) const {
        std::vector<std::string> names;
        const Index numMembers = _entities[owner].numMembers;
        for (Index i = 1; i <= numMembers && i <= kMostListed; ++i)
            names.push_back(codeOf(_entities[owner + i].name));
        return withRest(names, numMembers);
    }

    static std::string withRest(const std::vector<std::string> &names, std::size_t total) {
        return joined(names) + (total > names.size() ? " and " + std::to_string(total - names.size()) + " more" : "");
    }

    void addMembers(Index owner, const std::string &noun) {
        if (const Index number = _entities[owner].numMembers; number > 0)
            add(counted(number, noun) + ": " + membersOf(owner));
    }

    /// Each superclass with members, the nearest first, on a line of its own.
    void addInherited(Index index) {
        std::string lines;
        for (Index above = _entities[index].owner; above != Entities::kNone; above = _entities[above].owner)
            if (_entities[above].numMembers > 0)
                lines += (lines.empty() ? "" : lineEnd(_markup)) + ("from " + codeOf(_entities.path(above))) + ": " +
                         membersOf(above);
        if (!lines.empty())
            add(counted(_entities.numInherited(index), memberNoun(_entities[index].kind)) +
                " inherited:" + lineEnd(_markup) + lines);
    }

    /// The full name of a class without that of a superclass. A class whose superclass was found without the name of
    /// its root, which is an error, has a shorter one that does not contain it.
    std::string_view nameWithin(Index descendant, Index ancestor) const {
        const std::string_view name = _entities[descendant].fullName, above = _entities[ancestor].fullName;
        // equivalent: no class has the name of one above it
        const bool contains = name.size() > above.size() && RtiFedName::equal(name.substr(0, above.size()), above);
        return contains ? name.substr(above.size() + 1) : name;
    }

    /// Lists the first descendants in the order of the text, without the full name of the class itself.
    std::string descendantsOf(Index index) const {
        std::vector<std::string> names;
        std::vector<Index> waiting;
        for (Index next = _entities[index].firstSubclass; names.size() < kMostListed;) {
            if (next == Entities::kNone) {
                if (waiting.empty())
                    break;
                next = waiting.back();
                waiting.pop_back();
                continue;
            }
            names.push_back(codeOf(nameWithin(next, index)));
            waiting.push_back(_entities[next].nextSibling);
            next = _entities[next].firstSubclass;
        }
        return withRest(names, _entities[index].numDescendants);
    }

    const Document &_document;
    const Entities &_entities;
    const Markup _markup;
    std::string _text;
};

} // namespace

std::string hoverText(const Document &document, const NamedEntity &named, NameUse use, Markup markup) {
    return Describer(document, markup).describe(named, use);
}

const char *explanationOf(const DeliveryWords &words, const DeliveryWord &word) {
    if (&words == &kTransportations)
        return word.handle == kTransportations[0].handle ? "delivery is guaranteed."
                                                         : "faster, but a message may be lost.";
    return word.handle == kOrderings[0].handle ? "delivered in the order of the time stamps."
                                               : "delivered in the order of arrival.";
}
