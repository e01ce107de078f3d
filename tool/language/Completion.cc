#include "tool/language/Completion.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"
#include "tool/language/Document.hh"
#include "tool/language/Hover.hh"
#include "tool/language/HoverText.hh"
#include "tool/language/words/CompletionPlace.hh"
#include "tool/language/words/MomNames.hh"
#include "tool/model/MomText.hh"

#include <set>

namespace {

using Index = SyntaxTree::Index;

std::string choiceOf(const DeliveryWords &words) {
    return std::string("|") + words[0].shortForm + ',' + words[1].shortForm + '|';
}

/// A clause without its parentheses, with what is to be filled in.
std::string snippetOf(ClauseKind kind) {
    const ClauseForm &form = formOf(kind);
    std::string snippet(form.keyword);
    for (std::size_t i = 0; i < form.numRequired; ++i) {
        const WordRole role = form.words.at(i);
        snippet += " ${" + std::to_string(i + 1);
        snippet += role == WordRole::transportation ? choiceOf(kTransportations)
                   : role == WordRole::ordering     ? choiceOf(kOrderings)
                   : role == WordRole::name         ? ":Name"
                   : kind == ClauseKind::version    ? ":v1.3"
                                                    : ":Level";
        snippet += '}';
    }
    const bool hasLines = form.children[0] != ClauseKind::unknown && form.children[0] != ClauseKind::secLevel;
    return snippet + (hasLines ? "\n  $0\n" : "");
}

/// Collects what fits at one place.
class Completer {
public:
    Completer(const Document &document, std::uint32_t offset, Markup markup)
        : _document(document), _tree(document.tree()), _clauses(document.clauses()), _place(_tree, _clauses, offset),
          _markup(markup) {}

    Completions run() {
        if (!_place.isText)
            offer();
        return {_place.replaced, std::move(_items)};
    }

private:
    void offer() {
        if (_place.clause == SyntaxTree::kNone)
            return _tree.clauses().empty() ? offerClause(ClauseKind::fed, true) : void();
        if (_place.word == 0 && !_place.isAfterClause)
            return offerClausesIn(_tree.clauses()[_place.clause].parent, false);
        offerWords();
        if (_place.mayBeginClause())
            offerClausesIn(_place.clause, true);
    }

    void offerWords() {
        switch (_place.role()) {
        case WordRole::name:
            return offerNames();
        case WordRole::transportation:
            return offerDelivery(kTransportations);
        case WordRole::ordering:
            return offerDelivery(kOrderings);
        case WordRole::space:
            return offerSpaces();
        case WordRole::value:
            if (_place.kind == ClauseKind::version)
                _items.push_back({Completion::Kind::version, "v1.3", "the usual version", "", "v1.3"});
            return; // equivalent: the next does the same
        default:
            return; // equivalent: nothing follows
        }
    }

    /// The clauses that may be in this one, with their "(" if there is none yet; kNone means outside of all clauses.
    void offerClausesIn(Index parent, bool withOpen) {
        if (parent == SyntaxTree::kNone)
            return offerClause(ClauseKind::fed, withOpen);
        for (const ClauseKind kind : formOf(_clauses[parent].kind).children)
            if (kind != ClauseKind::unknown && !isUsedUp(parent, kind))
                offerClause(kind, withOpen);
        offerMomClauses(parent, withOpen);
    }

    /// Whether a clause that is allowed once is there already; the one that the cursor is in does not count.
    bool isUsedUp(Index parent, ClauseKind kind) const {
        if (!formOf(kind).isUnique)
            return false;
        bool isUsed = false;
        forEachChild(parent, [&](Index child) { isUsed = isUsed || _clauses[child].kind == kind; });
        return isUsed;
    }

    template <class Visit>
    void forEachChild(Index parent, Visit visit) const {
        const auto &clauses = _tree.clauses();
        for (Index child = parent + 1; child < clauses[parent].end; child = clauses[child].end)
            if (child != _place.clause)
                visit(child);
    }

    void offerClause(ClauseKind kind, bool withOpen) {
        const ClauseForm &form = formOf(kind);
        const std::string keyword(form.keyword);
        Completion item{Completion::Kind::keyword, keyword, form.noun, form.explanation,
                        (withOpen ? "(" : "") + keyword};
        if (withOpen || _place.next != CompletionPlace::Next::word)
            item.snippet = enclosed(snippetOf(kind), withOpen);
        _items.push_back(std::move(item));
    }

    /// Adds the parentheses that the text does not have. The ")" after the cursor is its own if its "(" was there too.
    std::string enclosed(std::string clause, bool withOpen) const {
        if (withOpen)
            clause.insert(0, "(");
        return withOpen || _place.next != CompletionPlace::Next::close ? clause + ')' : clause;
    }

    static std::string withoutParentheses(const std::string &clause) { return clause.substr(1, clause.size() - 2); }

    /// The clauses of the MOM that a class lacks, each with all in it.
    void offerMomClauses(Index parent, bool withOpen) {
        const MomClass *mom = _clauses[parent].mom;
        if (!mom || (!withOpen && _place.next == CompletionPlace::Next::word))
            return;
        const TreeKind &tree = treeOf(_clauses[parent].kind);
        const auto offerMom = [&](Completion::Kind kind, const std::string &name, const char *text,
                                  const std::string &clause) {
            const std::string bare = withoutParentheses(clause);
            const std::string keyword = bare.substr(0, bare.find(' '));
            _items.push_back({kind, keyword + ' ' + name, "missing in this class", text, enclosed(bare, withOpen)});
        };
        for (const MomClass *child : missingClasses(parent))
            if (beginsWith(child->path, "Manager"))
                offerMom(Completion::Kind::momClass, child->name, child->explanation, momClass(tree, child->path));
        if (!mom->path.empty())
            for (const std::string &member : missingMembers(parent))
                offerMom(Completion::Kind::momMember, member, "", momMember(tree, member));
    }

    void offerNames() {
        const Index parent = _tree.clauses()[_place.clause].parent;
        if (parent == SyntaxTree::kNone)
            return;
        if (isClass(_place.kind)) {
            for (const MomClass *missing : missingClasses(parent))
                _items.push_back(
                    {Completion::Kind::momClass, missing->name, "missing here", missing->explanation, missing->name});
        } else if (_clauses[parent].mom) {
            for (const std::string &member : missingMembers(parent))
                _items.push_back({Completion::Kind::momMember, member, "missing in this class", "", member});
        }
    }

    static const TreeKind &treeOf(ClauseKind kind) {
        return kind == ClauseKind::objectClass || kind == ClauseKind::objects ? kObjectTree : kInteractionTree;
    }

    /// The classes that the RTI uses and that a class lacks, or a section of classes.
    std::vector<const MomClass *> missingClasses(Index parent) const {
        std::vector<const MomClass *> missing;
        const std::set<std::string> present = namesIn(parent, true);
        const auto add = [&](const MomClass &wanted) {
            if (present.count(RtiFedName::upper(wanted.name)) == 0)
                missing.push_back(&wanted);
        };
        if (const MomClass *mom = _clauses[parent].mom)
            for (const MomClass &child : mom->children)
                add(child);
        else if (!isClass(_clauses[parent].kind))
            add(momRoot(treeOf(_clauses[parent].kind)));
        return missing;
    }

    std::vector<std::string> missingMembers(Index parent) const {
        std::vector<std::string> missing;
        const std::set<std::string> present = namesIn(parent, false);
        for (const std::string &member : _clauses[parent].mom->members)
            if (present.count(RtiFedName::upper(member)) == 0)
                missing.push_back(member);
        return missing;
    }

    /// The names of the classes or members that are directly in a clause, in upper case.
    std::set<std::string> namesIn(Index parent, bool ofClasses) const {
        std::set<std::string> names;
        forEachChild(parent, [&](Index child) {
            if (isClass(_clauses[child].kind) == ofClasses)
                names.insert(RtiFedName::upper(_clauses.name(child)));
        });
        return names;
    }

    void offerDelivery(const DeliveryWords &words) {
        for (const DeliveryWord &word : words)
            _items.push_back(
                {Completion::Kind::delivery, word.shortForm, "", explanationOf(words, word), word.shortForm});
    }

    void offerSpaces() {
        const Entities &entities = _document.entities();
        for (Entities::Index i = 0; i < entities.size() && !isClass(entities[i].kind); ++i)
            if (entities[i].kind == ClauseKind::space && entities[i].place.length > 0)
                _items.push_back({Completion::Kind::space, std::string(entities[i].name), "routing space",
                                  documentationOf(_document, entities[i].place, _markup), asWord(entities[i].name)});
    }

    const Document &_document;
    const SyntaxTree &_tree;
    const Clauses &_clauses;
    const CompletionPlace _place;
    const Markup _markup;
    std::vector<Completion> _items;
};

} // namespace

Completions completionsAt(const Document &document, std::uint32_t offset, Markup markup) {
    return Completer(document, offset, markup).run();
}
