#pragma once

#include <string_view>

/// The dotted names by which people call what a model declares: a class by its full name or the end of it, a member
/// or dimension likewise, with the name of its class or space in front. Names match in any letter case.

/// What stands behind the last dot; of a class, its own name.
std::string_view lastComponent(std::string_view path);

/// Whether `path` is `name`, or ends in a dot and `name`.
bool endsIn(std::string_view path, std::string_view name);

/// The end of `path` that has as many components as `name`, so that the two can be compared; all of it if it has fewer.
std::string_view endLike(std::string_view path, std::string_view name);
