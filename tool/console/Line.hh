#pragma once

#include "tool/console/Console.hh"

#include <string>
#include <string_view>
#include <vector>

/// A line of a table or tree, made of parts. Where the console has a width, what is beyond it is cut off, so that no
/// terminal breaks the line; where it has colours, the parts have theirs. A character counts as one column.
class Line {
public:
    enum Style { plain, strong, faint };

    /// Adds a part, which must be printable.
    Line &add(std::string_view text, Style style = plain);
    /// Adds blanks up to a column, counted from 0, and at least two.
    Line &pad(std::size_t column);

    std::size_t width() const { return _width; }
    /// Writes the line and its end.
    void print(const Console &console) const;

private:
    struct Part {
        std::string text;
        Style style;
    };

    std::vector<Part> _parts;
    std::size_t _width = 0;
};

/// The columns that a UTF-8 text takes: the characters that begin in it.
std::size_t columns(std::string_view text);
