#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace re2 {
class RE2;
}

/// A pattern that a configuration gives for names or for paths.
///
/// Patterns are matched in time proportional to the length of the text, whatever the pattern is, and one that would
/// take much memory is refused, so that a hostile configuration cannot hang the program.
class Pattern {
public:
    /// Returns the pattern of a regular expression that must match a whole name.
    static Pattern ofName(const std::string &expression) { return {expression, expression}; }

    /// Returns the pattern of paths, whose folders are separated by `/`: `*` is any text within a name, `**` any text,
    /// `?` one byte, `[a-z]` and `[!a-z]` one of a set. Without a `/`, except at its end, it may match in any folder;
    /// all that is in a folder that matches does match.
    static Pattern ofPath(const std::string &glob);

    bool matches(std::string_view text) const;

    /// Why the pattern cannot be used; empty if it can.
    std::string fault() const;

    /// The pattern as it was written.
    const std::string &text() const { return _text; }

private:
    Pattern(std::string text, const std::string &expression, bool isGlob = false);

    std::string _text;
    bool _isGlob;
    std::shared_ptr<const re2::RE2> _expression; // null if it is too long
};
