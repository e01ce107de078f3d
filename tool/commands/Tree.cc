#include "tool/commands/Commands.hh"
#include "tool/console/Line.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"
#include "tool/picture/Picture.hh"
#include "tool/report/MeantClasses.hh"

#include <algorithm>
#include <utility>

namespace {

/// The lines that join the rows of a tree.
struct Branches {
    const char *child, *lastChild; // before a class
    const char *below, *belowLast; // before the rows below it
    const char *member;            // before a member of a class that has subclasses
};
constexpr Branches kUnicodeBranches = {"├── ", "└── ", "│   ", "    ", "│     "};
constexpr Branches kAsciiBranches = {"|-- ", "`-- ", "|   ", "    ", "|     "};
constexpr const char *kNoBranch = "      ";

struct Row {
    std::string branches;
    std::string name;
    Line::Style style;
    const Outline::Properties &properties;
    std::string note;        // follows the name and the properties
    std::string origin = {}; // of an inherited member; has a column of its own
};

/// Where the columns after the name begin.
struct Columns {
    std::size_t properties = 0, origin = 0; // equivalent: no line is so short that 1 would matter
};

const Outline::Properties kNoProperties;

/// Widths of the longest known transportation and ordering, and of the columns after the name in most models.
constexpr std::size_t kTransportationWidth = 11, kOrderingWidth = 9, kPropertiesWidth = 36;

class TreePrinter {
public:
    TreePrinter(const TreeOptions &options, const Console &console)
        : _options(options), _console(console), _branches(console.unicode ? kUnicodeBranches : kAsciiBranches) {}

    void printModel(const Outline &outline) const {
        const auto orNone = [](const std::string &name) { return name.empty() ? "(none)" : shown(name); };
        Line()
            .add("Federation ")
            .add(orNone(outline.federation), Line::strong)
            .add(", version ")
            .add(orNone(outline.version), Line::strong)
            .print(_console);
        printSection("Routing spaces", outline.spaces, [&](auto visit) { walkSpaces(outline.spaces, visit); });
        for (const TreeKind *tree : kTreeKinds) {
            const Outline::Classes &classes = outline.classes(*tree);
            printSection(tree->heading, classes, [&](auto visit) { walkRoots(classes, visit); });
        }
    }

    void printClass(const Outline::Classes &classes, std::size_t index) const {
        printAligned([&](auto visit) {
            std::string indent;
            walk(classes, index, "", indent, 1, visit);
        });
    }

private:
    template <class Elements, class Walk>
    void printSection(const char *title, const Elements &elements, Walk forEachRow) const {
        if (elements.empty())
            return;
        _console.out << '\n' << title << '\n';
        printAligned(forEachRow);
    }

    /// Prints the rows with their properties and origins in columns. `forEachRow` walks over them and calls its
    /// argument.
    template <class Walk>
    void printAligned(Walk forEachRow) const {
        const Columns begins = columnsOf(forEachRow);
        forEachRow([&](const Row &row) { print(row, begins); });
    }

    /// Origins are in one column after the longest space that is before one, unless the terminal is too narrow: then
    /// they follow what is before them, so that fewer are cut.
    template <class Walk>
    Columns columnsOf(Walk forEachRow) const {
        const std::size_t furthest =
            _console.width == 0 ? 60 : std::max(_console.width, 2 * kPropertiesWidth) - kPropertiesWidth;
        Columns begins;
        std::size_t properties = 0;
        std::size_t origin = 0; // the greatest width in its column; equivalent: no origin is so short
        forEachRow([&](const Row &row) {
            const std::size_t end = columns(row.branches) + columns(row.name) + 2;
            if ((row.properties.any() || !row.origin.empty()) && end <= furthest)
                begins.properties = std::max(begins.properties, end);
            origin = std::max(origin, columns(row.origin));
            if (!row.origin.empty() && row.properties.any())
                properties = std::max(properties, widthOf(row.properties));
        });
        const std::size_t column = begins.properties + (properties == 0 ? 0 : properties + 2);
        if (_console.width == 0 || column + origin <= _console.width)
            begins.origin = column;
        return begins;
    }

    static std::size_t widthOf(const Outline::Properties &properties) {
        const std::size_t space = columns(shown(properties.space));
        return kTransportationWidth + 2 + kOrderingWidth + (space == 0 ? 0 : space + 2);
    }

    void print(const Row &row, const Columns &begins) const {
        Line line;
        line.add(row.branches, Line::faint).add(row.name, row.style);
        if (row.properties.any()) {
            std::size_t column = std::max(begins.properties, line.width() + 2);
            line.pad(column).add(shown(row.properties.transportation), Line::faint);
            column = std::max(column + kTransportationWidth, line.width()) + 2;
            line.pad(column).add(shown(row.properties.ordering), Line::faint);
            if (!row.properties.space.empty())
                line.pad(column + kOrderingWidth + 2).add(shown(row.properties.space));
        }
        if (!row.note.empty())
            line.add("  ").add(row.note, Line::faint);
        if (!row.origin.empty())
            line.pad(begins.origin).add(row.origin, Line::faint);
        line.print(_console);
    }

    template <class Visit>
    void walkSpaces(const std::vector<Outline::Space> &spaces, Visit visit) const {
        for (const Outline::Space &space : spaces) {
            const bool last = &space == &spaces.back();
            visit(
                Row{last ? _branches.lastChild : _branches.child, shown(space.name), Line::strong, kNoProperties, ""});
            for (const Outline::Member &dimension : space.dimensions)
                visit(Row{std::string(last ? _branches.belowLast : _branches.below) + kNoBranch, shown(dimension.name),
                          Line::plain, kNoProperties, ""});
        }
    }

    template <class Visit>
    void walkRoots(const Outline::Classes &classes, Visit visit) const {
        std::string indent;
        walkAll(classes, rootsOf(classes), indent, 1, visit);
    }

    /// Visits sibling classes and their descendants. `indent` precedes the branches of each.
    template <class Visit>
    void walkAll(const Outline::Classes &classes, const std::vector<std::size_t> &siblings, std::string &indent,
                 std::size_t level, Visit visit) const {
        const std::size_t size = indent.size();
        for (const std::size_t index : siblings) {
            const bool last = index == siblings.back();
            const std::string branches = indent + (last ? _branches.lastChild : _branches.child);
            indent += last ? _branches.belowLast : _branches.below;
            walk(classes, index, branches, indent, level, visit);
            indent.resize(size);
        }
    }

    template <class Visit>
    void walk(const Outline::Classes &classes, std::size_t index, const std::string &branches, std::string &indent,
              std::size_t level, Visit visit) const {
        const Outline::Class &node = classes[index];
        const bool cut = level == _options.depth && node.numDescendants > 0;
        visit(Row{branches, branches.empty() || node.parent == Outline::kNone ? shown(node.name) : ownName(node),
                  Line::strong, node.properties, cut ? "(" + counted(node.numDescendants, "class") + " below)" : ""});
        if (!_options.classesOnly)
            walkMembers(classes, index, indent + (cut || node.children.empty() ? kNoBranch : _branches.member), visit);
        if (!cut)
            walkAll(classes, node.children, indent, level + 1, visit);
    }

    template <class Visit>
    void walkMembers(const Outline::Classes &classes, std::size_t index, const std::string &branches,
                     Visit visit) const {
        std::vector<std::size_t> from{index}; // the class and, if wanted, its ancestors
        while (_options.inherited && classes[from.back()].parent != Outline::kNone)
            from.push_back(classes[from.back()].parent);
        for (auto owner = from.rbegin(); owner != from.rend(); ++owner)
            for (const Outline::Member &member : classes[*owner].members) {
                const bool inherited = *owner != index;
                visit(Row{branches, shown(member.name), inherited ? Line::faint : Line::plain, member.properties, "",
                          inherited ? "from " + ownName(classes[*owner]) : ""});
            }
    }

    static std::string ownName(const Outline::Class &node) {
        const std::string_view own = lastComponent(node.name);
        return shown(own.empty() ? node.name : own);
    }

    const TreeOptions &_options;
    const Console &_console;
    const Branches &_branches;
};

void printText(const TreeOptions &options, const Outline &outline, const std::vector<ClassPicture::Start> &classes,
               const Console &console) {
    const TreePrinter printer(options, console);
    if (classes.empty())
        printer.printModel(outline);
    for (const auto &[kind, index] : classes) {
        if (kind != classes.front().kind)
            console.out << '\n';
        printer.printClass(outline.classes(*kind), index);
    }
}

void drawMermaid(const ClassPicture &picture, const std::string &fileName, const Console &console) {
    TextStream diagram;
    writeMermaid(picture, diagram);
    const std::string text = diagram.str();
    std::size_t numEdges = 0;
    for (const ClassPicture::Tree &shown : picture.trees)
        numEdges += shown.numEdges();
    // equivalent: the limits are what most pages show, so one byte does not matter
    if (numEdges > kMermaidEdges || text.size() > kMermaidSize)
        console.err << "rtifed: " << fileName << ": the diagram has " << numEdges << " edges and " << text.size()
                    << " bytes; most pages show only up to " << kMermaidEdges << " and " << kMermaidSize
                    << ", so give a CLASS or --depth\n";
    console.out << text;
}

void draw(const TreeOptions &options, const std::string &fileName, const ClassPicture &picture,
          const Console &console) {
    switch (options.format) {
    case TreeOptions::dot:
        return writeDot(picture, console.out);
    case TreeOptions::mermaid:
        return drawMermaid(picture, fileName, console);
    default:
        return writeSvg(picture, console.out);
    }
}

} // namespace

Status tree(const TreeOptions &options, const Console &console) {
    Input input = readInput(options.fileName, console.stdinName);
    const std::string name = input.name;
    const auto outline = outlineToShow(std::move(input), console.err);
    if (!outline)
        return wrong;
    std::vector<ClassPicture::Start> classes;
    if (!options.className.empty()) {
        for (const auto &[kind, index] : meantClasses(options.className, name, *outline, console.err))
            classes.push_back({kind, index});
        if (classes.empty())
            return wrong;
    }
    if (options.format == TreeOptions::text)
        printText(options, *outline, classes, console);
    else
        draw(options, name, ClassPicture(*outline, classes, {options.depth, options.members}), console);
    return outline->loads ? done : wrong;
}
