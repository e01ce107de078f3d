#include "tool/language/words/Clauses.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/language/words/MomNames.hh"

#include <algorithm>

Clauses::Clauses(const SyntaxTree &tree) : _tree(tree), _clauses(tree.clauses().size()) {
    std::vector<bool> inInteractions(_clauses.size());
    for (Index clause = 0; clause < _clauses.size(); ++clause) {
        const Index parent = tree.clauses()[clause].parent;
        const std::string_view keyword = tree.keyword(clause);
        const ClauseKind kind = kindOf(keyword, parent != SyntaxTree::kNone && inInteractions[parent]);
        _clauses[clause].kind = kind;
        inInteractions[clause] = kind == ClauseKind::interactions ||
                                 (kind != ClauseKind::objects && parent != SyntaxTree::kNone && inInteractions[parent]);
    }
    forEachToken(tree, [this](Index token, Index clause, std::size_t word) {
        if (word == 1 && roleOf(_clauses[clause].kind, word) == WordRole::name)
            readName(clause, token);
    });
}

/// The name of a clause comes before the clauses in it, so the class around it is known.
void Clauses::readName(Index clause, Index token) {
    Clause &named = _clauses[clause];
    named.name = token;
    if (!isClass(named.kind))
        return;
    const Index parent = _tree.clauses()[clause].parent;
    const std::string_view name = wordOf(_tree, token);
    if (parent != SyntaxTree::kNone && _clauses[parent].kind == named.kind) {
        named.mom = _clauses[parent].mom ? _clauses[parent].mom->child(name) : nullptr;
        return;
    }
    const MomClass &root = momRoot(named.kind == ClauseKind::objectClass ? kObjectTree : kInteractionTree);
    named.mom = RtiFedName::equal(name, root.name) ? &root : nullptr;
}

bool Clauses::isMom(Index clause) const {
    if (_clauses[clause].mom)
        return true;
    const Index parent = _tree.clauses()[clause].parent;
    return isMember(_clauses[clause].kind) && parent != SyntaxTree::kNone && _clauses[parent].mom &&
           _clauses[parent].mom->hasMember(name(clause));
}

WordRole Clauses::role(Index token) const {
    const Index clause = _tree.clauseAt(_tree.begin(token));
    if (clause == SyntaxTree::kNone)
        return WordRole::none;
    const std::vector<Index> words = _tree.words(clause);
    const auto found = std::find(words.begin(), words.end(), token);
    return found == words.end() ? WordRole::none
                                : roleOf(_clauses[clause].kind, static_cast<std::size_t>(found - words.begin()));
}

std::string_view Clauses::name(Index clause) const {
    return _clauses[clause].name == SyntaxTree::kNone ? std::string_view() : wordOf(_tree, _clauses[clause].name);
}

std::string_view wordOf(const SyntaxTree &tree, SyntaxTree::Index token) {
    std::string_view word = tree.bytes(token);
    if (tree.kind(token) != SyntaxTree::Kind::quotedWord)
        return word;
    word.remove_prefix(1);
    if (!word.empty() && word.back() == '"')
        word.remove_suffix(1);
    return word;
}

RtiFedSpan spanOf(const SyntaxTree &tree, SyntaxTree::Index token) {
    return tree.spanOfTokens(token, token);
}

SyntaxTree::Index wordAt(const SyntaxTree &tree, std::uint32_t offset) {
    const auto isText = [&tree](SyntaxTree::Index token) {
        return SyntaxTree::isWord(tree.kind(token)) || tree.kind(token) == SyntaxTree::Kind::comment;
    };
    const SyntaxTree::Index token = tree.tokenAt(offset);
    if (token < tree.numTokens() && isText(token))
        return token;
    return token > 0 && tree.begin(token) == offset && isText(token - 1) ? token - 1 : SyntaxTree::kNone;
}
