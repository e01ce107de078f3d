#include "tool/constants/Identifiers.hh"

#include "tool/constants/Characters.hh"

#include <algorithm>

std::string identifierFor(std::string_view name, const Keywords &keywords) {
    std::string identifier;
    forEachCharacter(name, [&identifier](char32_t character, bool) {
        const bool isAlphanumeric = (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
                                    (character >= '0' && character <= '9');
        if (isAlphanumeric)
            identifier += static_cast<char>(character);
        else if (identifier.empty() || identifier.back() != '_')
            identifier += '_';
    });
    if (identifier.empty() || (identifier[0] >= '0' && identifier[0] <= '9'))
        identifier.insert(0, "x_");
    else if (identifier[0] == '_')
        identifier.insert(0, "x");
    return keywords.count(identifier) > 0 ? identifier + '_' : identifier;
}

bool isIdentifier(std::string_view name) {
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; };
    return !name.empty() && isLetter(name[0]) &&
           std::all_of(name.begin(), name.end(), [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); });
}

std::string Identifiers::add(std::string_view name) {
    const std::string wanted = identifierFor(name, _keywords);
    std::string identifier = wanted;
    while (!reserve(identifier)) {
        identifier = wanted + (wanted.back() == '_' ? "" : "_") + std::to_string(++_used[wanted]);
    }
    return identifier;
}
