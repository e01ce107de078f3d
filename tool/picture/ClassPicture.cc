#include "tool/picture/ClassPicture.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/model/Names.hh"

#include <algorithm>

namespace {

/// Collects the classes below some classes, without recursion.
class TreeCollector {
public:
    TreeCollector(const TreeKind &kind, const Outline::Classes &classes, ClassPicture::Options options)
        : _mom(std::string(kind.root) + ".Manager"), _classes(classes), _options(options), _tree{&kind, {}} {}

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
        node.name = shown(own.empty() ? from.name : own, kNameLimit);
        node.fullName = shown(from.name, kTextLimit);
        node.parent = pending.parent;
        node.isFoldedMom = !begins && from.numDescendants > 0 && RtiFedName::equal(from.name, _mom);
        const bool isCut = pending.level == _options.depth && from.numDescendants > 0;
        if (node.isFoldedMom)
            node.note = ", " + counted(from.numDescendants + 1, "class");
        else if (isCut)
            node.note = " +" + std::to_string(from.numDescendants);
        if (_options.members && !node.isFoldedMom)
            for (const Outline::Member &member : from.members)
                node.members.push_back(shown(member.name, kNameLimit));
        const bool isOpen = !node.isFoldedMom && !isCut;
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
    : federation(shown(outline.federation, kNameLimit)), version(shown(outline.version, kNameLimit)) {
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
