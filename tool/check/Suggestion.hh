#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The candidate that was most likely meant by a misspelt word; empty if none is near. Letter case, and what some
/// people write into names and others do not (`_`, `-`, blanks, a leading `HLA`), makes no difference. Of two that are
/// as near, the first. Of very many candidates, none: that would take long.
std::string suggestionFor(std::string_view word, const std::vector<std::string> &candidates);

/// The same as the end of a message: `; did you mean "check"?`, or nothing.
std::string didYouMean(const std::string &suggestion);

/// A name as it may stand in a FED text: in quotes if it needs them.
std::string asWord(std::string_view name);
