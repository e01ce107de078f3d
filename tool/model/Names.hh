#pragma once

#include <string_view>

/// Dotted names as people type them: the full name of a class, or the end of it; for a member or dimension, the name of
/// its class or space, a dot and its own. Names match in any letter case.

/// Returns the text after the last dot: the own name of a class.
std::string_view lastComponent(std::string_view path);

/// Whether `path` is `name`, or ends in a dot and `name`.
bool endsIn(std::string_view path, std::string_view name);

/// Returns the trailing components of `path`, in the number that `name` has, for comparing the two; the whole path if
/// it has fewer.
std::string_view endLike(std::string_view path, std::string_view name);
