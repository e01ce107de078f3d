#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The candidate that was most likely meant by a misspelt word, in any letter case; empty if none is near. Of two that
/// are as near, the first.
std::string suggestionFor(std::string_view word, const std::vector<std::string> &candidates);

/// The same as the end of a message: `; did you mean "check"?`, or nothing.
std::string didYouMean(const std::string &suggestion);
