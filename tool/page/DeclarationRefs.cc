#include "tool/page/DeclarationRefs.hh"

#include "tool/check/Checker.hh"
#include "tool/language/words/Comments.hh"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <string_view>
#include <utility>

namespace {

using Index = SyntaxTree::Index;

/// The clauses whose comments are about all classes or spaces, and how the script knows these.
constexpr std::array<std::pair<std::string_view, const char *>, 3> kSections = {
    {{"spaces", "space"}, {"objects", "object"}, {"interactions", "interaction"}}};

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

/// What the comments before the first declaration say, which are about the file, with an empty line wherever other
/// lines are between two of them. The comments next to that declaration, and those next to federates, are not about the
/// file.
std::string documentationOfFile(const SyntaxTree &tree) {
    const auto numClauses = static_cast<Index>(tree.clauses().size());
    const Index declaring = firstDeclaring(tree);
    std::set<Index> others;
    for (Index clause = 0; clause < std::min(declaring + 1, numClauses); ++clause)
        if (clause == declaring || tree.keyword(clause) == "Federate")
            for (const Index comment : commentsOf(tree, clause))
                others.insert(comment);
    std::string text;
    std::vector<Index> paragraph;
    const auto endParagraph = [&] {
        if (const std::string lines = textOf(tree, paragraph); !lines.empty())
            text += (text.empty() ? "" : "\n\n") + lines;
        paragraph.clear();
    };
    const Index end = declaring < numClauses ? tree.clauses()[declaring].open : tree.numTokens();
    for (Index token = 0; token < end; ++token) {
        if (tree.kind(token) != SyntaxTree::Kind::comment || others.count(token) > 0)
            continue;
        if (!paragraph.empty() && tree.line(token) > tree.line(paragraph.back()) + 1)
            endParagraph();
        paragraph.push_back(token);
    }
    endParagraph();
    return text;
}

} // namespace

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
    std::map<std::string_view, std::string> textsOfSections;
    for (SyntaxTree::Index clause = 0; clause < _declared.size(); ++clause)
        if (_declared[clause] != kNone)
            addDocumentation(clause, texts[_declared[clause]]);
        else if (const std::string_view keyword = _tree.keyword(clause); !keyword.empty())
            addDocumentation(clause, textsOfSections[keyword]);
    const auto visitUnlessEmpty = [&visit](const Json &ref, const std::string &text) {
        if (!text.empty())
            visit(ref, text);
    };
    visitUnlessEmpty(Json(), documentationOfFile(_tree));
    for (const auto &[keyword, section] : kSections)
        visitUnlessEmpty(Json::array({section}), textsOfSections[keyword]);
    for (const auto &[entity, text] : texts)
        visitUnlessEmpty(asJson(entity), text);
}

/// Appends the documentation of a clause to the texts of others.
void DeclarationRefs::addDocumentation(SyntaxTree::Index clause, std::string &all) const {
    if (const std::string text = documentationOf(_tree, clause); !text.empty())
        all += (all.empty() ? "" : "\n") + text;
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
