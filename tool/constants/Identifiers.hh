#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

using Keywords = std::set<std::string, std::less<>>;

/// Returns a name as an identifier of a language with these keywords. docs/constants.md has the rule for users:
///
/// - Characters other than ASCII letters and digits become "_", and several "_" in a row become one.
/// - Before a digit or "_" at the beginning, "x_" or "x" is inserted; an empty name becomes "x_".
/// - After a keyword, "_" is appended.
///
/// So an identifier has no "__" and does not begin with "_", which C++ reserves and Python treats specially.
std::string identifierFor(std::string_view name, const Keywords &keywords);

/// Whether a name has only ASCII letters, digits and "_", and does not begin with a digit.
bool isIdentifier(std::string_view name);

/// The identifiers of one scope, each of which is unique there.
class Identifiers {
public:
    explicit Identifiers(const Keywords &keywords) : _keywords(keywords) {}

    /// Reserves an identifier. Returns false if it is in use.
    bool reserve(const std::string &identifier) { return _used.emplace(identifier, 1).second; }

    /// Returns an identifier for a name. If another name has it, _2 is appended, or the next number that is free.
    std::string add(std::string_view name);

private:
    const Keywords &_keywords;
    std::unordered_map<std::string, std::size_t> _used; // with the number that was last appended
};
