#pragma once

// What a plain model of the federation database holds: classes, spaces and their members, and how an image keeps them.

#include "fed/RtiFedClassNesting.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiStringUtility.hh"

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

/// Writes an image to a buffer, or reads it.
struct Image {
    RtiBuffer &buffer;
    const bool reads;

    template <class Value>
    void operator()(Value &number) {
        reads ? buffer.get(&number, 1) : buffer.put(number);
    }
    void operator()(std::string &text) {
        reads ? void(text = RtiStringUtility::getString(buffer)) : RtiStringUtility::putString(text, buffer);
    }
    template <class Items, class Each>
    void list(Items &items, Each each) {
        std::vector<typename Items::value_type> all(items.begin(), items.end());
        Number count = all.size();
        (*this)(count);
        all.resize(count);
        for (auto &item : all)
            each(item);
        items = Items(all.begin(), all.end());
    }
};

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
    /// Writes the records in the order of a map, or reads them.
    template <class Key>
    void image(Image io, const Kind &kind, const std::map<Key, Owner> &records) {
        std::vector<Owner> ordered;
        for (const auto &[key, record] : records)
            if (record)
                ordered.push_back(record);
        io.list(ordered, [&](Owner &record) {
            record = io.reads ? std::make_shared<Record>(kind) : record;
            record->image(io);
            if (io.reads)
                add(record);
        });
    }
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
    void image(Image io) {
        io(name);
        if (kind.isClass())
            subclasses.image(io, kind, subclasses.byHandle);
        if (kind.members)
            members.image(io, *kind.members, members.byIndex);
        if (kind.isClass())
            io.list(children, io);
        if (&kind == &kObject)
            io.list(descendants, io);
        if (kind.hasDelivery)
            io(transport), io(ordering), io(space);
        io(handle);
        if (kind.isClass())
            io(parentHandle);
        if (&kind == &kSpace)
            io(nextDimension);
    }
};

} // namespace plain
