#include "tool/fom/export/TypesNames.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Text.hh"

#include <utility>

namespace {

const FomTree *treeOf(const TypesSection &section) {
    for (const FomTree *tree : kFomTrees)
        if (section.key == std::string_view(tree->section))
            return tree;
    return nullptr;
}

/// Returns a name as a file of types has it, which is UTF-8: the name itself, or if it is not UTF-8 as in XML.
std::string nameInTypes(const std::string &name) {
    std::string_view rest = name;
    while (const std::size_t size = rest.empty() ? 0 : RtiFedParser::printableSize(rest))
        rest.remove_prefix(size);
    if (rest.empty())
        return name;
    std::vector<std::string> components = split(name, '.');
    for (std::string &component : components)
        component = fomName(component);
    return joined(components, ".");
}

/// Collects classes or spaces.
class Owners {
public:
    explicit Owners(const TypesSection &section) : _section(section), _root(rootPrefix(section)) {}

    void add(const std::string &name, std::size_t index, const std::vector<Outline::Member> &members) {
        TypesOwner &owner = _owners.emplace_back(
            TypesOwner{_names.distinct(nameInTypes(name)), {_section.kind, static_cast<std::uint32_t>(index)}, {}});
        DistinctNames names;
        for (const Outline::Member &member : members)
            owner.members.push_back(names.distinct(nameInTypes(member.name)));
    }

    /// Adds a class and all below it.
    void addClasses(const Outline::Classes &classes, std::size_t index) {
        const Outline::Class &node = classes[index];
        const bool isBelowRoot = RtiFedName::equal(std::string_view(node.name).substr(0, _root.size()), _root);
        add(node.name.substr(isBelowRoot ? _root.size() : 0), index, node.members);
        for (const std::size_t child : node.children)
            addClasses(classes, child);
    }

    std::vector<TypesOwner> take() { return std::move(_owners); }

private:
    const TypesSection &_section;
    const std::string _root;
    DistinctNames _names;
    std::vector<TypesOwner> _owners;
};

} // namespace

std::vector<TypesOwner> typesOwners(const TypesSection &section, const Outline &outline, const ExportPlan &plan) {
    Owners owners(section);
    if (const FomTree *tree = treeOf(section)) {
        const ExportPlan::Tree &planned = plan.tree(*tree);
        const Outline::Classes &classes = outline.classes(tree->kind);
        if (planned.root != Outline::kNone)
            owners.add(classes[planned.root].name, planned.root, classes[planned.root].members);
        for (const std::size_t index : planned.top)
            owners.addClasses(classes, index);
    } else {
        for (std::size_t i = 0; i < outline.spaces.size(); ++i)
            if (!plan.spaces()[i].isLeftOut)
                owners.add(outline.spaces[i].name, i, outline.spaces[i].dimensions);
    }
    return owners.take();
}

std::string rootPrefix(const TypesSection &section) {
    const FomTree *tree = treeOf(section);
    return tree ? RtiFedName::upper(tree->kind.root) + '.' : std::string();
}
