#pragma once

// The records of the plain model of the federation database, see PlainDatabase.hh.

#include "fed/RtiFedClassNesting.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace plain {

using Number = unsigned long;
using Name = const std::string &;

inline std::string upper(Name name) {
    return RtiStringUtility::toupper(name);
}

/// An exception of the library.
struct Refusal {
    std::string name, reason;
};
/// Returns what was found, or refuses null or false.
template <class Found>
Found require(Found found, Name exception, Name file, int line, Name reason = "") {
    if (!found)
        throw Refusal{exception, "\"" + file + "\", line " + std::to_string(line) + ": " + reason};
    return found;
}

/// Writes an image to a buffer, or reads it.
struct Image {
    RtiBuffer &buffer;
    const bool reads;

    void operator()(Number &number) { reads ? buffer.get(&number, 1) : buffer.put(number); }
    void operator()(long &number) { reads ? buffer.get(&number, 1) : buffer.put(number); }
    void operator()(std::string &text) {
        reads ? void(text = RtiStringUtility::getString(buffer)) : RtiStringUtility::putString(text, buffer);
    }
    template <class Item, class Each>
    void list(std::vector<Item> &items, Each each) {
        Number count = items.size();
        (*this)(count);
        items.resize(count);
        for (Item &item : items)
            each(item);
    }
    void operator()(std::set<Number> &numbers) {
        std::vector<Number> items(numbers.begin(), numbers.end());
        list(items, *this);
        numbers = {items.begin(), items.end()};
    }
};

/// An attribute, a parameter or a dimension.
struct Member {
    std::string name;
    Number handle = 0, transport = 0, ordering = 0;
    long space = 0;
};

/// Of members with the same name or handle, the first is found.
struct Members : std::vector<Member> {
    Member *named(Name name) {
        for (Member &member : *this)
            if (upper(member.name) == upper(name))
                return &member;
        return nullptr;
    }
    Member *of(Number handle) {
        for (Member &member : *this)
            if (member.handle == handle)
                return &member;
        return nullptr;
    }
    void image(Image io, bool areAttributes) {
        io.list(*this, [&](Member &member) {
            io(member.name);
            if (areAttributes)
                io(member.transport), io(member.ordering), io(member.space);
            io(member.handle);
        });
    }
};

/// What differs between the two class trees.
struct Kind {
    bool ofObjects;
    const char *root, *noun, *title, *memberTitle, *file, *notDefined, *memberNotDefined;
    int exists, handle, name, memberClass, member, memberNameClass, memberName, duplicate, inherited;
};
inline const Kind kObjects = {true,
                              "ObjectRoot.",
                              "object",
                              "Object",
                              "Attribute",
                              "RtiFedObjectClass",
                              "ObjectClassNotDefined",
                              "AttributeNotDefined",
                              202,
                              1342,
                              1368,
                              1397,
                              1410,
                              1450,
                              1464,
                              474,
                              485};
inline const Kind kInteractions = {false,
                                   "InteractionRoot.",
                                   "interaction",
                                   "Interaction",
                                   "Parameter",
                                   "RtiFedInteractionClass",
                                   "InteractionClassNotDefined",
                                   "InteractionParameterNotDefined",
                                   567,
                                   1504,
                                   1533,
                                   1562,
                                   1579,
                                   1611,
                                   1628,
                                   413,
                                   423};

/// A node of a class tree. It owns the subclasses that were added to it directly, and knows others by their handles.
struct Class {
    const Kind &kind;
    std::string name = {};
    Number handle = 0, parentHandle = 0, transport = 0, ordering = 0; // the last two of an interaction class
    long space = 0;
    Class *parent = nullptr;
    Members members = {};
    std::map<Number, std::shared_ptr<Class>> subclasses = {}; // null for an empty entry
    std::vector<std::shared_ptr<Class>> others = {};          // further subclasses, whose handles were in use
    std::set<Number> children = {}, descendants = {};
    std::optional<std::multiset<Number>> available = {}, availableHandles = {}; // attributes, as first asked for

    /// The defaults are those of an interaction class.
    static std::shared_ptr<Class> make(const Kind &kind, Class *parent, const Member &defaults) {
        unsigned level = 1;
        for (const Class *above = parent; above; above = above->parent)
            ++level;
        require(level <= kMaxClassNesting, "RTIinternalError", "RtiFedClassNode", 60,
                "the class " + defaults.name + " is nested deeper than 256 levels");
        return std::shared_ptr<Class>(new Class{kind, defaults.name, defaults.handle, parent ? parent->handle : 0,
                                                defaults.transport, defaults.ordering, defaults.space, parent});
    }
    Class *addSubclass(const Member &defaults) {
        const auto made = make(kind, this, defaults);
        if (!subclasses.emplace(defaults.handle, made).second)
            others.push_back(made);
        return made.get();
    }
    Member *addMember(const Member &member) {
        const std::string duplicate = " Duplicate attribute " + member.name + " in " + kind.noun + " class ";
        require(!members.named(member.name), "ErrorReadingFED", kind.file, kind.duplicate, duplicate + name);
        require(!inherits(member.name), "ErrorReadingFED", kind.file, kind.inherited,
                duplicate + "hierarchy at class " + name);
        members.push_back(member);
        return &members.back();
    }
    void announce(Number subclass) {
        children.insert(subclass);
        if (kind.ofObjects)
            addDescendant(subclass);
    }
    void addDescendant(Number descendant) {
        for (Class *node = this; node; node = node->parent)
            node->descendants.insert(descendant);
    }
    bool inherits(Name member) const { return parent && (parent->members.named(member) || parent->inherits(member)); }
    Number attributeHandle(Name attribute) {
        const Member *found = members.named(attribute);
        return found ? found->handle : 0;
    }
    Number attributeHandleRecursive(Name attribute) {
        return members.named(attribute) || !parent ? attributeHandle(attribute)
                                                   : parent->attributeHandleRecursive(attribute);
    }
    Member *findRecurse(Number member) {
        return members.of(member) || !parent ? members.of(member) : parent->findRecurse(member);
    }
    Member *memberAt(Number index, int line) {
        return require(index < members.size() ? &members[index] : nullptr, "RTIinternalError", kind.file, line);
    }
    Class *subclassAt(Number index) {
        require(index < subclasses.size(), "RTIinternalError", kind.file, 283);
        return subclasses[index].get();
    }
    template <class Visit>
    void forEachOwned(Visit visit) {
        for (const auto &[number, node] : subclasses)
            if (node) {
                visit(*node);
                node->forEachOwned(visit);
            }
    }
    void linkOwned() {
        for (const auto &[number, node] : subclasses)
            if (node) {
                node->parent = this;
                node->linkOwned();
            }
    }
    void image(Image io) {
        std::vector<std::shared_ptr<Class>> nodes;
        for (const auto &[number, node] : subclasses)
            if (node)
                nodes.push_back(node);
        io(name);
        io.list(nodes, [&](std::shared_ptr<Class> &node) {
            node = io.reads ? std::shared_ptr<Class>(new Class{kind}) : node;
            node->image(io);
            subclasses.emplace(node->handle, node);
        });
        members.image(io, kind.ofObjects);
        io(children);
        if (kind.ofObjects)
            io(descendants);
        else
            io(transport), io(ordering), io(space);
        io(handle);
        io(parentHandle);
    }
};

struct Space {
    std::string name;
    long handle = 0;
    Members dimensions = {};
    Number next = 0;

    bool exists(Name dimension) { return dimension == upper(dimension) && dimensions.named(dimension); }
    Member *addDimension(Name dimension) {
        require(!exists(dimension), "RTIinternalError", "RtiFedSpace", 338);
        dimensions.push_back({dimension, next++});
        return &dimensions.back();
    }
    void image(Image io) {
        io(name);
        dimensions.image(io, false);
        io(handle);
        io(next);
    }
};

} // namespace plain
