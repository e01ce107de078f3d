#pragma once

#include "tool/language/NameUses.hh"
#include "tool/language/words/Entities.hh"

#include <string_view>
#include <vector>

/// A word in a comment that may be a dotted name.
struct DottedWord {
    std::vector<RtiFedSpan> components; ///< At least two, none of them empty.
};

/// Returns the words with dots of a comment that begins at an offset. Punctuation around a word does not belong to it.
std::vector<DottedWord> dottedWordsIn(std::string_view text, RtiFedSpan comment);

/// What the components of a dotted name mean, in the same order.
using DottedMeaning = std::vector<NamedEntity>;

/// Returns what a dotted name may mean: a class by the end of its full name; an attribute or parameter, declared or
/// inherited, by its name after such a class; or a dimension by its name after that of its space.
///
/// The idea: the entities with the name of the last component are known, so that only few paths are compared. It gives
/// up where very many entities have that name, since such a dotted name says little.
std::vector<DottedMeaning> meaningsOf(const Entities &entities, std::string_view text, const DottedWord &word);
