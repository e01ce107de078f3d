#include "tool/language/Rename.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"
#include "tool/language/Document.hh"
#include "tool/language/NameUses.hh"
#include "tool/model/TreeKind.hh"

#include <algorithm>

namespace {

using Index = Entities::Index;

/// Checks and makes one renaming.
class Renamer {
public:
    Renamer(const Document &document, Index entity)
        : _document(document), _entities(document.entities()), _index(entity), _entity(_entities[entity]) {}

    /// Why it cannot get any other name; empty if it can.
    std::string refusal() const {
        if (_entity.place.length == 0)
            return subject(_index) + " is not declared in this file, but added by the RTI";
        const SyntaxTree::Index clause = _document.tree().clauseAt(_entity.place.begin);
        if (clause != SyntaxTree::kNone && _document.clauses().isMom(clause))
            return "the RTI finds " + subject(_index) + " by its name";
        if (!_document.parser().nestingKnown())
            return "it is not known which class is in which while parentheses are missing or superfluous";
        if (isClass(_entity.kind) && !_document.parser().classesKnown())
            return "the names of some classes are not known; fix the errors first";
        const auto &later = _document.declarations().laterSpans(_entity.record);
        if (!later.empty())
            return subject(_index) + " is declared again in " + lineOf(later.front()) + "; fix that first";
        return {};
    }

    /// Why it cannot get this name, if it can get others; empty if it can.
    std::string refusalOf(std::string_view name) const {
        std::string reason = refusalByItself(name);
        if (reason.empty() && !RtiFedName::equal(name, _entity.name)) // else only the spelling changes
            reason = refusalByOthers(name);
        return reason;
    }

    std::vector<RenameEdit> edits(std::string_view name) const {
        std::vector<RenameEdit> edits;
        for (const Reference &reference : referencesTo(_document, _index)) {
            const bool isInComment = reference.use == NameUse::comment;
            if (!isInComment)
                edits.push_back({{reference.span, asWord(name)}, false});
            else if (reference.isCertain && asWord(name) == name) // a comment has no quotes
                edits.push_back({{reference.span, std::string(name)}, true});
        }
        return edits;
    }

private:
    std::string subject(Index index) const {
        return std::string("the ") + formOf(_entities[index].kind).noun + " " + inQuotes(_entities.path(index));
    }

    std::string lineOf(RtiFedSpan span) const {
        return "line " + std::to_string(_document.parser().positionAt(span.begin).line);
    }

    std::string refusalByItself(std::string_view name) const {
        using namespace std::string_view_literals;
        if (name.empty())
            return "a name must not be empty";
        if (const auto bad = name.find_first_of("\"\r\n\0"sv); bad != std::string_view::npos)
            return std::string("a name cannot contain ") +
                   (name[bad] == '"' ? "a quote; quotes around it are added where needed" : "a line end or NUL");
        if (isClass(_entity.kind) && name.find('.') != std::string_view::npos)
            return "the name of a class cannot contain a dot: dots separate it from its superclasses";
        if (const std::string blank = RtiFedParser::blankLookalikeIn(name); !blank.empty())
            return "the name contains " + blank + ", which nobody can tell from a blank";
        if (const std::string_view mark = RtiFedParser::foreignCommentMark(name); !mark.empty())
            return "a name that begins with " + inQuotes(mark) + " looks like a comment";
        return longestPath() - _entity.name.size() + name.size() > kMaxNameLength
                   ? "the name is too long, a full name may have " + std::to_string(kMaxNameLength) + " bytes"
                   : std::string();
    }

    /// The size of the longest full name that contains the name; of anything but a class, of the name itself.
    std::size_t longestPath() const {
        std::size_t longest = _entity.name.size();
        if (isClass(_entity.kind))
            forEachBelow([&](Index below) { longest = std::max(longest, _entities[below].fullName.size()); });
        return longest;
    }

    /// Calls `visit` with the class and each class below it.
    template <class Visit>
    void forEachBelow(Visit visit) const {
        std::vector<Index> waiting{isClass(_entity.kind) ? _index : _entity.owner};
        while (!waiting.empty()) {
            const Index next = waiting.back();
            waiting.pop_back();
            visit(next);
            for (Index sub = _entities[next].firstSubclass; sub != Entities::kNone; sub = _entities[sub].nextSibling)
                waiting.push_back(sub);
        }
    }

    std::string collision(Index other) const {
        const RtiFedSpan place = _entities[other].place;
        return "it would collide with " + subject(other) + (place.length > 0 ? " in " + lineOf(place) : "");
    }

    std::string refusalByOthers(std::string_view name) const {
        if (isClass(_entity.kind))
            return refusalByClasses(name);
        if (_entity.kind == ClauseKind::space)
            return refusalBySpaces(name);
        if (const Index other = _entities.member(_entity.owner, name); other != Entities::kNone)
            return collision(other);
        return _entity.kind == ClauseKind::dimension ? std::string() : refusalByInheritance(name);
    }

    /// The library finds classes with and without the name of their root. So a class beside a root and one in it must
    /// differ too.
    std::string refusalByClasses(std::string_view name) const {
        const auto bare = [](ClauseKind kind, std::string_view path) {
            const std::string root =
                std::string(kind == ClauseKind::objectClass ? kObjectTree.root : kInteractionTree.root) + '.';
            return path.size() > root.size() && RtiFedName::equal(path.substr(0, root.size()), root)
                       ? path.substr(root.size())
                       : path;
        };
        const std::string path =
            std::string(_entity.fullName.substr(0, _entity.fullName.size() - _entity.name.size())) + std::string(name);
        // equivalent: any number that is large enough
        for (const Index other : _entities.named(name, static_cast<std::size_t>(-1)))
            if (_entities[other].kind == _entity.kind &&
                RtiFedName::equal(bare(_entity.kind, _entities[other].fullName), bare(_entity.kind, path)))
                return collision(other);
        return {};
    }

    /// A use of a space that does not exist would become a use of this one.
    std::string refusalBySpaces(std::string_view name) const {
        if (const Index other = _entities.space(name); other != Entities::kNone)
            return collision(other);
        std::string reason;
        const SyntaxTree &tree = _document.tree();
        forEachToken(tree, [&](SyntaxTree::Index token, SyntaxTree::Index clause, std::size_t word) {
            if (reason.empty() && word != kNoWord &&
                roleOf(_document.clauses()[clause].kind, word) == WordRole::space &&
                RtiFedName::equal(wordOf(tree, token), name))
                reason = lineOf(spanOf(tree, token)) + " uses a space " + inQuotes(name) +
                         ", which would mean this space then";
        });
        return reason;
    }

    std::string refusalByInheritance(std::string_view name) const {
        for (Index above = _entity.owner; above != Entities::kNone; above = _entities[above].owner)
            if (const Index other = _entities.member(above, name); other != Entities::kNone)
                return collision(other) + ", which is inherited";
        std::string reason;
        forEachBelow([&](Index below) {
            const Index other = reason.empty() ? _entities.member(below, name) : Entities::kNone;
            if (other != Entities::kNone)
                reason = collision(other) + ", whose class inherits it";
        });
        return reason;
    }

    const Document &_document;
    const Entities &_entities;
    const Index _index;
    const Entities::Entity &_entity;
};

} // namespace

RenamePlace renameAt(const Document &document, std::uint32_t offset) {
    const auto name = nameAt(document, offset);
    if (!name)
        return {{offset, 0}, "", "there is no name of a class, attribute, parameter, space or dimension here"};
    const Index entity = name->meanings.front().entity;
    RenamePlace place{name->span, std::string(document.entities()[entity].name), Renamer(document, entity).refusal()};
    if (name->meanings.size() > 1)
        place.refusal = "the name can mean several things here; rename it at its declaration";
    return place;
}

Renaming rename(const Document &document, std::uint32_t offset, std::string_view newName) {
    if (RenamePlace place = renameAt(document, offset); !place.refusal.empty())
        return {{}, std::move(place.refusal)};
    const Renamer renamer(document, nameAt(document, offset)->meanings.front().entity);
    if (std::string refusal = renamer.refusalOf(newName); !refusal.empty())
        return {{}, std::move(refusal)};
    return {renamer.edits(newName), {}};
}
