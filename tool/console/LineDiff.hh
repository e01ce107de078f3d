#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

using Lines = std::vector<std::string_view>; // with their line ends

/// A run of lines of both texts, each from its first line to before its last.
struct LineChange {
    std::size_t beginA, endA, beginB, endB;

    bool empty() const { return beginA == endA && beginB == endB; }
};

/// Returns the lines of a text, which end with LF or the text.
Lines linesOf(std::string_view text);

/// Returns the lines that two texts do not share, in the order of the texts.
///
/// A line that is in both texts exactly once almost surely is the same one, so such lines, as many as are in the same
/// order, are fixed first. The texts between two of them are compared in the same way, where further lines may be
/// unique. Equal lines at both ends of such a part are the same, too. What remains has no unique line in common and
/// counts as changed. The result is right whatever it takes for the same, though not always the shortest; and it needs
/// neither the memory nor the time that a shortest one may need where most lines change, as when a text is formatted.
std::vector<LineChange> changedLines(const Lines &a, const Lines &b);
