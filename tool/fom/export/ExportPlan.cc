#include "tool/fom/export/ExportPlan.hh"

#include "fed/RtiFedDatabase.hh"
#include "fed/storage/RtiFedName.hh"
#include "tool/console/Text.hh"
#include "tool/language/words/MomNames.hh"
#include "tool/model/Names.hh"

#include <algorithm>

namespace {

/// Notes the classes and members in a subtree of the MOM that the MOM does not have.
class Additions {
public:
    Additions(const FomTree &tree, const Outline::Classes &classes, std::vector<ExportNote> &notes)
        : _tree(tree), _classes(classes), _notes(notes) {}

    void find(std::size_t index, const MomClass &known) {
        const Outline::Class &node = _classes[index];
        for (const Outline::Member &member : node.members)
            if (!known.hasMember(member.name))
                note(member.place,
                     std::string(_tree.kind.memberName) + ' ' + inQuotes(member.name) + " of " + inQuotes(node.name));
        for (const std::size_t child : node.children)
            if (const MomClass *knownChild = known.child(lastComponent(_classes[child].name)))
                find(child, *knownChild);
            else
                note(_classes[child].place, std::string(_tree.kind.className) + ' ' + inQuotes(_classes[child].name));
    }

private:
    void note(const std::optional<RtiFedPosition> &place, const std::string &what) {
        _notes.push_back({place, what + " is left out, because the export has neither RTIprivate nor the Management "
                                        "Object Model (MOM)"});
    }

    const FomTree &_tree;
    const Outline::Classes &_classes;
    std::vector<ExportNote> &_notes;
};

} // namespace

std::string DistinctNames::distinct(const std::string &name) {
    std::size_t &number = _numbers[RtiFedName::upper(name)];
    if (number == 0) {
        number = 1;
        return name;
    }
    std::string free;
    do
        free = name + '_' + std::to_string(++number);
    while (!_numbers.emplace(RtiFedName::upper(free), 1).second);
    return free;
}

ExportPlan::ExportPlan(const Outline &outline, std::vector<ExportNote> &notes) : _notes(notes) {
    planTree(kFomObjects, outline.objects, _objects);
    planTree(kFomInteractions, outline.interactions, _interactions);
    planSpaces(outline);
}

const ExportPlan::Space *ExportPlan::spaceNamed(const std::string &name) const {
    const auto found = _spaceNames.find(RtiFedName::upper(name));
    return found == _spaceNames.end() ? nullptr : &_spaces[found->second];
}

/// Whether a declaration that is exported refers to a space.
bool ExportPlan::isUsed(const Outline &outline, const std::string &space) const {
    const auto refers = [&space](const auto &declaration) {
        return RtiFedName::equal(declaration.properties.space, space);
    };
    for (std::size_t i = 0; i < outline.objects.size(); ++i)
        if (const auto &members = outline.objects[i].members;
            !_objects.isLeftOut[i] && std::any_of(members.begin(), members.end(), refers))
            return true;
    for (std::size_t i = 0; i < outline.interactions.size(); ++i)
        if (!_interactions.isLeftOut[i] && refers(outline.interactions[i]))
            return true;
    return false;
}

/// The space that the library gives to the MOM is not one of the file; an image does not say whether the file has one
/// of that name as well.
void ExportPlan::planSpaces(const Outline &outline) {
    DistinctNames spaces;
    for (const Outline::Space &space : outline.spaces) {
        Space &planned = _spaces.emplace_back();
        if (!space.place && RtiFedName::equal(space.name, RtiFedDatabase::_momDefaultSpace) &&
            space.dimensions.empty() && !isUsed(outline, space.name)) {
            planned.isLeftOut = true;
            continue; // equivalent: nothing refers to it
        }
        _spaceNames.emplace(RtiFedName::upper(space.name), _spaces.size() - 1);
        const std::string own = fomEmptySpace(space.name);
        planned.name = spaces.distinct(own);
        noteName("space", space.name, own, planned.name, space.place);
        DistinctNames dimensions;
        for (const Outline::Member &dimension : space.dimensions) {
            const std::string name = fomDimension("", dimension.name), free = dimensions.distinct(name);
            planned.dimensions.push_back(planned.name + free.substr(free.find('.')));
            noteName("dimension", dimension.name, name.substr(name.find('.') + 1), free.substr(free.find('.') + 1),
                     dimension.place);
        }
        if (space.dimensions.empty())
            planned.dimensions.push_back(planned.name);
    }
}

/// Notes that a space or dimension has another name in the export: an escaped one, which in turn may be taken.
void ExportPlan::noteName(const std::string &noun, const std::string &name, const std::string &escaped,
                          const std::string &exported, const std::optional<RtiFedPosition> &place) {
    if (exported != escaped)
        _notes.push_back({place, "the name " + inQuotes(name) + " is taken in the export by another " + noun +
                                     "; exported as " + shown(exported, kNameLimit)});
    else if (escaped != name)
        _notes.push_back({place, "the name " + inQuotes(name) + " of a " + noun + " is not legal there in XML; " +
                                     "exported as " + shown(exported, kNameLimit)});
}

void ExportPlan::planTree(const FomTree &tree, const Outline::Classes &classes, Tree &plan) {
    plan.isLeftOut.assign(classes.size(), false);
    const std::vector<std::size_t> outermost = rootsOf(classes);
    for (const std::size_t i : outermost)
        if (plan.root == Outline::kNone &&
            (RtiFedName::equal(classes[i].name, tree.kind.root) || classes[i].name == tree.root))
            plan.root = i;
    if (plan.root != Outline::kNone)
        plan.top = classes[plan.root].children;
    for (const std::size_t i : outermost)
        if (i != plan.root)
            plan.top.push_back(i);
    std::sort(plan.top.begin(), plan.top.end());
    for (const std::size_t i : plan.top)
        if (const std::string_view name = lastComponent(classes[i].name);
            RtiFedName::equal(name, kPrivateClass) || RtiFedName::equal(name, kMomClass))
            leaveOut(tree, classes, i, plan);
        else if (name == kStandardMomClass)
            _notes.push_back({classes[i].place, std::string(tree.kind.className) + ' ' + inQuotes(name) +
                                                    " has the name of the Management Object Model (MOM) in XML, for "
                                                    "which RTIs and rtifed import take it"});
        else if (classes[i].parent == Outline::kNone)
            _notes.push_back({classes[i].place, std::string(tree.kind.className) + ' ' + inQuotes(name) +
                                                    " is outside of " + tree.kind.root +
                                                    "; it is exported as a subclass of " + tree.root});
    plan.top.erase(
        std::remove_if(plan.top.begin(), plan.top.end(), [&plan](std::size_t i) { return plan.isLeftOut[i]; }),
        plan.top.end());
    noteRedeclared(tree, classes, plan);
}

/// Leaves out a class and all below it: the classes after it that have a superclass that is left out.
void ExportPlan::leaveOut(const FomTree &tree, const Outline::Classes &classes, std::size_t index, Tree &plan) {
    if (const MomClass *known = momRoot(tree.kind).child(lastComponent(classes[index].name)))
        Additions(tree, classes, _notes).find(index, *known);
    plan.isLeftOut[index] = true;
    for (std::size_t i = index + 1; i < classes.size(); ++i)
        if (classes[i].parent != Outline::kNone && plan.isLeftOut[classes[i].parent])
            plan.isLeftOut[i] = true;
}

/// Notes members that are declared again in their class or in subclasses: one note for all places of a member.
void ExportPlan::noteRedeclared(const FomTree &tree, const Outline::Classes &classes, const Tree &plan) {
    for (std::size_t i = 0; i < classes.size(); ++i)
        for (const Outline::Member &member : classes[i].members) {
            const std::size_t count = member.laterPlaces.size();
            if (count > 0 && !plan.isLeftOut[i])
                _notes.push_back(
                    {member.laterPlaces.front(), std::string(tree.kind.memberName) + ' ' + inQuotes(member.name) +
                                                     " of " + inQuotes(classes[i].name) + " is declared again here" +
                                                     (count > 1 ? " and " + counted(count - 1, "more time") : "") +
                                                     "; the export has only the first declaration"});
        }
}
