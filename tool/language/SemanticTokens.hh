#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <array>
#include <vector>

class Document;

/// What a token is, for the colours of an editor.
enum class TokenType : unsigned char {
    keyword,
    federation, ///< Its name, and those of federates.
    space,
    dimension,
    classType,
    attribute,
    parameter,
    delivery, ///< A transportation or an ordering.
    text,     ///< A version, a security level.
    comment
};

/// The names that editors have colours for, in the order of the types.
inline constexpr std::array<const char *, 10> kTokenTypeNames = {
    "keyword", "type", "namespace", "variable", "class", "property", "parameter", "enumMember", "string", "comment"};

/// Bits of SemanticToken::modifiers, and their names.
enum TokenModifier : unsigned char { declarationToken = 1, readonlyToken = 2, defaultLibraryToken = 4 };
inline constexpr std::array<const char *, 3> kTokenModifierNames = {"declaration", "readonly", "defaultLibrary"};

struct SemanticToken {
    RtiFedSpan span; ///< Within one line.
    TokenType type = TokenType::keyword;
    unsigned char modifiers = 0;
};

/// Returns the tokens that have a colour, in the order of the text. A word that nothing is known of, such as a misspelt
/// keyword or transportation, is not among them. What the RTI uses by its name has the modifiers readonly and
/// defaultLibrary. Takes time in proportion to the text.
std::vector<SemanticToken> semanticTokens(const Document &document);
