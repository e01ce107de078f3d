#pragma once

#include "tool/console/Console.hh"

#include <string>
#include <string_view>
#include <vector>

/// A line of a table or tree, made of parts. It is cut to the width of the console, so that no terminal breaks it. Each
/// character counts as one column.
class Line {
public:
    enum Style { plain, strong, faint };

    /// Adds a printable text.
    Line &add(std::string_view text, Style style = plain);
    /// Adds blanks up to a column, counted from 0, but at least two.
    Line &pad(std::size_t column);

    std::size_t width() const { return _width; }
    /// Writes the line with a line end.
    void print(const Console &console) const;

private:
    struct Part {
        std::size_t end; // in the text
        Style style;
    };

    std::string _text;
    std::vector<Part> _parts;
    std::size_t _width = 0;
};

/// The width of a UTF-8 text in columns: the number of characters that begin in it.
std::size_t columns(std::string_view text);

/// Returns the first `count` columns of a text.
std::string_view firstColumns(std::string_view text, std::size_t count);
