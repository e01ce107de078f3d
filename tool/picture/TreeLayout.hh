#pragma once

#include <cstddef>
#include <vector>

/// A box of a tree to lay out. Boxes are in depth-first order: each is followed by its descendants.
struct TreeBox {
    std::size_t parent = 0;     ///< The index of the parent, or the greatest number for a root.
    long width = 0, height = 0; ///< The height is even, so that its middle is a whole number.
    long x = 0, y = 0;          ///< The upper left corner; set by layOut.

    long middle() const { return y + height / 2; }
    long right() const { return x + width; }
};

/// The free space between boxes.
struct TreeGaps {
    long betweenLevels, betweenSiblings;
    long aroundFamilies; ///< Above and below a parent with its descendants, so that they are seen to belong together.
};

struct TreeSize {
    long width = 0, height = 0;
};

/// Lays out trees from left to right, the roots one below the other, and returns the size of the whole.
///
/// Each level is a column. Each subtree has a horizontal band of its own, and the bands of siblings lie one below the
/// other: so no two boxes overlap. A parent is in the middle between its first and last child; its band reaches as far
/// above and below that middle as its children or its own box need, whichever is more. A tall box with few children
/// leaves space free beside them, which a layout by outlines could use; bands need one pass from the leaves and one
/// from the roots, over a vector, without recursion.
TreeSize layOut(std::vector<TreeBox> &boxes, TreeGaps gaps);
