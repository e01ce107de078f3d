#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"
#include "tool/fom/import/FomTreeReader.hh"
#include "tool/model/MomText.hh"

#include <unordered_set>
#include <utility>

namespace {

std::string quoted(const FomText &name) {
    return inQuotes(name.text);
}

/// How a member is distinguished from that of another class: `of "Boat.Tug"`.
std::string ofClass(const FomClass &node) {
    return " of " + inQuotes(node.fullName);
}

} // namespace

std::string FomTreeReader::keyOf(std::size_t owner, std::string_view name) {
    return std::to_string(owner) + '.' + RtiStringUtility::toupper(name);
}

std::string FomTreeReader::describe(const FomClass &node) const {
    return std::string("the ") + _tree.kind.className + ' ' + inQuotes(node.fullName);
}

/// Adds what a module says about a class.
void FomTreeReader::merge(std::size_t index, FomClass draft, bool isRepeated) {
    FomClass &node = at(index);
    const bool isRoot = index == 0; // whose name differs in FED
    if (isRepeated && (isRoot || draft.name.text == node.name.text))
        _modules.add(RuleId::repeatedClass, draft.name.place, "this file has " + describe(node) + " already",
                     node.placeInLastModule, "the first is");
    node.isDescribed = node.isDescribed || draft.isDescribed;
    if (node.semantics.empty())
        node.semantics = draft.semantics;
    if (!draft.isDefined)
        return;
    const bool isFirst = !node.isDefined;
    if (isFirst && draft.name.given())
        node.name.place = draft.name.place;
    if (isFirst)
        node.definedBy = _module;
    node.isDefined = true;
    if (node.definedBy == _module)
        takeMembers(index, draft, isRepeated);
    else if (!isRepeated)
        compareMembers(index, draft);
    const auto isComplete = [](const FomDelivery &delivery) {
        return delivery.transportation.given() || delivery.order.given();
    };
    mergeDelivery({node.delivery, node.name.place}, draft.delivery, draft.name.place, describe(node),
                  !isRepeated && isComplete(node.delivery) && isComplete(draft.delivery));
}

/// Adds the members of the first module that defines a class.
void FomTreeReader::takeMembers(std::size_t index, FomClass &draft, bool isRepeated) {
    FomClass &node = at(index);
    for (FomMember &member : draft.members) {
        const auto [known, isNew] = _members.emplace(keyOf(index, member.name.text), node.members.size());
        if (isNew)
            node.members.push_back(std::move(member));
        else if (isRepeated) // the class is reported
            _modules.addLoss(member.name.place);
        else
            _modules.add(RuleId::repeatedMember, member.name.place,
                         std::string("duplicate ") + _tree.kind.memberName + ' ' + quoted(member.name) + ofClass(node),
                         node.members[known->second].name.place, "the first is");
    }
}

/// Compares the members of a class with those of the module that defined it first.
void FomTreeReader::compareMembers(std::size_t index, const FomClass &draft) {
    FomClass &node = at(index);
    const std::string kind = _tree.kind.memberName;
    std::unordered_set<std::string> here;
    for (const FomMember &member : draft.members) {
        const std::string upper = RtiStringUtility::toupper(member.name.text);
        here.insert(upper);
        const auto found = _members.find(keyOf(index, upper));
        if (found == _members.end()) {
            _modules.add(RuleId::conflictingModules, member.name.place,
                         "two modules define " + describe(node) + ", and only this one has the " + kind + ' ' +
                             quoted(member.name),
                         node.name.place, "the other is");
            continue;
        }
        FomMember &known = node.members[found->second];
        const std::string what = "the " + kind + ' ' + quoted(member.name) + ofClass(node);
        mergeDelivery({known.delivery, known.name.place}, member.delivery, member.name.place, what, true);
        if (known.semantics.empty())
            known.semantics = member.semantics;
        if (known.dataType.empty())
            known.dataType = member.dataType;
        else if (!member.dataType.empty() && known.dataType != member.dataType)
            _modules.add(RuleId::conflictingModules, member.name.place,
                         what + " has the data type " + inQuotes(member.dataType) + " here and " +
                             inQuotes(known.dataType) + " in another module",
                         known.name.place, "that is");
    }
    for (const FomMember &known : node.members)
        if (here.count(RtiStringUtility::toupper(known.name.text)) == 0)
            _modules.add(RuleId::conflictingModules, draft.name.place,
                         "two modules define " + describe(node) + ", and this one lacks the " + kind + ' ' +
                             quoted(known.name),
                         known.name.place, "the other has it");
}

/// Adds how a module sends something to what is known; what both say must be the same. Dimensions are compared if
/// `isComplete`, or if both name some.
void FomTreeReader::mergeDelivery(Known known, const FomDelivery &more, const FomPlace &place, const std::string &what,
                                  bool isComplete) {
    const auto compare = [&](FomText FomDelivery::*word, const FomWords &words, const char *kind) {
        FomText &first = known.delivery.*word;
        const FomText &second = more.*word;
        if (!first.given())
            first = second;
        else if (second.given() && !first.text.empty() && !second.text.empty() && first.text != second.text)
            _modules.add(RuleId::conflictingModules, second.place,
                         what + " has the " + kind + ' ' + fomWord(words, second.text) + " here and " +
                             fomWord(words, first.text) + " in another place",
                         first.place, "that is");
    };
    compare(&FomDelivery::transportation, kFomTransportations, "transportation");
    compare(&FomDelivery::order, kFomOrders, "order");
    std::vector<std::size_t> &dimensions = known.delivery.dimensions;
    if (dimensions.empty() && !isComplete)
        dimensions = more.dimensions;
    else if (dimensions != more.dimensions && (isComplete || !more.dimensions.empty()))
        _modules.add(RuleId::conflictingModules, place, what + " has other dimensions here than in another place",
                     known.place, "that is");
}

void FomTreeReader::finish() {
    const bool ofObjects = _tree.kind.membersHaveProperties;
    addMom();
    if (ofObjects)
        addPrivilege();
    for (std::size_t i = 1; i < _classes.size(); ++i)
        checkDefinition(at(i));
    for (const FomClass &node : _classes)
        for (const FomMember &member : node.members)
            if (ofObjects && !(&node == _classes.data() && member.name.text == kPrivilegeInFed))
                checkDelivery(member.name, member.delivery,
                              std::string("the attribute ") + quoted(member.name) + ofClass(node));
    std::unordered_map<std::string, const FomMember *> inherited;
    dropRedeclared(0, inherited);
}

/// An interaction class is defined if it has a transportation and an order. An object class may have nothing of its own
/// but its name; if it has subclasses, though, it is most likely a scaffold, without whose definition the subclasses
/// would lack what they inherit.
void FomTreeReader::checkDefinition(const FomClass &node) {
    const bool ofObjects = _tree.kind.membersHaveProperties;
    const bool isScaffold = !node.isDefined && (ofObjects ? !node.isDescribed && !node.children.empty() : true);
    if (isScaffold && _model.isUnderstood) // else another module may define it
        _modules.add(
            RuleId::undefinedClass, node.name.place,
            "no module defines " + describe(node) +
                (ofObjects ? ": only its name and subclasses are here" : ": it has no transportation and no order"));
    else if (!isScaffold && !ofObjects)
        checkDelivery(node.name, node.delivery, describe(node));
}

void FomTreeReader::checkDelivery(const FomText &name, const FomDelivery &delivery, const std::string &what) {
    for (const auto &[word, text] :
         {std::pair(&delivery.transportation, "transportation"), std::pair(&delivery.order, "order")})
        if (!word->given())
            _modules.add(RuleId::undefinedClass, name.place, what + " has no " + text);
}

/// Every root of FED has this attribute, and no class below declares it again. A model may leave it out.
void FomTreeReader::addPrivilege() {
    if (_members.find(keyOf(0, kPrivilegeInFed)) != _members.end())
        return;
    const FomPlace &root = at(0).name.place;
    const FomPlace place = at(0).name.given() ? root : FomPlace{0, {0, 1}};
    at(0).members.insert(at(0).members.begin(), {{kPrivilegeInFed, place}, {}, "", ""});
}

/// A model may have a class with the name of the MOM of FED. It stays, and gets what the MOM requires.
void FomTreeReader::addMom() {
    const auto mom = _children.find(keyOf(0, kMomClass));
    if (mom == _children.end())
        return;
    const FomPlace place = at(mom->second).name.place;
    const FomDelivery usual{{"reliable", place}, {"receive", place}, {}};
    for (const auto &[className, isMissing, members] : momRequirements(_tree.kind)) {
        std::size_t index = 0;
        for (const std::string &name : split(className, '.')) {
            const auto known = _children.find(keyOf(index, name));
            index = known != _children.end() ? known->second : addClass({name, place}, index);
            if (index == FomClass::kNone)
                return;
        }
        if (!at(index).isDefined && !_tree.kind.membersHaveProperties)
            at(index).delivery = usual;
        at(index).isDefined = true;
        for (const std::string &name : members)
            if (!hasMember(index, name)) {
                FomMember member;
                member.name.text = momMemberName(name);
                member.delivery = usual;
                at(index).members.push_back(std::move(member));
            }
    }
}

/// Whether a class of the modules declares or inherits a member.
bool FomTreeReader::hasMember(std::size_t index, const std::string &name) const {
    for (; index != FomClass::kNone; index = _classes[index].parent)
        if (_members.find(keyOf(index, name)) != _members.end())
            return true;
    return false;
}

/// Removes the members that a class inherits from those that it declares: FED has no overriding. The walk goes down the
/// tree with all members of the classes around it; classes nest kMaxClassNesting levels at most.
void FomTreeReader::dropRedeclared(std::size_t index, std::unordered_map<std::string, const FomMember *> &inherited) {
    std::vector<FomMember> own;
    std::vector<std::string> names;
    for (FomMember &member : at(index).members) {
        std::string upper = RtiStringUtility::toupper(member.name.text);
        const auto known = inherited.find(upper);
        if (known != inherited.end()) {
            const std::string again = std::string("the ") + _tree.kind.memberName + ' ' + quoted(member.name) +
                                      ofClass(at(index)) + " is inherited already";
            if (const FomText &first = known->second->name; first.given())
                _modules.add(RuleId::redeclaredMember, member.name.place, again, first.place, "the first is",
                             ofClass(at(index)));
            else
                _modules.add(RuleId::redeclaredMember, member.name.place,
                             again + " from the Management Object Model of FED");
        } else {
            names.push_back(std::move(upper));
            own.push_back(std::move(member));
        }
    }
    at(index).members = std::move(own);
    for (std::size_t i = 0; i < names.size(); ++i)
        inherited.emplace(names[i], &at(index).members[i]);
    for (const std::size_t child : at(index).children)
        dropRedeclared(child, inherited);
    for (const std::string &name : names)
        inherited.erase(name);
}
