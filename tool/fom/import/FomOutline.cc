#include "tool/fom/import/FomOutline.hh"

#include "fed/storage/RtiFedName.hh"
#include "tool/fom/import/FomSpaces.hh"
#include "tool/model/Names.hh"

#include <algorithm>

namespace {

class OutlineMaker {
public:
    OutlineMaker(const FomModel &model, const FomModules &modules, const FomSpaces &spaces)
        : _model(model), _modules(modules), _spaces(spaces) {}

    Outline make() const {
        Outline outline;
        outline.federation = _model.federation;
        outline.version = _model.version;
        outline.loads = _modules.numErrors() == 0;
        outline.hasHandles = false;
        outline.incompleteAt = firstLoss();
        for (const FomSpaces::Space &space : _spaces.all()) {
            outline.spaces.push_back({space.name, 0, position(space.place), {}});
            for (const std::string &dimension : space.dimensions)
                outline.spaces.back().dimensions.push_back(
                    {dimension, outline.spaces.back().dimensions.size(), {}, {}});
        }
        for (const FomTree *tree : kFomTrees)
            addClasses(*tree, &tree->kind == &kObjectTree ? outline.objects : outline.interactions);
        return outline;
    }

private:
    /// The first declaration that is not in the model because it was not understood.
    std::optional<RtiFedPosition> firstLoss() const {
        const FomModules::Module &first = _modules.all().front();
        return first.firstLoss ? std::optional(first.text->positionAt(*first.firstLoss)) : std::nullopt;
    }

    std::optional<RtiFedPosition> position(const FomPlace &place) const {
        if (place.module != 0 || place.span.length == 0)
            return {};
        return _modules.all().front().text->positionAt(place.span.begin);
    }

    Outline::Properties properties(const FomDelivery &delivery) const {
        return {delivery.transportation.text, delivery.order.text, _spaces.nameFor(delivery.dimensions)};
    }

    void addClasses(const FomTree &tree, Outline::Classes &classes) const {
        for (const FomClass &node : _model.classes(tree)) {
            Outline::Class shown{node.fullName, 0, {}, position(node.name.place), node.parent, node.children, 0, {}};
            if (!tree.kind.membersHaveProperties)
                shown.properties = properties(node.delivery);
            for (const FomMember &member : node.members) {
                shown.members.push_back({member.name.text, 0, {}, position(member.name.place)});
                if (tree.kind.membersHaveProperties)
                    shown.members.back().properties = properties(member.delivery);
            }
            classes.push_back(std::move(shown));
        }
        for (std::size_t i = classes.size(); i-- > 1;)
            classes[classes[i].parent].numDescendants += 1 + classes[i].numDescendants;
    }

    const FomModel &_model;
    const FomModules &_modules;
    const FomSpaces &_spaces;
};

/// Keeps the classes that are marked, with the indices that they then have.
void keepOnly(Outline::Classes &classes, const std::vector<bool> &kept) {
    std::vector<std::size_t> newIndex(classes.size(), Outline::kNone);
    Outline::Classes left;
    for (std::size_t i = 0; i < classes.size(); ++i)
        if (kept[i]) {
            newIndex[i] = left.size();
            left.push_back(std::move(classes[i]));
        }
    for (Outline::Class &node : left) {
        node.parent = node.parent == Outline::kNone ? Outline::kNone : newIndex[node.parent];
        for (std::size_t &child : node.children)
            child = newIndex[child];
        node.children.erase(std::remove(node.children.begin(), node.children.end(), Outline::kNone),
                            node.children.end());
        node.numDescendants = 0;
    }
    for (std::size_t i = left.size(); i-- > 0;)
        if (left[i].parent != Outline::kNone)
            left[left[i].parent].numDescendants += 1 + left[i].numDescendants;
    classes = std::move(left);
}

void removeWhatXmlLacks(const TreeKind &tree, Outline::Classes &classes) {
    const auto isRoot = [&](const Outline::Class &node) {
        return node.parent == Outline::kNone && RtiFedName::equal(node.name, tree.root);
    };
    std::vector<bool> kept;
    for (Outline::Class &node : classes) { // each after its superclass
        const std::string_view name = lastComponent(node.name);
        const bool isRtiClass = node.parent != Outline::kNone && isRoot(classes[node.parent]) &&
                                (RtiFedName::equal(name, kMomClass) || RtiFedName::equal(name, kPrivateClass));
        kept.push_back(node.parent == Outline::kNone || (kept[node.parent] && !isRtiClass));
        if (isRoot(node))
            node.members.erase(std::remove_if(node.members.begin(), node.members.end(),
                                              [](const Outline::Member &member) {
                                                  return RtiFedName::equal(member.name, kPrivilegeInFed);
                                              }),
                               node.members.end());
    }
    keepOnly(classes, kept);
    kept.assign(classes.size(), true);
    for (std::size_t i = 0; i < classes.size(); ++i)
        kept[i] = !isRoot(classes[i]) || !classes[i].members.empty() || !classes[i].children.empty();
    keepOnly(classes, kept);
}

} // namespace

Outline outlineOf(const FomModel &model, const FomModules &modules, const std::vector<Outline::Space> &similar) {
    return OutlineMaker(model, modules, FomSpaces(model, similar)).make();
}

void removeWhatXmlLacks(Outline &outline) {
    outline.federation.clear();
    outline.version.clear();
    removeWhatXmlLacks(kObjectTree, outline.objects);
    removeWhatXmlLacks(kInteractionTree, outline.interactions);
}
