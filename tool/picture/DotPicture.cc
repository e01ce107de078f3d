#include "tool/picture/Picture.hh"

#include <string_view>

namespace {

/// Returns a text as part of a label. Graphviz takes backslashes as the beginning of an escape sequence, `&` as that of
/// an XML entity, and in labels of records these brackets and blanks as layout.
std::string label(std::string_view text, bool isRecord) {
    std::string escaped;
    for (const char c : text) {
        const std::string_view special = isRecord ? "\\\"{}|<> " : "\\\"";
        if (c == '&')
            escaped += "&amp;";
        else if (special.find(c) != std::string_view::npos)
            escaped += {'\\', c};
        else
            escaped += c;
    }
    return escaped;
}

std::string labelOf(const ClassPicture::Node &node) {
    if (node.members.empty())
        return label(node.name + node.note, false);
    std::string text = label(node.name + node.note, true) + '|';
    for (const std::string &member : node.members)
        text += label(member, true) + "\\l"; // ends a line that is aligned to the left
    return text;
}

/// Writes a tree as a cluster, in which each class is known by its number, since names may have any characters. From
/// left to right, Graphviz places what comes first at the bottom, so everything is written in reverse order.
void writeTree(const ClassPicture::Tree &tree, std::ostream &os) {
    const bool isObject = tree.kind == &kObjectTree;
    const char prefix = isObject ? 'o' : 'i';
    os << "  subgraph cluster_" << prefix << " {\n    label=\"" << tree.kind->heading << "\"\n    node [fillcolor=\""
       << (isObject ? "#eef4fc" : "#fdf3e7") << "\", color=\"" << (isObject ? "#5b8fd0" : "#c08a3e") << "\"]\n";
    for (std::size_t i = tree.nodes.size(); i-- > 0;) {
        const ClassPicture::Node &node = tree.nodes[i];
        os << "    " << prefix << i << " [label=\"" << labelOf(node) << "\", tooltip=\"" << label(node.fullName, false)
           << '"' << (node.members.empty() ? "" : ", shape=record, style=filled")
           << (node.isFoldedMom ? R"(, style="rounded,dashed", color="#8c959f")" : "") << "]\n";
    }
    for (std::size_t i = tree.nodes.size(); i-- > 0;) // equivalent: the first one has no parent
        if (tree.nodes[i].parent != Outline::kNone)
            os << "    " << prefix << tree.nodes[i].parent << " -> " << prefix << i << '\n';
    os << "  }\n";
}

} // namespace

void writeDot(const ClassPicture &picture, std::ostream &os) {
    os << "digraph {\n  label=\"" << label(picture.title(), false) << R"("
  rankdir=LR; ordering=out; nodesep=0.1; ranksep=0.4; labelloc=t; labeljust=l
  pencolor=transparent; fontname="Helvetica,Arial,sans-serif"; fontsize=11
  node [shape=box, style="rounded,filled", fontname="Helvetica,Arial,sans-serif", fontsize=11, height=0.3, margin="0.12,0.05"]
  edge [dir=none, color="#8c959f", tailport=e, headport=w]
)";
    for (auto tree = picture.trees.rbegin(); tree != picture.trees.rend(); ++tree)
        writeTree(*tree, os);
    os << "}\n";
}
