#include "tool/fom/export/TypesNames.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Text.hh"

namespace {

const FomTree *treeOf(const TypesSection &section) {
    for (const FomTree *tree : kFomTrees)
        if (section.key == std::string_view(tree->section))
            return tree;
    return nullptr;
}

/// Adds a class and all below it.
void addClasses(const TypesSection &section, const Outline::Classes &classes, std::size_t index,
                std::vector<TypesOwner> &owners) {
    const Outline::Class &node = classes[index];
    const std::string prefix = rootPrefix(section);
    const bool isBelowRoot = RtiFedName::equal(std::string_view(node.name).substr(0, prefix.size()), prefix);
    owners.push_back({node.name.substr(isBelowRoot ? prefix.size() : 0),
                      {section.kind, static_cast<std::uint32_t>(index)},
                      &node.members});
    for (const std::size_t child : node.children)
        addClasses(section, classes, child, owners);
}

} // namespace

std::vector<TypesOwner> typesOwners(const TypesSection &section, const Outline &outline, const ExportPlan &plan) {
    std::vector<TypesOwner> owners;
    if (const FomTree *tree = treeOf(section)) {
        const ExportPlan::Tree &planned = plan.tree(*tree);
        const Outline::Classes &classes = outline.classes(tree->kind);
        if (planned.root != Outline::kNone)
            owners.push_back({classes[planned.root].name,
                              {section.kind, static_cast<std::uint32_t>(planned.root)},
                              &classes[planned.root].members});
        for (const std::size_t index : planned.top)
            addClasses(section, classes, index, owners);
        return owners;
    }
    for (std::size_t i = 0; i < outline.spaces.size(); ++i)
        if (!plan.spaces()[i].isLeftOut)
            owners.push_back(
                {outline.spaces[i].name, {section.kind, static_cast<std::uint32_t>(i)}, &outline.spaces[i].dimensions});
    return owners;
}

std::string rootPrefix(const TypesSection &section) {
    const FomTree *tree = treeOf(section);
    return tree ? RtiFedName::upper(tree->kind.root) + '.' : std::string();
}

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
