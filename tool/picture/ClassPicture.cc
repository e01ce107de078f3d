#include "tool/picture/ClassPicture.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"

#include <algorithm>

namespace {

/// Whether nobody sees a character of a printable name, or it reorders the text around it. The page shows the same ones
/// as codes, except that `shown` has escaped the strongest of them already. The joiners of some scripts are left alone.
bool isUnseen(unsigned code) {
    return code == 0xAD || code == 0x61C || code == 0x180E || code == 0x200B || code == 0x200E || code == 0x200F ||
           // equivalent: `shown` has escaped U+202E
           (code >= 0x2028 && code <= 0x202E) || (code >= 0x2060 && code <= 0x206F) || code >= 0xFFFE;
}

/// Returns the code of the UTF-8 character of two or three bytes at a place, or 0 if one of another size begins there.
unsigned shortCodeAt(std::string_view text, std::size_t at) {
    const auto bits = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]) & 0x3FU; };
    const auto first = static_cast<unsigned char>(text[at]);
    // equivalent: no character begins with C0 or C1, and what follows E0 is seen, also if it is read as two bytes
    if (first >= 0xC0 && first < 0xE0)
        return (first & 0x1FU) << 6 | bits(1);
    if (first >= 0xE0 && first < 0xF0) // equivalent: what begins with E0 is seen
        return (first & 0xFU) << 12 | bits(1) << 6 | bits(2);
    return 0; // equivalent: the code of any character that is seen
}

/// Returns `shown(name, limit)` with a code such as U+200B for each unseen character. All of these have two or three
/// bytes.
std::string visible(const std::string &name, std::size_t limit) {
    constexpr const char *kDigits = "0123456789ABCDEF";
    const std::string printable = shown(name, limit);
    std::string text;
    for (std::size_t at = 0; at < printable.size(); ++at) {
        const unsigned code = shortCodeAt(printable, at);
        if (!isUnseen(code)) {
            text += printable[at];
            continue;
        }
        text += {'U', '+', kDigits[code >> 12], kDigits[code >> 8 & 15], kDigits[code >> 4 & 15], kDigits[code & 15]};
        at += code < 0x800 ? 1 : 2; // equivalent: the codes around 0x800 are seen
    }
    return text;
}

/// Collects the classes below some classes, without recursion.
class TreeCollector {
public:
    TreeCollector(const TreeKind &kind, const Outline::Classes &classes, ClassPicture::Options options)
        : _mom(std::string(kind.root) + ".Manager"), _classes(classes), _options(options), _tree{&kind, {}, 0} {}

    ClassPicture::Tree collect(const std::vector<std::size_t> &starts) {
        std::vector<Pending> pending; // the next one last
        push(pending, starts, Outline::kNone, 1);
        while (!pending.empty()) {
            const Pending next = pending.back();
            pending.pop_back();
            const std::size_t self = _tree.nodes.size();
            if (add(next))
                push(pending, _classes[next.index].children, self, next.level + 1);
        }
        return std::move(_tree);
    }

private:
    struct Pending {
        std::size_t index, parent, level;
    };

    static void push(std::vector<Pending> &pending, const std::vector<std::size_t> &siblings, std::size_t parent,
                     std::size_t level) {
        for (auto index = siblings.rbegin(); index != siblings.rend(); ++index)
            pending.push_back({*index, parent, level});
    }

    /// Adds a class. Returns whether its subclasses are shown. The MOM is in every model and says nothing about it: it
    /// is folded, unless the picture begins with it.
    bool add(const Pending &pending) {
        const Outline::Class &from = _classes[pending.index];
        const bool begins = pending.parent == Outline::kNone;
        const std::string_view own = begins ? from.name : lastComponent(from.name);
        ClassPicture::Node node;
        node.name = visible(std::string(own.empty() ? from.name : own), kNameLimit);
        node.fullName = visible(from.name, kTextLimit);
        node.parent = pending.parent;
        node.isFoldedMom = !begins && from.numDescendants > 0 && RtiFedName::equal(from.name, _mom);
        const bool isCut = pending.level == _options.depth && from.numDescendants > 0;
        if (node.isFoldedMom)
            node.note = ", " + counted(from.numDescendants + 1, "class");
        else if (isCut)
            node.note = " +" + std::to_string(from.numDescendants);
        if (_options.members && !node.isFoldedMom)
            for (const Outline::Member &member : from.members)
                node.members.push_back(visible(member.name, kNameLimit));
        const bool isOpen = !node.isFoldedMom && !isCut;
        if (!isOpen)
            _tree.numFolded += from.numDescendants;
        _tree.nodes.push_back(std::move(node));
        return isOpen;
    }

    const std::string _mom;
    const Outline::Classes &_classes;
    const ClassPicture::Options _options;
    ClassPicture::Tree _tree;
};

} // namespace

std::size_t ClassPicture::Tree::numEdges() const {
    return static_cast<std::size_t>(
        std::count_if(nodes.begin(), nodes.end(), [](const Node &node) { return node.parent != Outline::kNone; }));
}

ClassPicture::ClassPicture(const Outline &outline, const std::vector<Start> &starts, Options options)
    : federation(visible(outline.federation, kNameLimit)), version(visible(outline.version, kNameLimit)) {
    const auto add = [&](const TreeKind &kind, const std::vector<std::size_t> &from) {
        if (!from.empty())
            trees.push_back(TreeCollector(kind, outline.classes(kind), options).collect(from));
    };
    for (const Start &start : starts)
        add(*start.kind, {start.index});
    if (starts.empty())
        for (const TreeKind *kind : kTreeKinds)
            add(*kind, rootsOf(outline.classes(*kind)));
}

std::string ClassPicture::title() const {
    return (federation.empty() ? "A federation without a name" : federation) +
           (version.empty() ? "" : ", version " + version) + (trees.empty() ? ": no classes" : "");
}
