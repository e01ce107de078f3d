#pragma once

#include "tool/check/Finding.hh"

#include <string>
#include <string_view>
#include <vector>

/// Returns the candidate that a misspelt word most likely means; empty if none is similar. The first of two that are
/// equally similar is returned.
///
/// The idea: the fewer letters must be edited to make one word of the other, the more likely the one means the other;
/// more edits are allowed in longer words. Differences in letter case, in `_`, `-` and blanks, and a leading `HLA` do
/// not count, since naming conventions differ in just these. Comparing two words takes time in proportion to the
/// product of their lengths, so that long words and very many candidates get no suggestion.
std::string suggestionFor(std::string_view word, const std::vector<std::string> &candidates);

/// A suggestion, and whether it is sure enough to be taken without asking.
///
/// The idea: a typing error changes one letter, or swaps two. More changes, a changed digit, and any change of a
/// very short word may make a word that means something else, as in `unreliable`. And nothing else may be similar;
/// names that differ in letter case, and the two forms of a transportation or ordering, are one thing.
struct Suggestion {
    std::string word; ///< Empty if there is none.
    bool isSure = false;
};
Suggestion bestOf(std::string_view word, const std::vector<std::string> &candidates);
/// The same of a name that its author chose: a name of which only the last letter differs may be another one of a
/// series, as `AreaA` and `AreaB` are.
Suggestion bestNameOf(std::string_view word, const std::vector<std::string> &candidates);

/// Returns a suggestion as the end of a message, such as `; did you mean "check"?`; empty if there is none.
std::string didYouMean(const std::string &suggestion);

/// Returns a message about a rule that does not exist, with a suggestion.
std::string unknownRule(std::string_view id);

/// If a declared name is similar to one of the missing names, notes at its place that the missing name was probably
/// meant, with a fix. Returns the missing name, or an empty text.
std::string noteSimilar(Finding &finding, RtiFedSpan place, const std::string &name,
                        const std::vector<std::string> &missing);

/// Returns a name as FED text writes it: in quotes if it needs them.
std::string asWord(std::string_view name);
