#include "tool/language/TypeHierarchy.hh"

#include "tool/console/Text.hh"
#include "tool/language/Document.hh"
#include "tool/language/NameUses.hh"

namespace {

using Index = Entities::Index;

HierarchyItem itemOf(const Document &document, Index index) {
    const Entities::Entity &entity = document.entities()[index];
    const std::string_view above =
        entity.owner == Entities::kNone ? std::string_view() : document.entities()[entity.owner].fullName;
    const SyntaxTree::Index clause = document.tree().clauseAt(entity.place.begin);
    return {entity.kind,
            std::string(entity.fullName),
            shown(entity.name, kTextLimit),
            shown(above, kTextLimit),
            clause == SyntaxTree::kNone ? entity.place : document.tree().span(clause),
            entity.place};
}

} // namespace

std::optional<HierarchyItem> hierarchyItemAt(const Document &document, std::uint32_t offset) {
    const auto name = nameAt(document, offset);
    if (!name)
        return {};
    const Entities &entities = document.entities();
    Index index = name->meanings.front().entity;
    if (isMember(entities[index].kind))
        index = entities[index].owner;
    return isClass(entities[index].kind) ? std::optional(itemOf(document, index)) : std::nullopt;
}

std::optional<HierarchyItem> superclassOf(const Document &document, ClauseKind kind, std::string_view fullName) {
    const Index index = document.entities().classNamed(kind, fullName);
    if (index == Entities::kNone || document.entities()[index].owner == Entities::kNone)
        return {};
    return itemOf(document, document.entities()[index].owner);
}

std::vector<HierarchyItem> subclassesOf(const Document &document, ClauseKind kind, std::string_view fullName) {
    std::vector<HierarchyItem> items;
    const Entities &entities = document.entities();
    const Index index = entities.classNamed(kind, fullName);
    if (index != Entities::kNone)
        for (Index sub = entities[index].firstSubclass; sub != Entities::kNone; sub = entities[sub].nextSibling)
            items.push_back(itemOf(document, sub));
    return items;
}
