#pragma once

#include "fed/RtiFedElement.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/image/RtiFedImageLinks.hh"
#include "fed/storage/RtiFedArena.hh"
#include "fed/storage/RtiFedClassNode.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "fed/storage/RtiFedNameMap.hh"

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// All classes of one kind in a database: owned here, and found by handle and by full dotted name.
///
/// The classes and their members are allocated in one arena; the handle map owns them. The name map is keyed by the
/// name without the root prefix ("ObjectRoot."), which nearly all names have: the keys are shorter, and one lookup
/// serves a name with and without the prefix (see Names).
/// Threads: const members on any number of threads at once.
template <class Node>
class RtiFedClassTree {
public:
    using NodeType = Node;
    using Handle = typename Node::Handle;
    using Number = decltype(Handle::_value);

    Node *find(const Handle &handle) const {
        const auto *found = _handleMap.find(handle);
        return found ? found->get() : nullptr;
    }

    /// A full name prepared for lookups: whether it begins with the root prefix, and the rest, hashed.
    struct Key {
        std::string_view name;
        bool hasPrefix = false;
        RtiFedName rest;
    };
    static Key keyOf(std::string_view name) {
        const bool hasPrefix = RtiFedName::beginsWith(name, kPrefix);
        return {name, hasPrefix, hasPrefix ? name.substr(kPrefix.size()) : name};
    }

    /// Returns the handle of a class by its name in any letter case, or 0. A name that is not found is tried once more
    /// with the root prefix in front, even if it has the prefix already.
    [[gnu::always_inline]] Number handleOf(std::string_view name) const {
        const bool hasPrefix = RtiFedName::beginsWith(name, kPrefix);
        return handleOf(name, hasPrefix, RtiFedFoldedName(hasPrefix ? name.substr(kPrefix.size()) : name));
    }
    Number handleOf(const Key &key) const { return handleOf(key.name, key.hasPrefix, key.rest); }

    using Owner = std::unique_ptr<Node, RtiFedDestroy>;

    /// Stores a name in the arena of this tree, for `make`.
    RtiFedLetters store(std::string_view name) { return {name, _arena}; }

    /// Makes a class in the arena of this tree; add enters it.
    template <class... Arguments>
    Owner make(Arguments &&...arguments) {
        Owner node(_arena.template make<Node, kCacheLine, kNameSize>(std::forward<Arguments>(arguments)...));
        node->joinTree(_arena, _indexes);
        return node;
    }

    /// Enters a class that `make` returned, and returns it. Its handle must be unused and not 0; `key` is that of its
    /// name, which must be unused. Throws std::bad_alloc, leaving the tree unchanged.
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

    /// Allocates the maps for `size` classes with the handles from 1 on, but not the classes themselves.
    void reserve(std::size_t size) {
        _nameMap.reserve(size);   // equivalent: only speed
        _handleMap.reserve(size); // equivalent: only speed
    }
    /// The same, and the names of these classes, whose full names have `numLetters` letters in all.
    void reserve(std::size_t size, std::size_t numLetters) {
        reserve(size); // equivalent: only speed
        // equivalent: only speed
        _nameMap.reserveEntries(size, numLetters - std::min(numLetters, size * kPrefix.size()));
    }

    unsigned long checksum() const {
        unsigned long checksum = 0; // equivalent: both trees have it, so it cancels
        forEach([&checksum](const Node &node) { checksum ^= node.getChecksum(); });
        return checksum;
    }

    /// Writes the image: the number of classes, then each class in the order of the upper-cased names.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_numNames));
        forEachByName([&buffer](Node &node) { buffer.put(node); });
    }

    /// Replaces the tree by that of an image. `classes` is the word for the classes in messages. Throws
    /// RTI::RTIinternalError for a duplicate name, a handle that is a duplicate or 0, and links in a cycle.
    void restore(RtiFedImageReader &reader, const char *classes) {
        clear();
        unsigned long count = reader.count(Node::_numImageValues, classes);
        reserve(reader.countToReserve(count)); // equivalent: only speed
        RtiFedImageLinks<Node> links;
        links.reserve(reader.countToReserve(count)); // equivalent: only speed
        for (; count > 0; --count) {
            const std::size_t byte = reader.byte();
            Owner node = make(store(reader.string()));
            node->restoreAfterName(reader);
            const Key key = keyOf(node->nameText());
            if (isNamed(key))
                refuseImage(byte, "duplicate class name ", node->getName());
            if (node->getHandle() == 0 || find(node->getHandle()))
                refuseImage(byte, "the handle of the class ", node->getName(), " is 0 or a duplicate");
            Node *added = add(std::move(node), key);
            links.add(*added, find(added->getParentClassHandle()), byte);
        }
        links.finish([this](const Handle &handle) { return find(handle); });
    }

    void clear() {
        _nameMap.clear();
        _wideHandles.clear();
        _numNames = 0;
        _hasDoublePrefix = false;
        _handleMap.clear();
        _indexes.drop();
        _arena = RtiFedArena();
    }

    const RtiFedTreeIndexes &indexes() const { return _indexes; }

    Handle greatest() const { return _handleMap.greatest(); }

    std::set<Handle> handles() const {
        std::set<Handle> all;
        _handleMap.forEach([&all](const Handle &handle, const auto &) { all.insert(all.end(), handle); });
        return all;
    }

    /// Calls `visit` for a class and all its descendants along the child handles: each class before its children, the
    /// children by ascending handle. A null `from` and unknown child handles are ignored.
    ///
    /// Nearly always the child handles form a tree: each refers to a class from its parent. But a host can announce any
    /// class as a child of any other, so the handles may reach a class in many ways or form a cycle. The first walk
    /// only follows handles from a parent to its child. If it meets another one, a second walk follows all handles and
    /// enters each class once; it visits some classes again, so `visit` must accept that. Both take linear time, the
    /// second one times the logarithm of the number of classes.
    template <class Class, class Visit>
    void forEachDerived(Class *from, Visit visit) const {
        bool isTree = true;
        walk(from, visit, [&isTree](const Class &node, const Class &child) {
            const bool isFromParent = child.getParentClassHandle() == node.getHandle();
            isTree = isTree && isFromParent;
            return isFromParent;
        });
        if (isTree)
            return;
        std::set<const Class *> entered{from};
        walk(from, visit, [&entered](const Class &, const Class &child) { return entered.insert(&child).second; });
    }

    /// Calls `visit` for a class and each of its ancestors, found by the parents' handles.
    template <class Visit>
    void forEachAncestor(Handle from, Visit visit) const {
        for (Node *node = find(from); node; node = find(node->getParentClassHandle()))
            visit(*node);
    }

    std::size_t numNames() const { return _numNames; }
    std::size_t numHandles() const { return _handleMap.size(); }

    /// Calls `visit` for each class, by ascending handle.
    template <class Visit>
    void forEach(Visit visit) const {
        _handleMap.forEach([&visit](const Handle &, const Owner &node) { visit(*node); });
    }

private:
    static constexpr std::string_view kPrefix = Node::_rootPrefix; // in upper case, with its dot

    // A class begins with its name, which lookups do not read. The rest is aligned to a cache line.
    static constexpr std::size_t kCacheLine = 64;
    static constexpr std::size_t kNameSize =
        (sizeof(RtiFedElement) + alignof(Node) - 1) / alignof(Node) * alignof(Node);

    /// The handles of the classes named `rest` and prefix + `rest`; 0 for none. They have 32 bits each, so that a
    /// lookup reads less memory; kWide means that the handle is in _wideHandles, which a host with an own buffer may
    /// have chosen.
    struct Names {
        std::uint32_t plain = 0;
        std::uint32_t prefixed = 0;
    };
    static constexpr std::uint32_t kWide = UINT32_MAX;
    using PrefixAndName = std::pair<bool, std::string>; // the name in upper case

    /// Calls `visit` for a class and, in pre-order, for the classes along those child handles that `enters` accepts.
    template <class Class, class Visit, class Enters>
    void walk(Class *from, Visit visit, Enters enters) const {
        std::vector<Class *> waiting;
        if (from)
            waiting.push_back(from);
        while (!waiting.empty()) {
            Class *node = waiting.back();
            waiting.pop_back();
            visit(*node);
            const auto first = waiting.size();
            node->children().forEach([&](const Handle &handle) {
                Class *child = find(handle);
                if (child && enters(*node, *child))
                    waiting.push_back(child);
            });
            std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end());
        }
    }

    template <class Rest>
    [[gnu::always_inline]] Number handleOf(std::string_view name, bool hasPrefix, const Rest &rest) const {
        const Names names = _nameMap.find(rest);
        if (!hasPrefix && names.plain != 0)
            return widened(names.plain, false, rest.text());
        if (hasPrefix && names.prefixed == 0 && _hasDoublePrefix)
            return handleBelowRoot(name);
        return widened(names.prefixed, true, rest.text());
    }
    // Functions of their own, which would slow down the lookups that they are inlined into.
    [[gnu::noinline]] Number handleBelowRoot(std::string_view rest) const {
        return widened(_nameMap.find(rest).prefixed, true, rest);
    }
    [[gnu::noinline]] Number wideHandle(bool hasPrefix, std::string_view rest) const {
        return _wideHandles.at({hasPrefix, RtiFedName::upper(rest)});
    }
    Number widened(std::uint32_t handle, bool hasPrefix, std::string_view rest) const {
        return handle != kWide ? handle : wideHandle(hasPrefix, rest);
    }

    bool isNamed(const Key &key) const {
        const Names names = _nameMap.find(key.rest);
        return (key.hasPrefix ? names.prefixed : names.plain) != 0;
    }
    void enterName(const Key &key, Number handle) {
        const std::uint32_t kept = handle < kWide ? static_cast<std::uint32_t>(handle) : kWide;
        if (kept == kWide)
            _wideHandles.insert_or_assign({key.hasPrefix, RtiFedName::upper(key.rest.text())}, handle);
        if (!_nameMap.insert(key.rest, key.hasPrefix ? Names{0, kept} : Names{kept, 0})) {
            Names names = _nameMap.find(key.rest);
            (key.hasPrefix ? names.prefixed : names.plain) = kept;
            _nameMap.replace(key.rest, names);
        }
        _hasDoublePrefix = _hasDoublePrefix || (key.hasPrefix && RtiFedName::beginsWith(key.rest.text(), kPrefix));
        ++_numNames;
    }

    /// Calls `visit` for each class in the order of the upper-cased full names.
    template <class Visit>
    void forEachByName(Visit visit) const {
        std::vector<std::pair<std::string_view, Number>> plain, prefixed;
        for (const auto &[rest, names] : _nameMap.sorted()) {
            if (names.plain != 0)
                plain.emplace_back(rest, widened(names.plain, false, rest));
            if (names.prefixed != 0)
                prefixed.emplace_back(rest, widened(names.prefixed, true, rest));
        }
        // No plain name begins with the prefix, so all prefixed names sort where the prefix alone would.
        const auto split =
            std::find_if(plain.begin(), plain.end(), [](const auto &name) { return name.first > kPrefix; });
        const auto visitAll = [&](auto from, auto to) {
            for (; from != to; ++from)
                visit(*find(Handle(from->second)));
        };
        visitAll(plain.begin(), split);
        visitAll(prefixed.begin(), prefixed.end());
        visitAll(split, plain.end());
    }

    RtiFedArena _arena;
    RtiFedNameMap<Names> _nameMap;
    std::map<PrefixAndName, Number> _wideHandles;
    std::size_t _numNames = 0;
    bool _hasDoublePrefix = false; // whether a name repeats the prefix: only then can a second try find anything
    RtiFedHandleMap<Handle, Owner> _handleMap;
    RtiFedTreeIndexes _indexes;
};
