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
            // equivalent: there are no handles
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
            // equivalent: there are no handles, and descendants are counted
            Outline::Class shown{node.fullName, 0, {}, position(node.name.place), node.parent, node.children, 0, {}};
            if (!tree.kind.membersHaveProperties)
                shown.properties = properties(node.delivery);
            for (const FomMember &member : node.members) {
                // equivalent: there are no handles
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
    for (std::size_t i = left.size(); i-- > 0;) // equivalent: the first class has no superclass
        if (left[i].parent != Outline::kNone)
            left[left[i].parent].numDescendants += 1 + left[i].numDescendants;
    classes = std::move(left);
}

bool isRoot(const TreeKind &tree, const Outline::Class &node) {
    return node.parent == Outline::kNone && RtiFedName::equal(node.name, tree.root);
}

void removeStandardParts(const TreeKind &tree, Outline::Classes &classes) {
    std::vector<bool> kept;
    for (Outline::Class &node : classes) { // each after its superclass
        const std::string_view name = lastComponent(node.name);
        const bool isRtiClass = node.parent != Outline::kNone && isRoot(tree, classes[node.parent]) &&
                                (RtiFedName::equal(name, kMomClass) || RtiFedName::equal(name, kPrivateClass));
        kept.push_back(node.parent == Outline::kNone || (kept[node.parent] && !isRtiClass));
        if (isRoot(tree, node))
            node.members.erase(std::remove_if(node.members.begin(), node.members.end(),
                                              [](const Outline::Member &member) {
                                                  return RtiFedName::equal(member.name, kPrivilegeInFed);
                                              }),
                               node.members.end());
    }
    keepOnly(classes, kept);
}

/// Returns the root, or null if there is none.
Outline::Class *rootOf(const TreeKind &tree, Outline::Classes &classes) {
    for (Outline::Class &node : classes)
        if (isRoot(tree, node))
            return &node;
    return nullptr;
}

void removeEmptyRoot(const TreeKind &tree, Outline::Classes &classes) {
    std::vector<bool> kept;
    for (const Outline::Class &node : classes)
        kept.push_back(!isRoot(tree, node));
    keepOnly(classes, kept);
}

/// Object models in XML always have both roots, and need not say how the root interaction class is sent.
void alignRoots(const TreeKind &tree, Outline::Classes &a, Outline::Classes &b) {
    Outline::Class *roots[] = {rootOf(tree, a), rootOf(tree, b)};
    const auto isEmpty = [](const Outline::Class *root) {
        return !root || (root->members.empty() && root->children.empty());
    };
    if (isEmpty(roots[0]) && isEmpty(roots[1])) {
        removeEmptyRoot(tree, a);
        removeEmptyRoot(tree, b);
    } else if (roots[0] && roots[1]) {
        for (std::string Outline::Properties::*word :
             {&Outline::Properties::transportation, &Outline::Properties::ordering})
            if ((roots[0]->properties.*word).empty() || (roots[1]->properties.*word).empty())
                for (Outline::Class *root : roots)
                    (root->properties.*word).clear();
    }
}

/// XML names sets of dimensions, in any order.
void sortDimensions(Outline &outline) {
    for (Outline::Space &space : outline.spaces) {
        std::stable_sort(space.dimensions.begin(), space.dimensions.end(),
                         [](const Outline::Member &a, const Outline::Member &b) {
                             // equivalent: names of dimensions differ in upper case
                             return RtiFedName::upper(a.name) < RtiFedName::upper(b.name);
                         });
        for (std::size_t i = 0; i < space.dimensions.size(); ++i)
            space.dimensions[i].handle = i;
    }
}

} // namespace

Outline outlineOf(const FomModel &model, const FomModules &modules, const std::vector<Outline::Space> &similar) {
    return OutlineMaker(model, modules, FomSpaces(model, similar)).make();
}

void removeWhatXmlLacks(Outline &a, Outline &b) {
    for (Outline *outline : {&a, &b}) {
        outline->federation.clear();
        outline->version.clear();
        removeStandardParts(kObjectTree, outline->objects);
        removeStandardParts(kInteractionTree, outline->interactions);
        sortDimensions(*outline);
    }
    alignRoots(kObjectTree, a.objects, b.objects);
    alignRoots(kInteractionTree, a.interactions, b.interactions);
}
