#pragma once

#include "fed/RtiFedClassNesting.hh"
#include "fed/RtiFedElement.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/storage/RtiFedArena.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "fed/storage/RtiFedNameMap.hh"

#include <algorithm>
#include <memory>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

/// The classes of one kind in a database: owned, and found by handle and by full dotted name.
///
/// Threads: const members on any number of threads at once.
template <class Node>
class RtiFedClassTree {
public:
    using Handle = typename Node::Handle;

    Node *find(const Handle &handle) const {
        const auto *found = _handleMap.find(handle);
        return found ? found->get() : nullptr;
    }

    /// A full name as it is looked up: what stands behind the root prefix, if it has that.
    struct Key {
        std::string_view name;
        bool underRoot = false;
        RtiFedName behindRoot;
    };
    static Key keyOf(std::string_view name) {
        const bool underRoot = RtiFedName::beginsWith(name, kPrefix);
        return {name, underRoot, underRoot ? name.substr(kPrefix.size()) : name};
    }

    /// The handle of a class, by its name in any letter case; 0 if there is none. A name that is not found is tried
    /// once more behind the root prefix, whatever it is.
    Handle handleOf(std::string_view name) const { return handleOf(keyOf(name)); }
    Handle handleOf(const Key &key) const {
        const Names names = _nameMap.find(key.behindRoot);
        if (key.underRoot)
            return names.underRoot != 0 || !_isRootTwice ? names.underRoot : _nameMap.find(key.name).underRoot;
        return names.alone != 0 ? names.alone : names.underRoot;
    }

    using Owner = std::unique_ptr<Node, RtiFedDestroy>;

    /// Makes a class for this tree, which it does not know yet.
    template <class... Arguments>
    Owner make(Arguments &&...arguments) {
        Owner node(_arena.template make<Node, kCacheLine, behindName()>(std::forward<Arguments>(arguments)...));
        node->shareArena(_arena);
        return node;
    }

    /// Owns a class that it made, whose handle must be free and not 0, and returns it. `key` is that of its name.
    /// Either it is added or, if memory runs out, nothing has changed.
    Node *add(Owner node, const Key &key) {
        Node *added = node.get();
        const Handle handle = added->getHandle();
        _handleMap.insert(handle, std::move(node));
        try {
            enterName(key, handle._value);
        } catch (...) {
            _handleMap.erase(handle);
            throw;
        }
        return added;
    }

    unsigned long checksum() const {
        unsigned long checksum = 0;
        forEach([&checksum](const Node &node) { checksum ^= node.getChecksum(); });
        return checksum;
    }

    /// The image: how many there are, then each in the order of the upper-cased names.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_numNames));
        forEachByName([&buffer](const Node &node) { buffer.put(node); });
    }
    /// The classes of an image, each with the byte where it begins, in the order read.
    struct Restored {
        std::vector<std::pair<Node *, std::size_t>> classes;
        std::size_t numMembers = 0; ///< Of all classes.
        bool linked = true;         ///< Whether it was clear when they were read that all their links are sound.
    };

    /// Frees what the tree owned, reads the classes, and links each to its parent. A parent that is not there leaves
    /// its class without one. Throws RTI::RTIinternalError for names, handles or links that no sound tree has.
    /// `classes` is what they are called there. Calls `visit` with each class as soon as it is read, and with
    /// how many classes are above it; which of these were read by then, unless all are `linked`, is not known.
    template <class Visit>
    Restored restore(RtiBuffer &buffer, const char *classes, Visit visit) {
        clear();
        unsigned long count = readCount(buffer, Node::_numImageValues, classes);
        const std::size_t room = atOnce(buffer, count);
        _nameMap.reserve(room);
        _handleMap.reserve(room);
        Restored read;
        read.classes.reserve(room);
        // A class follows the one above it in nearly all images. Then its links are checked while both are in the
        // cache: if each class is a child of its parent, and there are no more children than these, all of them are
        // right.
        std::size_t numChildren = 0, numWithParent = 0;
        for (; count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            Owner node = make();
            node->restoreAtLevel(buffer, 1);
            const Key key = keyOf(node->getName());
            if (isNamed(key))
                refuseImage(byte, "the class name ", node->getName(), " stands twice");
            if (node->getHandle() == 0 || find(node->getHandle()))
                refuseImage(byte, "the handle of the class ", node->getName(), " is 0 or stands twice");
            Node *parent = find(node->getParentClassHandle());
            node->setParentClass(parent);
            if (parent ? !parent->children().contains(node->getHandle()) : node->getParentClassHandle() != 0)
                read.linked = false;
            const std::size_t numAbove = numLevels(parent);
            if (numAbove >= kMaxClassNesting || node->ownsAny())
                read.linked = false;
            numChildren += node->children().size();
            numWithParent += parent ? 1 : 0;
            read.numMembers += node->members().size();
            visit(*node, numAbove);
            read.classes.emplace_back(add(std::move(node), key), byte);
        }
        read.linked = read.linked && numChildren == numWithParent;
        if (!read.linked)
            linkAll(read.classes);
        return read;
    }

    void clear() {
        _nameMap.clear();
        _numNames = 0;
        _isRootTwice = false;
        _handleMap.clear();
        _arena = RtiFedArena();
    }

    Handle greatest() const { return _handleMap.greatest(); }

    std::set<Handle> handles() const {
        std::set<Handle> all;
        _handleMap.forEach([&all](const Handle &handle, const auto &) { all.insert(all.end(), handle); });
        return all;
    }

    /// Calls `visit` for a class and all its descendants, each class before its children, those by ascending handle.
    /// Null is passed over, and so is a child that is not there.
    template <class Class, class Visit>
    void forEachDerived(Class *from, Visit visit) const {
        std::vector<Class *> waiting{from};
        while (!waiting.empty()) {
            Class *node = waiting.back();
            waiting.pop_back();
            if (!node)
                continue;
            visit(*node);
            const auto first = waiting.size();
            node->children().forEach([&](const Handle &child) { waiting.push_back(find(child)); });
            std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end());
        }
    }

    /// Calls `visit` for a class and each class above it, by the parents' handles. An unknown handle ends it.
    template <class Visit>
    void forEachAncestor(Handle from, Visit visit) const {
        for (Node *node = find(from); node; node = find(node->getParentClassHandle()))
            visit(*node);
    }

    std::size_t numNames() const { return _numNames; }
    std::size_t numHandles() const { return _handleMap.size(); }

    /// Calls `visit` with each class, by ascending handle.
    template <class Visit>
    void forEach(Visit visit) const {
        _handleMap.forEach([&visit](const Handle &, const Owner &node) { visit(*node); });
    }

private:
    using Number = decltype(Handle::_value);
    static constexpr std::size_t kCacheLine = 64; // behind its name, one has all that a look-up asks of a class
    static constexpr std::size_t behindName() {
        return (sizeof(RtiFedElement) + alignof(Node) - 1) / alignof(Node) * alignof(Node);
    }

    static constexpr std::string_view kPrefix = Node::_rootPrefix; // in upper case, with its dot

    /// The classes whose full name is `key`, and the root prefix and `key`; 0 for none. Nearly all names begin with the
    /// prefix. Without it they are shorter, and one look-up answers for a name both as it stands and behind the prefix.
    struct Names {
        Number alone = 0;
        Number underRoot = 0;
    };

    bool isNamed(const Key &key) const {
        const Names names = _nameMap.find(key.behindRoot);
        return (key.underRoot ? names.underRoot : names.alone) != 0;
    }
    /// Enters the full name of a class, which no other has.
    void enterName(const Key &key, Number handle) {
        if (!_nameMap.insert(key.behindRoot, key.underRoot ? Names{0, handle} : Names{handle, 0})) {
            Names names = _nameMap.find(key.behindRoot);
            (key.underRoot ? names.underRoot : names.alone) = handle;
            _nameMap.replace(key.behindRoot, names);
        }
        _isRootTwice = _isRootTwice || (key.underRoot && RtiFedName::beginsWith(key.behindRoot.text(), kPrefix));
        ++_numNames;
    }

    /// Calls `visit` with each class that is found by its name, in the order of the upper-cased full names.
    template <class Visit>
    void forEachByName(Visit visit) const {
        std::vector<std::pair<std::string_view, Number>> alone, underRoot;
        for (const auto &[key, names] : _nameMap.sorted()) {
            if (names.alone != 0)
                alone.emplace_back(key, names.alone);
            if (names.underRoot != 0)
                underRoot.emplace_back(key, names.underRoot);
        }
        // No name of the first kind begins with the prefix, so its place among the others is that of the prefix.
        const auto split =
            std::find_if(alone.begin(), alone.end(), [&](const auto &name) { return name.first > kPrefix; });
        const auto visitAll = [&](auto from, auto to) {
            for (; from != to; ++from)
                visit(*find(Handle(from->second)));
        };
        visitAll(alone.begin(), split);
        visitAll(underRoot.begin(), underRoot.end());
        visitAll(split, alone.end());
    }

    /// The levels down to a class, no more than there may be.
    static unsigned numLevels(const Node *from) {
        unsigned levels = 0;
        for (const Node *above = from; above && levels < kMaxClassNesting; above = above->getParentClass())
            ++levels;
        return levels;
    }

    /// Links the classes of an image once more, now that all are there, and refuses what no sound tree has.
    void linkAll(const std::vector<std::pair<Node *, std::size_t>> &read) const {
        for (const auto &[node, byte] : read)
            node->setParentClass(find(node->getParentClassHandle()));
        std::set<Handle> nested;
        for (const auto &[node, byte] : read) {
            checkLinks(*node, byte);
            node->forEachOwned([&, at = byte](const Node &owned) {
                if (owned.getHandle() == 0 || find(owned.getHandle()) || !nested.insert(owned.getHandle()).second)
                    refuseImage(at, "the handle of the class ", owned.getName(), " is 0 or stands twice");
            });
        }
    }

    /// Refuses a class in a circle or too deep, and one that is not the child of its parent or the parent of its
    /// children.
    void checkLinks(const Node &node, std::size_t byte) const {
        if (numLevels(node.getParentClass()) == kMaxClassNesting)
            refuseImage(byte, "the class ", node.getName(), " is nested in a circle or deeper than ",
                        toString(kMaxClassNesting), " levels");
        if (node.getParentClass() && !node.getParentClass()->children().contains(node.getHandle()))
            refuseImage(byte, "the class ", node.getName(), " is no child of its parent");
        node.children().forEach([&](const Handle &child) {
            const Node *found = find(child);
            if (!found || found->getParentClass() != &node)
                refuseImage(byte, "the child ", toString(child._value), " of the class ", node.getName(),
                            " is not there or has another parent");
        });
    }

    RtiFedArena _arena; // with the classes and their members
    RtiFedNameMap<Names> _nameMap;
    std::size_t _numNames = 0;
    bool _isRootTwice = false; // whether a name has the root prefix twice: else no name that has it needs a second try
    RtiFedHandleMap<Handle, Owner> _handleMap;
};
