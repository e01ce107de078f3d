#include "tool/console/Text.hh"
#include "tool/console/Xml.hh"
#include "tool/picture/Picture.hh"
#include "tool/picture/TextWidth.hh"
#include "tool/picture/TreeLayout.hh"

#include <algorithm>

namespace {

// All lengths are in pixels.
constexpr int kFontSize = 13, kMemberFontSize = 12;
constexpr long kNameHeight = 26, kMemberHeight = 18, kMemberMargin = 8; // of the parts of a box
constexpr long kPadding = 10, kNarrowestBox = 36;
constexpr long kBaseline = 17, kMemberBaseline = 13; // from the upper edge of a line of text
constexpr long kMargin = 20, kHeadingHeight = 34, kTreeGap = 26;
constexpr long kCorner = 5;
constexpr TreeGaps kGaps = {40, 8, 3};

/// Each colour twice, for light and dark surroundings. Texts have a contrast of at least 4.5 to 1. All selectors name
/// the class of the document, so that they leave a page alone into which it is pasted; plain properties, since some
/// viewers know no variables.
constexpr const char *kStyle = R"(
.fed .page{fill:#fff}
.fed text{font:13px FONTS;fill:#1f2328;white-space:pre}
.fed .strong{font-weight:600}
.fed .faint{fill:#59636e}
.fed .member{font-size:12px}
.fed path{fill:none}
.fed .edge{stroke:#8c959f}
.fed .object rect{fill:#eef4fc;stroke:#5b8fd0}
.fed .object .rule{stroke:#5b8fd0}
.fed .interaction rect{fill:#fdf3e7;stroke:#c08a3e}
.fed .interaction .rule{stroke:#c08a3e}
.fed .mom rect{fill:none;stroke:#8c959f;stroke-dasharray:4 3}
@media (prefers-color-scheme:dark){
.fed .page{fill:#0d1117}
.fed text{fill:#e6edf3}
.fed .faint{fill:#9198a1}
.fed .edge{stroke:#6e7681}
.fed .object rect{fill:#13233a;stroke:#3f6ea8}
.fed .object .rule{stroke:#3f6ea8}
.fed .interaction rect{fill:#2e2211;stroke:#8f6a2f}
.fed .interaction .rule{stroke:#8f6a2f}
.fed .mom rect{fill:none;stroke:#6e7681}
}
)";

bool isObject(const ClassPicture::Tree &tree) {
    return tree.kind == &kObjectTree;
}

/// Returns how many classes a tree has, and how many of them have no box of their own.
std::string countsOf(const ClassPicture::Tree &tree) {
    std::string all = counted(tree.nodes.size() + tree.numFolded, tree.kind->className);
    if (tree.numFolded == 0)
        return all;
    return all + ", of which " + std::to_string(tree.numFolded) + (tree.numFolded == 1 ? " is" : " are") + " folded";
}

/// A tree with its boxes, which are relative to the tree's own corner.
struct PlacedTree {
    const ClassPicture::Tree &tree;
    std::vector<TreeBox> boxes;
    TreeSize size;
};

TreeBox boxOf(const ClassPicture::Node &node) {
    long width = textWidth(node.name, kFontSize, !node.members.empty()) + textWidth(node.note, kFontSize, false);
    for (const std::string &member : node.members)
        width = std::max<long>(width, textWidth(member, kMemberFontSize, false));
    const auto numMembers = static_cast<long>(node.members.size());
    const long below = numMembers == 0 ? 0 : kMemberMargin + numMembers * kMemberHeight;
    return {node.parent, std::max(width + 2 * kPadding, kNarrowestBox), kNameHeight + below};
}

PlacedTree placed(const ClassPicture::Tree &tree) {
    PlacedTree result{tree, {}, {}};
    result.boxes.reserve(tree.nodes.size());
    for (const ClassPicture::Node &node : tree.nodes)
        result.boxes.push_back(boxOf(node));
    result.size = layOut(result.boxes, kGaps);
    return result;
}

class SvgWriter {
public:
    explicit SvgWriter(std::ostream &os) : _os(os) {}

    void write(const ClassPicture &picture) {
        std::vector<PlacedTree> trees;
        const std::string title = picture.title();
        long width = textWidth(title, kFontSize, true), height = kHeadingHeight;
        for (const ClassPicture::Tree &tree : picture.trees) {
            trees.push_back(placed(tree));
            width = std::max<long>(width, trees.back().size.width);
            height += kHeadingHeight + trees.back().size.height + kTreeGap;
        }
        begin(picture, width + 2 * kMargin, height - (trees.empty() ? 0 : kTreeGap) + kMargin);
        long y = kMargin;
        text(kMargin, y, "strong", title);
        y += kHeadingHeight - 8;
        for (const PlacedTree &tree : trees) {
            writeTree(tree, y);
            y += kHeadingHeight + tree.size.height + kTreeGap;
        }
        _os << "</svg>\n";
    }

private:
    void begin(const ClassPicture &picture, long width, long height) {
        std::string style = kStyle;
        const std::string fonts = "FONTS";
        style.replace(style.find(fonts), fonts.size(), kFonts);
        std::vector<std::string> counts;
        for (const ClassPicture::Tree &tree : picture.trees)
            counts.push_back(countsOf(tree));
        _os << R"(<svg class="fed" xmlns="http://www.w3.org/2000/svg" width=")" << width << R"(" height=")" << height
            << R"(" viewBox="0 0 )" << width << ' ' << height << "\" role=\"img\">\n<title>" << xml(picture.title())
            << "</title>\n<desc>Class trees from left to right: " << (counts.empty() ? "empty" : joined(counts, "; "))
            << "</desc>\n<style>" << style
            << "</style>\n<rect class=\"page\" width=\"100%\" height=\"100%\" rx=\"6\"/>\n";
    }

    void text(long x, long y, const char *style, const std::string &words) {
        _os << "<text class=\"" << style << "\" x=\"" << x << "\" y=\"" << y + kBaseline << "\">" << xml(words)
            << "</text>\n";
    }

    void writeTree(const PlacedTree &placed, long y) {
        text(kMargin, y, "faint", placed.tree.kind->heading);
        _os << "<g class=\"" << (isObject(placed.tree) ? "object" : "interaction") << "\" transform=\"translate("
            << kMargin << ' ' << y + kHeadingHeight << ")\">\n";
        writeEdges(placed.boxes);
        for (std::size_t i = 0; i < placed.boxes.size(); ++i)
            writeBox(placed.tree.nodes[i], placed.boxes[i]);
        _os << "</g>\n";
    }

    /// Writes one path for each parent: a trunk, and a branch to each child.
    void writeEdges(const std::vector<TreeBox> &boxes) {
        std::vector<std::size_t> first(boxes.size(), Outline::kNone), last(boxes.size(), Outline::kNone);
        std::vector<std::string> between(boxes.size()); // the branches to the other children
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            const std::size_t parent = boxes[i].parent;
            if (parent == Outline::kNone)
                continue;
            if (first[parent] == Outline::kNone) {
                first[parent] = i;
            } else if (last[parent] != first[parent]) {
                // The one that was the last so far is between the first and this one.
                between[parent] += branch(boxes[last[parent]]);
            }
            last[parent] = i;
        }
        for (std::size_t i = 0; i < boxes.size(); ++i)
            if (first[i] != Outline::kNone)
                writeTrunk(boxes[i], boxes[first[i]], boxes[last[i]], between[i]);
    }

    static long trunkX(const TreeBox &child) { return child.x - kGaps.betweenLevels / 2; }

    static std::string branch(const TreeBox &child) {
        return 'M' + std::to_string(trunkX(child)) + ' ' + std::to_string(child.middle()) + 'H' +
               std::to_string(child.x);
    }

    /// The parent is exactly in the middle between its first and last child, so an only child is at its height.
    void writeTrunk(const TreeBox &parent, const TreeBox &first, const TreeBox &last, const std::string &between) {
        _os << "<path class=\"edge\" d=\"M" << parent.right() << ' ' << parent.middle() << 'H';
        if (&first == &last) {
            _os << first.x;
        } else {
            _os << trunkX(first) << 'M' << first.x << ' ' << first.middle() << 'H' << trunkX(first) + kCorner << 'q'
                << -kCorner << " 0 " << -kCorner << ' ' << kCorner << 'V' << last.middle() - kCorner << "q0 " << kCorner
                << ' ' << kCorner << ' ' << kCorner << 'H' << last.x << between;
        }
        _os << "\"/>\n";
    }

    void writeBox(const ClassPicture::Node &node, const TreeBox &box) {
        _os << (node.isFoldedMom ? "<g class=\"mom\">" : "<g>") << "<title>" << xml(node.fullName + node.note)
            << "</title><rect x=\"" << box.x << "\" y=\"" << box.y << "\" width=\"" << box.width << "\" height=\""
            << box.height << "\" rx=\"" << kCorner << "\"/>";
        _os << "<text text-anchor=\"middle\" x=\"" << box.x + box.width / 2 << "\" y=\"" << box.y + kBaseline << '"'
            << (node.members.empty() ? "" : " class=\"strong\"") << '>' << xml(node.name);
        if (!node.note.empty())
            _os << "<tspan class=\"faint\">" << xml(node.note) << "</tspan>";
        _os << "</text>";
        if (!node.members.empty())
            writeMembers(node, box);
        _os << "</g>\n";
    }

    void writeMembers(const ClassPicture::Node &node, const TreeBox &box) {
        _os << "<path class=\"rule\" d=\"M" << box.x << ' ' << box.y + kNameHeight << 'h' << box.width << "\"/>";
        long y = box.y + kNameHeight + kMemberMargin / 2;
        for (const std::string &member : node.members) {
            _os << "\n<text class=\"member\" x=\"" << box.x + kPadding << "\" y=\"" << y + kMemberBaseline << "\">"
                << xml(member) << "</text>";
            y += kMemberHeight;
        }
    }

    std::ostream &_os;
};

} // namespace

void writeSvg(const ClassPicture &picture, std::ostream &os) {
    SvgWriter(os).write(picture);
}
