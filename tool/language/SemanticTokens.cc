#include "tool/language/SemanticTokens.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/language/Document.hh"
#include "tool/model/DeliveryWords.hh"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

using Index = SyntaxTree::Index;

static_assert(kTokenTypeNames.size() == static_cast<std::size_t>(TokenType::comment) + 1);

bool isOneOf(const DeliveryWords &words, std::string_view word) {
    return std::any_of(words.begin(), words.end(), [word](const DeliveryWord &known) {
        return RtiFedName::equal(word, known.shortForm) || RtiFedName::equal(word, known.longForm);
    });
}

std::optional<TokenType> typeOfName(ClauseKind kind) {
    switch (kind) {
    case ClauseKind::federation:
    case ClauseKind::federate:
        return TokenType::federation;
    case ClauseKind::space:
        return TokenType::space;
    case ClauseKind::dimension:
        return TokenType::dimension;
    case ClauseKind::objectClass:
    case ClauseKind::interactionClass:
        return TokenType::classType;
    case ClauseKind::attribute:
        return TokenType::attribute;
    case ClauseKind::parameter:
        return TokenType::parameter;
    // unreached: other clauses have no name
    default:
        return {};
    }
}

std::optional<TokenType> typeOfWord(ClauseKind kind, WordRole role, std::string_view word) {
    switch (role) {
    case WordRole::keyword:
        return TokenType::keyword;
    case WordRole::name:
        return typeOfName(kind);
    case WordRole::transportation:
        return isOneOf(kTransportations, word) ? std::optional(TokenType::delivery) : std::nullopt;
    case WordRole::ordering:
        return isOneOf(kOrderings, word) ? std::optional(TokenType::delivery) : std::nullopt;
    case WordRole::space:
        return TokenType::space;
    case WordRole::value:
        return TokenType::text;
    case WordRole::none:
        break;
    }
    return {};
}

unsigned char modifiersOf(const Clauses &clauses, Index clause, WordRole role) {
    if (role != WordRole::name)
        return 0;
    return declarationToken | (clauses.isMom(clause) ? readonlyToken | defaultLibraryToken : 0);
}

} // namespace

std::vector<SemanticToken> semanticTokens(const Document &document) {
    const SyntaxTree &tree = document.tree();
    const Clauses &clauses = document.clauses();
    std::vector<SemanticToken> tokens;
    forEachToken(tree, [&](Index token, Index clause, std::size_t word) {
        if (tree.kind(token) == SyntaxTree::Kind::comment)
            tokens.push_back({spanOf(tree, token), TokenType::comment, 0});
        if (word == kNoWord)
            return;
        const WordRole role = roleOf(clauses[clause].kind, word);
        if (const auto type = typeOfWord(clauses[clause].kind, role, wordOf(tree, token)))
            tokens.push_back({spanOf(tree, token), *type, modifiersOf(clauses, clause, role)});
    });
    return tokens;
}
