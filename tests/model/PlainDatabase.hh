#pragma once

// A plain model of the federation database, to compare the library with: the same answers, refusals and images, from
// vectors searched from the front, sets and maps.

#include "benchmarks/Federation.hh"
#include "tests/model/PlainClass.hh"

#include <algorithm>

namespace plain {

/// Classes of one kind, or spaces. Of those with the same name, the first is found by it.
template <class Node, class Handle>
struct Tree {
    std::map<Handle, std::shared_ptr<Node>> nodes = {};
    std::map<std::string, std::shared_ptr<Node>> names = {}; // in upper case
    Handle last = 0;                                         // the handle that was issued last

    Node *insert(const std::shared_ptr<Node> &node) {
        nodes[node->handle] = node;
        names.emplace(upper(node->name), node);
        return node.get();
    }
    Node *of(Handle handle) const {
        const auto found = nodes.find(handle);
        return found == nodes.end() ? nullptr : found->second.get();
    }
    Node *named(Name name) const {
        const auto found = names.find(upper(name));
        return found == names.end() ? nullptr : found->second.get();
    }
    template <class Make>
    void image(Image io, Make make) {
        std::vector<std::shared_ptr<Node>> all;
        for (const auto &[name, node] : names)
            all.push_back(node);
        io.list(all, [&](std::shared_ptr<Node> &node) {
            node = io.reads ? std::shared_ptr<Node>(make()) : node;
            node->image(io);
            insert(node);
        });
    }
};

struct Classes : Tree<Class, Number> {
    const Kind &kind;

    explicit Classes(const Kind &k) : kind(k) {}

    /// With or without the root in front of the name.
    Class *find(Name name) const { return named(name) ? named(name) : named(kind.root + name); }
    Class *add(Member defaults) {
        Name name = defaults.name;
        const bool exists = find(name) != nullptr;
        require(!exists, "ErrorReadingFED", kFile, kind.exists,
                std::string(" The ") + kind.noun + " class " + name + " already exists.");
        const std::size_t dot = name.rfind('.');
        Class *parent = dot == std::string::npos ? nullptr : of(handle(name.substr(0, dot)));
        defaults.handle = ++last;
        Class *added = insert(Class::make(kind, parent, defaults));
        if (parent)
            parent->announce(added->handle);
        return added;
    }
    Class *defined(Number handle, int line) const { return require(of(handle), kind.notDefined, kFile, line); }
    Number handle(Name name) const {
        return require(find(name), "NameNotFound", kFile, kind.handle,
                       std::string(kind.title) + " Class Name: " + name + kMissing)
            ->handle;
    }
    std::string name(Number handle) const { return defined(handle, kind.name)->name; }
    /// Object classes find their superclass by its record, interaction classes by its handle.
    Class *above(const Class &node) const { return kind.ofObjects ? node.parent : of(node.parentHandle); }
    Number member(Name name, Number handle) const {
        for (Class *node = defined(handle, kind.memberClass); node; node = above(*node))
            if (const Member *found = node->members.named(name); found && (found->handle != 0 || !kind.ofObjects))
                return found->handle;
        return require(Number(0), "NameNotFound", kFile, kind.member,
                       std::string(kind.memberTitle) + " Name: " + name + " of " + kind.title +
                           " Class: " + std::to_string(handle) + kMissing);
    }
    std::string memberName(Number member, Number handle) const {
        for (Class *node = defined(handle, kind.memberNameClass); node; node = above(*node))
            if (const Member *found = node->members.of(member); found && !(kind.ofObjects && found->name.empty()))
                return found->name;
        throw Refusal{kind.memberNotDefined,
                      std::string("\"") + kFile + "\", line " + std::to_string(kind.memberName) + ": "};
    }
    /// The class and its descendants, or nothing if it is unknown.
    std::set<Number> derived(Number handle) const {
        if (!of(handle))
            return {};
        std::set<Number> all{handle};
        for (const Number child : of(handle)->children)
            all.merge(derived(child));
        return all;
    }
    std::set<Number> childlessDerived(Number handle) const {
        std::set<Number> all = derived(handle);
        if (of(handle) && !of(handle)->children.empty())
            all.erase(handle);
        return all;
    }
    /// The handles of the members of a class and its superclasses, which are found by their handles.
    std::multiset<Number> available(const Class *node) const {
        std::multiset<Number> all;
        for (; node; node = of(node->parentHandle))
            for (const Member &member : node->members)
                all.insert(member.handle);
        return all;
    }
    std::set<Number> availableHandles(const Class *node) const {
        const std::multiset<Number> all = available(node);
        return {all.begin(), all.end()};
    }
    void image(Image io) {
        Tree::image(io, [this] { return new Class{kind}; });
    }
    void linkParents() {
        for (const auto &[handle, node] : nodes) {
            node->parent = of(node->parentHandle);
            node->linkOwned();
        }
    }

    static constexpr const char *kFile = "RtiFedDatabase", *kMissing = " not found in FED file.";
};

struct Database {
    std::string name = {}, version = {}, fileName = "none.fed";
    Classes objects{kObjects}, interactions{kInteractions};
    Tree<Space, long> spaces = {};
    std::map<Number, Number> declaring = {}; // classes by attribute
    Number lastAttribute = 0, lastParameter = 0;

    void addAttribute(Class *node, Member attribute) {
        require(node, "RTIinternalError", kFile, 523);
        attribute.handle = ++lastAttribute;
        node->addMember(attribute);
        declaring[attribute.handle] = node->handle;
    }
    Space *addSpace(Name space) { return spaces.insert(std::shared_ptr<Space>(new Space{space, ++spaces.last})); }
    void addDimension(Space *space, Name dimension) {
        require(space, "RTIinternalError", kFile, 666)->addDimension(dimension);
    }
    void setSpaces(Classes &classes, Class &node, long space) { // of those that have none, down the tree
        if (node.space == 0 && !node.kind.ofObjects)
            node.space = space;
        for (Member &member : node.members)
            if (member.space == 0)
                member.space = space;
        for (const Number child : node.children)
            if (classes.of(child))
                setSpaces(classes, *classes.of(child), space);
    }
    void setMomDefaultSpace() {
        const long space = spaceHandle("HLAMomDefaultSpace");
        setSpaces(objects, *objects.of(objects.handle("ObjectRoot.Manager")), space);
        setSpaces(interactions, *interactions.of(interactions.handle("InteractionRoot.Manager")), space);
    }

    long spaceHandle(Name space) const {
        return require(spaces.named(space), "NameNotFound", kFile, 1651,
                       "Routing Space Name: " + space + Classes::kMissing)
            ->handle;
    }
    Space *space(long handle, int line) const { return require(spaces.of(handle), "SpaceNotDefined", kFile, line); }
    Number dimensionHandle(Name dimension, long handle) const {
        return require(space(handle, 1706)->dimensions.named(dimension), "NameNotFound", "RtiFedSpace", 278)->handle;
    }
    std::string dimensionName(Number dimension, long handle) const {
        return require(space(handle, 1734)->dimensions.of(dimension), "DimensionNotDefined", "RtiFedSpace", 301)->name;
    }
    long attributeSpace(Number attribute, Number handle) const {
        return require(objects.defined(handle, 1767)->findRecurse(attribute), "AttributeNotDefined", kFile, 1772)
            ->space;
    }
    long interactionSpace(Number handle) const { return interactions.defined(handle, 1800)->space; }
    static Number oneOf(Name word, const std::vector<std::string> &words, int line, Name title) {
        const auto found = std::find(words.begin(), words.end(), upper(word));
        require(found != words.end(), "NameNotFound", kFile, line, title + " Name: " + word + Classes::kMissing);
        return found - words.begin() < 2 ? 1 : 2;
    }
    static Number transportation(Name word) {
        return oneOf(word, {"BEST_EFFORT", "RTI_BEST_EFFORT", "RELIABLE", "RTI_RELIABLE"}, 1833, "Transportation");
    }
    static Number ordering(Name word) {
        return oneOf(word, {"RECEIVE", "RTI_RECEIVE_ORDERING", "TIMESTAMP", "RTI_TIME_STAMP_ORDERING"}, 1899,
                     "Ordering");
    }
    std::set<Number> attributeHandles() const {
        std::set<Number> all;
        for (const auto &[handle, node] : objects.nodes)
            for (const Member &attribute : node->members)
                all.insert(attribute.handle);
        return all;
    }
    Number declaringClass(Number attribute) const {
        const auto found = declaring.find(attribute);
        return found == declaring.end() ? 0 : found->second;
    }
    /// Each of the two sets of a class is made when it is first asked for, and kept.
    std::multiset<Number> availableAttributes(Class *node) const { return kept(node, &Class::available); }
    std::set<Number> availableHandles(Class *node) const {
        const std::multiset<Number> all = kept(node, &Class::availableHandles);
        return {all.begin(), all.end()};
    }
    bool verifyAvailable(Number handle, const std::set<Number> &attributes) const {
        const std::set<Number> all = availableHandles(objects.of(handle));
        return std::includes(all.begin(), all.end(), attributes.begin(), attributes.end());
    }
    std::multiset<Number> kept(Class *node, std::optional<std::multiset<Number>> Class::*set) const {
        require(node, "ObjectClassNotDefined", "RtiFedDatabaseDerivation", 74, "no such object class");
        node->*set = (node->*set).value_or(objects.available(node));
        return *(node->*set);
    }

    void image(Image io) {
        io(name);
        io(version);
        objects.image(io);
        interactions.image(io);
        spaces.image(io, [] { return new Space; });
        std::vector<std::pair<Number, Number>> pairs(declaring.begin(), declaring.end());
        io.list(pairs, [&](std::pair<Number, Number> &pair) {
            io(pair.first);
            io(pair.second);
        });
        declaring = {pairs.begin(), pairs.end()};
        io(spaces.last);
        io(objects.last);
        io(lastAttribute);
        io(interactions.last);
        io(lastParameter);
        io(fileName);
    }
    Database() = default;
    explicit Database(RtiBuffer &buffer) {
        image({buffer, true});
        objects.linkParents();
        interactions.linkParents();
    }

    static constexpr const char *kFile = Classes::kFile;
};

/// The callbacks of a parser that build a database. What they add belongs to what was added last.
struct Codegen {
    Database *database;
    Space *space = nullptr;
    Class *object = nullptr, *interaction = nullptr;

    void addSpace(Name name) { space = database->addSpace(name); }
    void addObjectClass(Name name) { object = database->objects.add({name}); }
    void addObjectClassAttribute(Name name, Name transport, Name ordering, Name inSpace) {
        database->addAttribute(object, described(name, transport, ordering, inSpace));
    }
    void addInteractionClass(Name name, Name transport, Name ordering, Name inSpace) {
        interaction = database->interactions.add(described(name, transport, ordering, inSpace));
    }
    void addParameter(Name name) {
        require(interaction, "RTIinternalError", "RtiFedDatabaseCodegen", 74,
                "parameter " + name + " before the first interaction class")
            ->addMember({name, ++database->lastParameter});
    }
    /// As the parser calls them, and what completes a database.
    void load(const Federation &federation) {
        database->name = "Benchmark";
        database->version = "v1.3";
        for (const Federation::Space &each : federation.spaces) {
            addSpace(each.name);
            for (const std::string &dimension : each.dimensions)
                database->addDimension(space, dimension);
        }
        std::vector<std::string> names; // of the classes from the root to the current one
        const auto fullName = [&names](const Federation::Class &node) {
            names.resize(node.level - 1);
            names.push_back((names.empty() ? "" : names.back() + '.') + node.name);
            return names.back();
        };
        for (const Federation::Class &node : federation.objects) {
            addObjectClass(fullName(node));
            for (const auto &[name, delivery] : node.members)
                addObjectClassAttribute(name, delivery.transportation, delivery.ordering, delivery.space);
        }
        for (const Federation::Class &node : federation.interactions) {
            addInteractionClass(fullName(node), node.delivery.transportation, node.delivery.ordering,
                                node.delivery.space);
            for (const Federation::Member &member : node.members)
                addParameter(member.name);
        }
        database->addSpace("HLAMomDefaultSpace");
        database->setMomDefaultSpace();
    }
    Member described(Name name, Name transport, Name ordering, Name inSpace) const {
        Member member{name};
        member.space = inSpace.empty() ? 0 : database->spaceHandle(inSpace);
        member.transport = Database::transportation(transport);
        member.ordering = Database::ordering(ordering);
        return member;
    }
};

} // namespace plain
