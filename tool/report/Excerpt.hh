#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <cstddef>
#include <string>
#include <string_view>

/// A line of a text as a terminal shows it, with carets for a second line under what is meant in it: `^~~~`.
///
/// Tabs become blanks, what is not printable becomes \xNN. A line of more than `width` columns is cut around what is
/// meant. Of what spans several lines the first is shown.
struct Excerpt {
    std::string line;
    std::string carets;

    /// `column` is that of the first byte of `span` in its line.
    Excerpt(std::string_view text, RtiFedSpan span, unsigned long column, std::size_t width);
};
