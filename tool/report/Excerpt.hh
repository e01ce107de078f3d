#pragma once

#include "infrastructure/RtiFedParser.hh"

#include <cstddef>
#include <string>
#include <string_view>

/// A line of a text as a terminal shows it, and the line below it that marks a span: `^~~~`.
///
/// Tabs become blanks, unprintable bytes become \xNN. Of a span of several lines the first is shown. A line of more
/// than `width` columns is cut around the span; only as many bytes on both sides are read as may fill that width,
/// because a line may be as long as the file. For the same reason the tab stops of a cut line are counted from the cut.
struct Excerpt {
    std::string line;
    std::string carets;

    /// `column` is that of the first byte of `span` in its line.
    Excerpt(std::string_view text, RtiFedSpan span, unsigned long column, std::size_t width);
};
