#include "tool/fom/import/FomTreeReader.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tool/console/Text.hh"
#include "tool/fom/import/FomElements.hh"

#include <algorithm>

namespace {

/// A name that FED text can have in a class, so that all names of a model are of use even if one is not.
std::string withoutDots(std::string name) {
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

/// More than the bytes of the full names of RTIprivate and the Management Object Model, in both trees.
constexpr std::size_t kFullNamesOfMom = 16384; // equivalent: a reserve

} // namespace

FomTreeReader::FomTreeReader(FomModules &modules, FomModel &model, const FomTables &tables, const FomTree &tree)
    : _modules(modules), _model(model), _tables(tables), _tree(tree), _classes(model.classes(tree)) {
    FomClass &root = _classes.emplace_back();
    root.name.text = root.fullName = tree.kind.root;
}

void FomTreeReader::read(std::size_t module, pugi::xml_node section) {
    _module = module;
    checkChildren(_modules, module, section, {{}, {_tree.classElement}});
    forEachChild(section, _tree.classElement, [&](pugi::xml_node child) { readClass(child, FomClass::kNone, 1); });
}

FomPlace FomTreeReader::placeOf(pugi::xml_node element) const {
    return {_module, _modules.all()[_module].text->nameOf(element)};
}

FomPlace FomTreeReader::contentPlace(pugi::xml_node element) const {
    return {_module, _modules.all()[_module].text->contentSpan(element)};
}

/// Returns the name that an element has, in FED; it is not given if it is none that FED can hold, which is reported.
FomText FomTreeReader::nameIn(pugi::xml_node element, const char *what) {
    const pugi::xml_node child = childOf(element, "name");
    const std::string name = _modules.all()[_module].text->contentOf(child);
    if (name.empty()) {
        const FomPlace nameless = child ? contentPlace(child) : placeOf(element);
        _modules.add(RuleId::undefinedClass, nameless, std::string("the ") + what + " has no name");
        _modules.addLoss(nameless);
        return {};
    }
    const FomPlace place = contentPlace(child);
    const std::optional<std::string> fed = usableName(_modules, name, place);
    return fed ? FomText{*fed, place} : FomText();
}

void FomTreeReader::readClass(pugi::xml_node element, std::size_t parent, std::size_t depth) {
    FomText name = nameIn(element, _tree.kind.className);
    if (depth > kMaxClassNesting) {
        _modules.add(RuleId::unusableName, placeOf(element),
                     "classes are nested in more than " + std::to_string(kMaxClassNesting) + " levels");
        return;
    }
    if (!name.given()) // its contents belong to the class around it
        return readContents(element, {"", {_module, {placeOf(element).span.begin, 0}}},
                            parent == FomClass::kNone ? 0 : parent, depth);
    if (name.text.find('.') != std::string::npos)
        _modules.add(RuleId::unusableName, name.place,
                     "the name of the class " + inQuotes(name.text) +
                         " has a dot, which in FED separates a class from its superclass");
    name.text = withoutDots(std::move(name.text));
    const std::size_t index = parent == FomClass::kNone ? rootFor(name) : classFor(name, parent);
    if (index == FomClass::kNone && RtiFedName::equal(name.text, kPrivateClass) &&
        (childOf(element, _tree.memberElement) || childOf(element, _tree.classElement)))
        ++_model.losses["what is in the class RTIprivate"];
    if (index != FomClass::kNone)
        readContents(element, name, index, depth);
}

/// Returns the root if this is its name. Otherwise the class is taken for one of its subclasses.
std::size_t FomTreeReader::rootFor(const FomText &name) {
    for (const char *root : {_tree.root, _tree.kind.root})
        if (RtiFedName::equal(name.text, root)) {
            if (!at(0).name.given())
                at(0).name.place = name.place;
            return 0;
        }
    _modules.add(RuleId::misspeltRoot, name.place,
                 std::string("expected the class \"") + _tree.root + "\" in " + _tree.section + ", found " +
                     inQuotes(name.text) + ": all other classes are below it");
    return classFor(name, 0);
}

/// Returns a class by its name, which is added unless it is known; kNone for one that is left out.
std::size_t FomTreeReader::classFor(const FomText &name, std::size_t parent) {
    if (isLeftOut(name, parent))
        return FomClass::kNone;
    const auto known = _children.find(keyOf(parent, name.text));
    if (known == _children.end())
        return addClass(name, parent);
    const FomClass &node = at(known->second);
    if (node.name.text != name.text)
        _modules.add(RuleId::repeatedClass, name.place,
                     "the class " + inQuotes(name.text) + " differs from " + inQuotes(node.name.text) +
                         " in letter case only, and names in FED match in any letter case",
                     node.name.place, "the other is");
    return known->second;
}

/// A text with too many long names is refused as FED text is, so that paths cannot exhaust the memory. The limit holds
/// for both trees together, with the Management Object Model that the FED gets.
std::size_t FomTreeReader::addClass(const FomText &name, std::size_t parent) {
    const std::size_t size = at(parent).fullName.size() + 1 + name.text.size();
    _model.fullNames += size;
    if (size > kMaxNameLength || _model.fullNames > kMaxFullNames - kFullNamesOfMom) {
        _modules.add(RuleId::unusableName, name.place,
                     size > kMaxNameLength ? "expected a full name of at most " + std::to_string(kMaxNameLength) +
                                                 " bytes, found " + std::to_string(size)
                                           : "the full names of all classes together have more than " +
                                                 std::to_string(kMaxFullNames - kFullNamesOfMom) + " bytes");
        return FomClass::kNone;
    }
    const std::size_t index = _classes.size();
    _classes.push_back({name, at(parent).fullName + '.' + name.text, parent});
    at(parent).children.push_back(index);
    _children.emplace(keyOf(parent, name.text), index);
    return index;
}

/// Whether this is a class of an RTI: that of the other standard cannot be translated, and every FED has its own.
bool FomTreeReader::isLeftOut(const FomText &name, std::size_t parent) {
    if (parent != 0)
        return false;
    if (name.text == kStandardMomClass)
        ++_model.losses["the Management Object Model of the standard"];
    return name.text == kStandardMomClass || RtiFedName::equal(name.text, kPrivateClass);
}

/// Reads what is in the element of a class of this name, which is not given if the element has none.
void FomTreeReader::readContents(pugi::xml_node element, const FomText &name, std::size_t index, std::size_t depth) {
    const bool ofObjects = &_tree == &kFomObjects;
    checkChildren(
        _modules, _module, element,
        {ofObjects ? std::vector<std::string>{"name", "sharing", "semantics"}
                   : std::vector<std::string>{"name", "sharing", "dimensions", "transportation", "order", "semantics"},
         {_tree.memberElement, _tree.classElement}});
    const bool isRepeated = name.given() && at(index).lastModule == _module;
    FomClass draft = draftOf(element, index);
    draft.name = name;
    merge(index, std::move(draft), isRepeated);
    if (name.given() && !isRepeated) {
        at(index).lastModule = _module;
        at(index).placeInLastModule = name.place;
    }
    forEachChild(element, _tree.classElement, [&](pugi::xml_node child) { readClass(child, index, depth + 1); });
}

/// Returns what one module says about a class.
FomClass FomTreeReader::draftOf(pugi::xml_node element, std::size_t index) {
    const XmlText &text = *_modules.all()[_module].text;
    FomClass draft;
    if (!_tree.kind.membersHaveProperties)
        draft.isDefined = readDelivery(element, draft.delivery);
    draft.semantics = knownContent(text, childOf(element, "semantics"));
    draft.isDescribed = childOf(element, "semantics") || childOf(element, "sharing");
    if (!knownContent(text, childOf(element, "sharing")).empty())
        ++_model.losses["the sharing of classes and attributes"];
    forEachChild(element, _tree.memberElement, [&](pugi::xml_node child) {
        draft.isDefined = true;
        FomMember member = readMember(child, index);
        if (member.name.given())
            draft.members.push_back(std::move(member));
    });
    return draft;
}

FomMember FomTreeReader::readMember(pugi::xml_node element, std::size_t index) {
    const XmlText &text = *_modules.all()[_module].text;
    const bool ofObjects = _tree.kind.membersHaveProperties;
    checkChildren(_modules, _module, element,
                  {ofObjects
                       ? std::vector<std::string>{"name", "dataType", "updateType", "updateCondition", "ownership",
                                                  "sharing", "dimensions", "transportation", "order", "semantics"}
                       : std::vector<std::string>{"name", "dataType", "semantics"},
                   {}});
    FomMember member;
    member.name = nameIn(element, _tree.kind.memberName);
    if (ofObjects) {
        const bool isPrivilege = index == 0 && member.name.text == kPrivilegeInFom;
        if (isPrivilege)
            member.name.text = kPrivilegeInFed;
        readDelivery(element, member.delivery);
        member.semantics = knownContent(text, childOf(element, "semantics"));
        if (isPrivilege) // the standard gives it the rest, which says nothing about this model
            return member;
        for (const auto &[child, loss] : {std::pair("sharing", "the sharing of classes and attributes"),
                                          std::pair("updateType", "the update types of attributes"),
                                          std::pair("ownership", "the ownership of attributes")})
            if (!knownContent(text, childOf(element, child)).empty())
                ++_model.losses[loss];
    }
    member.dataType = knownContent(text, childOf(element, "dataType"));
    member.semantics = knownContent(text, childOf(element, "semantics"));
    return member;
}

/// Reads how an attribute or interaction class is sent. Returns whether the element says anything about it.
bool FomTreeReader::readDelivery(pugi::xml_node element, FomDelivery &delivery) {
    delivery.transportation = readWord(childOf(element, "transportation"), RuleId::unknownTransportation);
    delivery.order = readWord(childOf(element, "order"), RuleId::unknownOrdering);
    readDimensions(childOf(element, "dimensions"), delivery);
    return delivery.transportation.given() || delivery.order.given() || !delivery.dimensions.empty();
}

/// Returns a transportation or order in FED. The text is empty if the word is unknown, which is reported.
FomText FomTreeReader::readWord(pugi::xml_node element, RuleId rule) {
    if (!element)
        return {};
    const bool isOrder = rule == RuleId::unknownOrdering;
    const std::string word = _modules.all()[_module].text->contentOf(element);
    FomText fed{"", contentPlace(element)};
    for (const FomWord &known : isOrder ? kFomOrders : kFomTransportations)
        if (RtiFedName::equal(word, known.fom))
            fed.text = known.fed;
    const auto own = _tables.transportations.find(word);
    if (fed.text.empty() && !isOrder && own != _tables.transportations.end())
        fed.text = own->second.text;
    if (fed.text.empty() && (isOrder || _model.isUnderstood)) // else another module may declare it
        _modules.add(
            rule, fed.place,
            std::string("expected ") +
                (isOrder ? "Receive or TimeStamp" : "HLAreliable, HLAbestEffort or a declared transportation") +
                ", found " + inQuotes(word));
    return fed;
}

void FomTreeReader::readDimensions(pugi::xml_node element, FomDelivery &delivery) {
    const XmlText &text = *_modules.all()[_module].text;
    checkChildren(_modules, _module, element, {{}, {"dimension"}});
    if (const std::string content = text.contentOf(element); !content.empty() && content != "NA")
        _modules.add(RuleId::unknownElement, contentPlace(element),
                     "expected elements dimension in dimensions, found " + inQuotes(content));
    forEachChild(element, "dimension", [&](pugi::xml_node child) {
        const std::string name = text.contentOf(child);
        const auto known = _tables.dimensions.find(name);
        if (known != _tables.dimensions.end())
            delivery.dimensions.push_back(known->second);
        else if (!name.empty() && name != "NA" && _model.isUnderstood) // "NA" says that there are none
            _modules.add(RuleId::unknownSpace, contentPlace(child),
                         "no module declares the dimension " + inQuotes(name));
    });
    std::sort(delivery.dimensions.begin(), delivery.dimensions.end());
    delivery.dimensions.erase(std::unique(delivery.dimensions.begin(), delivery.dimensions.end()),
                              delivery.dimensions.end());
}
