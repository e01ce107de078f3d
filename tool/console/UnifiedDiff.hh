#pragma once

#include <ostream>
#include <string>
#include <string_view>

/// Writes what changed from one text to another as a unified diff with three lines of context, as the program `patch`
/// reads it. Writes nothing if the texts are equal; neither may be empty. `name` names both texts.
void writeUnifiedDiff(std::string_view before, std::string_view after, const std::string &name, bool color,
                      std::ostream &os);
