#include "tool/picture/TreeLayout.hh"

#include <algorithm>

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// The band of a subtree, as distances from the middle of its root.
struct Band {
    long above = 0, below = 0; // equivalent: set for each box
    // The bands of the children, one below the other.
    long stack = 0;                     // their height with the gaps between them
    long firstAbove = 0, lastBelow = 0; // of the first and last child. equivalent: set with hasChildren
    bool hasChildren = false;
    long nextChild = 0; // where the band of the next child begins; used by the second pass. equivalent: which sets it

    long height() const { return above + below; }
    /// The distance from the top of the children's bands to the middle between the first and the last child.
    long childrenMiddle() const { return (firstAbove + stack - lastBelow) / 2; }
};

/// Measures the bands, from the leaves to the roots.
std::vector<Band> bandsOf(const std::vector<TreeBox> &boxes, TreeGaps gaps) {
    std::vector<Band> bands(boxes.size());
    for (std::size_t i = boxes.size(); i-- > 0;) {
        Band &band = bands[i]; // those of its descendants are complete: they come after it
        band.above = band.below = boxes[i].height / 2;
        if (band.hasChildren) {
            band.above = std::max(band.above, band.childrenMiddle()) + gaps.aroundFamilies;
            band.below = std::max(band.below, band.stack - band.childrenMiddle()) + gaps.aroundFamilies;
        }
        if (boxes[i].parent == kNone)
            continue;
        Band &parent = bands[boxes[i].parent]; // which meets its last child first
        if (!parent.hasChildren)
            parent.lastBelow = band.below;
        parent.stack += band.height() + (parent.hasChildren ? gaps.betweenSiblings : 0);
        parent.firstAbove = band.above;
        parent.hasChildren = true;
    }
    return bands;
}

/// Gives each level a column as wide as its widest box. Returns the width of all columns.
long setColumns(std::vector<TreeBox> &boxes, long gap) {
    std::vector<std::size_t> levels(boxes.size(), 0);
    std::vector<long> widths;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        if (boxes[i].parent != kNone)
            levels[i] = levels[boxes[i].parent] + 1;
        widths.resize(std::max(widths.size(), levels[i] + 1));
        widths[levels[i]] = std::max(widths[levels[i]], boxes[i].width);
    }
    std::vector<long> begins;
    long end = 0;
    for (const long width : widths) {
        begins.push_back(begins.empty() ? 0 : end + gap);
        end = begins.back() + width;
    }
    for (std::size_t i = 0; i < boxes.size(); ++i) // equivalent: the first box is a root, at 0
        boxes[i].x = begins[levels[i]];
    return end;
}

} // namespace

TreeSize layOut(std::vector<TreeBox> &boxes, TreeGaps gaps) {
    std::vector<Band> bands = bandsOf(boxes, gaps);
    long nextRoot = 0;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        const bool isRoot = boxes[i].parent == kNone;
        long &begin = isRoot ? nextRoot : bands[boxes[i].parent].nextChild;
        const long middle = begin + bands[i].above;
        begin += bands[i].height() + gaps.betweenSiblings;
        boxes[i].y = middle - boxes[i].height / 2;
        bands[i].nextChild = middle - bands[i].childrenMiddle();
    }
    return {setColumns(boxes, gaps.betweenLevels), boxes.empty() ? 0 : nextRoot - gaps.betweenSiblings};
}
