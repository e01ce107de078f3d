#pragma once

#include <string>
#include <string_view>
#include <utility>

/// Dotted names as people type them: the full name of a class, or the end of it; for a member or dimension, the name of
/// its class or space, a dot and its own. Names match in any letter case.

/// Returns the text after the last dot: the own name of a class.
std::string_view lastComponent(std::string_view path);

/// Whether `path` is `name`, or ends in a dot and `name`.
bool endsIn(std::string_view path, std::string_view name);

/// Returns the trailing components of `path`, in the number that `name` has, for comparing the two; the whole path if
/// it has fewer.
std::string_view endLike(std::string_view path, std::string_view name);

/// A dotted name, or a pattern of dotted names, in which * matches any characters of a component and ? one.
class NamePattern {
public:
    NamePattern(std::string text, bool isGlob) : _text(std::move(text)), _isGlob(isGlob) {}

    const std::string &text() const { return _text; }
    bool isGlob() const { return _isGlob; }

    /// Whether it is the whole of a name.
    bool matches(std::string_view name) const;
    /// Whether it is the path, or its end after a dot.
    bool matchesEnd(std::string_view path) const { return matches(endLike(path, _text)); }

private:
    std::string _text;
    bool _isGlob;
};
