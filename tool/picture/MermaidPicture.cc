#include "tool/picture/Picture.hh"

#include <string_view>

namespace {

bool isPlain(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || c == ',' ||
           static_cast<unsigned char>(c) >= 0x80;
}

/// Returns a text for a label in quotes. Mermaid reads labels as Markdown, as HTML, and for words such as `end`; its
/// entities are a number sign, the code of a character and a semicolon. Everything that could have a meaning becomes
/// one. Formulas ($$) and icons (fa:fa-NAME) are recognised even so, but not with a word joiner, which has no width.
std::string label(std::string_view text) {
    constexpr const char *kWordJoiner = "#8288;";
    std::string escaped;
    for (const char c : text) {
        escaped += isPlain(c) ? std::string(1, c) : '#' + std::to_string(static_cast<int>(c)) + ';';
        if (c == '$' || c == ':')
            escaped += kWordJoiner;
    }
    return escaped;
}

/// Returns a text for a title in the front matter, which is a YAML string in double quotes. Mermaid removes from it
/// what looks like an HTML tag and decodes no entities, so a similar character takes the place of each `<`.
std::string yamlTitle(std::string_view text) {
    constexpr const char *kLeftQuotationMark = "\xE2\x80\xB9";
    std::string escaped;
    for (const char c : text) {
        if (c == '\\' || c == '"') // unreached: no text has a name with a quote, but an image may
            escaped += '\\';
        escaped += c == '<' ? std::string(kLeftQuotationMark) : std::string(1, c);
    }
    return escaped;
}

std::string labelOf(const ClassPicture::Node &node) {
    if (node.members.empty())
        return label(node.name + node.note);
    std::string text = "<b>" + label(node.name) + "</b>" + label(node.note);
    for (const std::string &member : node.members)
        text += "<br>" + label(member);
    return text;
}

/// Writes a tree as a subgraph, in which each class is known by its number, since names may have any characters.
void writeTree(const ClassPicture::Tree &tree, std::ostream &os) {
    const char *style = tree.kind == &kObjectTree ? "object" : "interaction";
    const char prefix = style[0];
    os << "  subgraph " << style << "s[\"" << tree.kind->heading << "\"]\n    direction LR\n";
    for (std::size_t i = 0; i < tree.nodes.size(); ++i)
        os << "    " << prefix << i << "[\"" << labelOf(tree.nodes[i])
           << "\"]:::" << (tree.nodes[i].isFoldedMom ? "mom" : style) << '\n';
    for (std::size_t i = 0; i < tree.nodes.size(); ++i)
        if (tree.nodes[i].parent != Outline::kNone)
            os << "    " << prefix << tree.nodes[i].parent << " --- " << prefix << i << '\n';
    os << "  end\n  style " << style << "s fill:none,stroke:none\n";
}

} // namespace

/// Mermaid places the last subgraph at the top. Only strokes are coloured: the page that shows the diagram chooses the
/// other colours, for light or dark.
void writeMermaid(const ClassPicture &picture, std::ostream &os) {
    os << "---\ntitle: \"" << yamlTitle(picture.title()) << "\"\n---\nflowchart LR\n";
    for (auto tree = picture.trees.rbegin(); tree != picture.trees.rend(); ++tree)
        writeTree(*tree, os);
    os << "  classDef object stroke:#5b8fd0\n  classDef interaction stroke:#c08a3e\n"
          "  classDef mom stroke-dasharray:4 3\n";
}
