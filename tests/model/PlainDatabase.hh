#pragma once

// A plain model of the federation database, to compare the library with: the same answers and refusals, from maps and
// sets. First what it holds: classes, spaces and their members; then the database.

#include "benchmarks/Federation.hh"
#include "fed/RtiFedClassNesting.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace plain {

using Number = unsigned long;
using Name = const std::string &;

inline std::string upper(Name name) {
    return RtiStringUtility::toupper(name);
}

/// Returns what was found, or throws an exception of the library for null or false.
template <class Found>
Found require(Found found, Name exception, Name file, int line, Name reason = "") {
    if (!found)
        throw std::runtime_error(exception + ": \"" + file + "\", line " + std::to_string(line) + ": " + reason);
    return found;
}

/// What the records of a kind have, and what they are called.
struct Kind {
    std::string word, title;
    bool hasDelivery; // transportation, ordering and space
    const Kind *members = nullptr;
    std::string root = {}, noun = {}; // of classes
    bool isClass() const { return !root.empty(); }
    /// Returns the line of an error, which depends on the kind.
    int line(int ofObjects, int ofInteractions, int ofSpaces = 0) const {
        return noun == "object" ? ofObjects : noun == "interaction" ? ofInteractions : ofSpaces;
    }
};
inline const Kind kAttribute = {"Attribute", "Attribute", true};
inline const Kind kParameter = {"InteractionParameter", "Parameter", false};
inline const Kind kDimension = {"Dimension", "Dimension", false};
inline const Kind kObject = {"ObjectClass", "Object Class", false, &kAttribute, "ObjectRoot.", "object"};
inline const Kind kInteraction = {"InteractionClass", "Interaction Class", true,
                                  &kParameter,        "InteractionRoot.",  "interaction"};
inline const Kind kSpace = {"Space", "Routing Space", false, &kDimension};

/// Records of one kind. Of those with the same name or handle, the first is found.
template <class Record>
struct Table {
    using Owner = std::shared_ptr<Record>;
    std::map<Number, Owner> byIndex = {};     // in the order of addition
    std::map<Number, Owner> byHandle = {};    // null for an empty entry
    std::map<std::string, Owner> byName = {}; // in upper case
    Record *add(const Owner &record) {
        byIndex.emplace(byIndex.size(), record);
        byHandle.emplace(record->handle, record);
        byName.emplace(upper(record->name), record);
        return record.get();
    }
    Record *find(Number handle) const { return byHandle.count(handle) ? byHandle.at(handle).get() : nullptr; }
    Record *find(Name name) const { return byName.count(upper(name)) ? byName.at(upper(name)).get() : nullptr; }
};

/// What the caller of an operation chooses of a record.
struct Fields {
    std::string name = {};
    Number handle = 0, transport = 0, ordering = 0;
    long space = 0;
};

/// A class, a space, an attribute, a parameter or a dimension.
struct Record : Fields {
    const Kind &kind;
    Record *parent;
    Number parentHandle, nextDimension = 0;
    Table<Record> members = {}, subclasses = {};      // the subclasses that were added to it directly
    std::set<Number> children = {}, descendants = {}; // subclasses by their handles; the latter of an object class
    std::optional<std::multiset<Number>> available = {};
    std::optional<std::set<Number>> availableHandles = {};

    explicit Record(const Kind &k, const Fields &fields = {}, Record *above = nullptr)
        : Fields(fields), kind(k), parent(above), parentHandle(above ? above->handle : 0) {
        require(level() <= kMaxClassNesting, "RTIinternalError", "RtiFedClassNode", 60,
                "the class " + name + " is nested deeper than 256 levels");
    }
    unsigned level() const { return parent ? parent->level() + 1 : 1; }
    std::string file() const { return "RtiFed" + kind.word; }

    Record *addSubclass(const Fields &fields) { return subclasses.add(std::make_shared<Record>(kind, fields, this)); }
    /// A dimension exists only by the upper case of its name: "X" and then "x" can be added, but not "X" again.
    bool dimensionExists(Name dimension) const { return dimension == upper(dimension) && members.find(dimension); }
    Record *addMember(Fields fields) {
        const std::string duplicate = " Duplicate attribute " + fields.name + " in " + kind.noun + " class ";
        if (&kind == &kSpace) {
            require(!dimensionExists(fields.name), "RTIinternalError", file(), 338);
            fields.handle = nextDimension++;
        } else {
            require(!members.find(fields.name), "ErrorReadingFED", file(), kind.line(474, 413), duplicate + name);
            require(!inherits(fields.name), "ErrorReadingFED", file(), kind.line(485, 423),
                    duplicate + "hierarchy at class " + name);
        }
        return members.add(std::make_shared<Record>(*kind.members, fields));
    }
    void addDescendant(Number descendant) {
        for (Record *node = this; node; node = node->parent)
            node->descendants.insert(descendant);
    }
    /// Finds a member of this class or else of the next one above, by its name or handle.
    template <class Key>
    Record *findUpward(const Key &key, bool (*isWanted)(const Record &) = isAny) const {
        for (const Record *node = this; node; node = node->parent)
            if (Record *found = node->members.find(key); found && isWanted(*found))
                return found;
        return nullptr;
    }
    static bool isAny(const Record &) { return true; }
    bool inherits(Name member) const { return parent && parent->findUpward(member); }
    Record *memberAt(Number index) const {
        Record *found = index < members.byIndex.size() ? members.byIndex.at(index).get() : nullptr;
        return require(found, "RTIinternalError", file(), kind.line(299, 333, 389));
    }
    /// The index is a handle, and a miss leaves an empty entry.
    Record *subclassAt(Number index) {
        require(index < subclasses.byHandle.size(), "RTIinternalError", file(), 283);
        return subclasses.byHandle[index].get();
    }
    /// Calls `visit` for each owned subclass at any depth, after the class that owns it.
    template <class Visit>
    void forEachOwned(Visit visit) {
        for (const auto &[number, owned] : subclasses.byHandle)
            if (owned) {
                visit(*this, *owned);
                owned->forEachOwned(visit);
            }
    }
};

inline const std::string kFile = "RtiFedDatabase", kMissing = " not found in FED file.";

/// All classes of a kind, or all spaces.
struct Tree : Table<Record> {
    const Kind &kind;
    Number last = 0, lastMember = 0;         // the handles that were issued last
    std::map<Number, Number> declaring = {}; // classes by their members
    Record *current = nullptr;               // what a parser declared last
    explicit Tree(const Kind &k) : kind(k) {}

    Record *add(Fields fields) {
        const std::size_t dot = kind.isClass() ? fields.name.rfind('.') : std::string::npos;
        require(!kind.isClass() || !findNamed(fields.name), "ErrorReadingFED", kFile, kind.line(202, 567),
                " The " + kind.noun + " class " + fields.name + " already exists.");
        Record *parent = dot == std::string::npos ? nullptr : find(handleOf(fields.name.substr(0, dot)));
        fields.handle = ++last;
        Record *added = Table::add(std::make_shared<Record>(kind, fields, parent));
        if (parent) {
            parent->children.insert(added->handle);
            parent->addDescendant(added->handle);
        }
        return added;
    }
    Record *addMember(Record *owner, Fields fields) {
        if (kind.members == &kParameter)
            require(owner, "RTIinternalError", "RtiFedDatabaseCodegen", 74,
                    "parameter " + fields.name + " before the first interaction class");
        require(owner, "RTIinternalError", kFile, kind.line(523, 0, 666));
        fields.handle = ++lastMember;
        Record *added = owner->addMember(fields);
        declaring[added->handle] = owner->handle;
        return added;
    }
    /// With or without the root in front of the name.
    Record *findNamed(Name name) const { return find(name) ? find(name) : find(kind.root + name); }
    Record *defined(Number handle, int line) const {
        return require(find(handle), kind.word + "NotDefined", kFile, line);
    }
    Number handleOf(Name name) const {
        const std::string reason = kind.title + " Name: " + name + kMissing;
        return require(findNamed(name), "NameNotFound", kFile, kind.line(1342, 1504, 1651), reason)->handle;
    }
    std::string nameOf(Number handle) const { return defined(handle, kind.line(1368, 1533, 1679))->name; }
    std::string memberFile() const { return kind.isClass() ? kFile : "RtiFedSpace"; }
    /// Passes over an attribute whose handle is 0, and searches above it.
    Number memberHandle(Name name, Number handle) const {
        const auto isWanted = [](const Record &member) { return member.handle != 0 || &member.kind != &kAttribute; };
        const Record *found = defined(handle, kind.line(1397, 1562, 1706))->findUpward(name, isWanted);
        const std::string reason = kind.members->title + " Name: " + name + " of " + kind.title + ": ";
        return require(found, "NameNotFound", memberFile(), kind.line(1410, 1579, 278),
                       kind.isClass() ? reason + std::to_string(handle) + kMissing : "")
            ->handle;
    }
    /// Passes over an attribute without a name, and searches above it.
    std::string memberName(Number member, Number handle) const {
        const auto isWanted = [](const Record &each) { return !each.name.empty() || &each.kind != &kAttribute; };
        const Record *found = defined(handle, kind.line(1450, 1611, 1734))->findUpward(member, isWanted);
        return require(found, kind.members->word + "NotDefined", memberFile(), kind.line(1464, 1628, 301))->name;
    }
    /// A class and its descendants, found by the handles of the children, or none for null.
    std::map<Number, Record *> derived(Record *node) const {
        std::map<Number, Record *> all;
        if (node) {
            all[node->handle] = node;
            for (const Number child : node->children)
                all.merge(derived(find(child)));
        }
        return all;
    }
    /// Without the class itself, unless it has no children.
    std::map<Number, Record *> childlessDerived(Record *node) const {
        std::map<Number, Record *> all = derived(node);
        if (node && !node->children.empty())
            all.erase(node->handle);
        return all;
    }
    /// Gives a space to the classes and members that have none. That of object classes and parameters is never read.
    void setSpace(Record *from, long space) const {
        for (const auto &[handle, node] : derived(from)) {
            node->space = node->space == 0 ? space : node->space;
            for (const auto &[index, member] : node->members.byIndex)
                member->space = member->space == 0 ? space : member->space;
        }
    }
    /// The handles of the members of a class and its superclasses, which are found by their handles.
    template <class Handles>
    Handles available(const Record *node) const {
        Handles handles;
        for (; node; node = find(node->parentHandle))
            for (const auto &[index, member] : node->members.byIndex)
                handles.insert(member->handle);
        return handles;
    }
    /// The same, but made when it is first asked for, and kept.
    template <class Handles>
    Handles available(Record *node, std::optional<Handles> Record::*kept) const {
        require(node, "ObjectClassNotDefined", "RtiFedDatabaseDerivation", 74, "no such object class");
        if (!(node->*kept))
            node->*kept = available<Handles>(node);
        return *(node->*kept);
    }
    bool areAvailable(Number handle, const std::set<Number> &asked) const {
        const std::set<Number> handles = available(find(handle), &Record::availableHandles);
        return std::includes(handles.begin(), handles.end(), asked.begin(), asked.end());
    }
    std::set<Number> memberHandles() const {
        std::set<Number> handles;
        for (const auto &[index, node] : byIndex)
            handles.merge(available<std::set<Number>>(node.get()));
        return handles;
    }
};

struct Database {
    std::string name = {}, version = {}, fileName = "none.fed";
    Tree objects{kObject}, interactions{kInteraction}, spaces{kSpace};

    void setMomDefaultSpace() {
        const Number space = spaces.handleOf("HLAMomDefaultSpace");
        for (Tree *tree : {&objects, &interactions})
            tree->setSpace(tree->find(tree->handleOf(tree->kind.root + "Manager")), static_cast<long>(space));
    }
    // Declarations as a parser makes them: members belong to what was declared last.
    void declare(Tree &tree, Name declared, const Federation::Delivery &words = {}) {
        tree.current = tree.add(described(tree.kind, declared, words));
    }
    void declareMember(Tree &tree, Name member, const Federation::Delivery &words = {}) {
        tree.addMember(tree.current, described(*tree.kind.members, member, words));
    }
    Fields described(const Kind &kind, Name declared, const Federation::Delivery &words) const {
        if (!kind.hasDelivery)
            return {declared};
        const Number space = words.space.empty() ? 0 : spaces.handleOf(words.space);
        const Number transport = transportation(words.transportation);
        return {declared, 0, transport, ordering(words.ordering), static_cast<long>(space)};
    }
    static Number transportation(Name word) {
        return oneOf({"BEST_EFFORT", "RTI_BEST_EFFORT", "RELIABLE", "RTI_RELIABLE"}, word, "Transportation", 1833);
    }
    static Number ordering(Name word) {
        return oneOf({"RECEIVE", "RTI_RECEIVE_ORDERING", "TIMESTAMP", "RTI_TIME_STAMP_ORDERING"}, word, "Ordering",
                     1899);
    }
    /// The handle of the first two words is 1, that of the others 2.
    static Number oneOf(const std::vector<std::string> &words, Name word, Name title, int line) {
        const auto found = std::find(words.begin(), words.end(), upper(word));
        require(found != words.end(), "NameNotFound", kFile, line, title + " Name: " + word + kMissing);
        return found - words.begin() < 2 ? 1 : 2;
    }
};

} // namespace plain
