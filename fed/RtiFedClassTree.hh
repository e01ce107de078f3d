#pragma once

#include "fed/RtiFedHandleMap.hh"
#include "fed/RtiFedNameMap.hh"
#include "infrastructure/RtiBuffer.hh"

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

    /// `rootPrefix` is the root class's name and a dot; a literal.
    explicit RtiFedClassTree(const char *rootPrefix) : _rootPrefix(rootPrefix) {}

    Node *find(Handle handle) const {
        const auto *found = _handleMap.find(handle);
        return found ? found->get() : nullptr;
    }
    /// By name in any letter case; a name that is not found is tried once more behind the root prefix, whatever it is.
    Node *find(std::string_view name) const {
        auto *found = _nameMap.find(name);
        if (!found)
            found = _nameMap.find(_rootPrefix, name);
        return found ? *found : nullptr;
    }

    /// Owns a class and returns it. Either it is added or, if memory runs out, nothing has changed.
    Node *add(std::unique_ptr<Node> node) {
        Node *added = node.get();
        const bool named = _nameMap.insert(added->getName(), added);
        try {
            _handleMap.insert(added->getHandle(), std::move(node));
        } catch (...) {
            if (named)
                _nameMap.erase(added->getName());
            throw;
        }
        return added;
    }

    unsigned long checksum() const {
        unsigned long checksum = 0;
        for (const auto &[handle, node] : _handleMap)
            checksum ^= node->getChecksum();
        return checksum;
    }

    /// The image: how many there are, then each in the order of the upper-cased names.
    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_nameMap.size()));
        for (const auto &[name, node] : _nameMap)
            buffer.put(*node);
    }
    /// Frees what the tree owned, reads the classes, and links each to its parent. A parent that is not there leaves
    /// its class without one.
    void restore(RtiBuffer &buffer) {
        _nameMap.clear();
        _handleMap.clear();
        for (unsigned long count = buffer.getUnsignedLong(); count > 0; --count)
            add(std::make_unique<Node>(buffer));
        for (const auto &[handle, node] : _handleMap)
            if (!(node->getParentClassHandle() == Handle(0)))
                node->setParentClass(find(node->getParentClassHandle()));
    }

    std::set<Handle> handles() const {
        std::set<Handle> all;
        for (const auto &[handle, node] : _handleMap)
            all.insert(all.end(), handle);
        return all;
    }

    /// Calls `visit` for a class and all its descendants, each class before its children, those by ascending handle.
    /// An unknown handle is passed over.
    template <class Visit>
    void forEachDerived(Handle from, Visit visit) const {
        std::vector<Handle> waiting{from};
        while (!waiting.empty()) {
            Node *node = find(waiting.back());
            waiting.pop_back();
            if (!node)
                continue;
            visit(*node);
            const auto children = node->getChildrenClasses();
            waiting.insert(waiting.end(), children.rbegin(), children.rend());
        }
    }

    /// Calls `visit` for a class and each class above it, by the parents' handles. An unknown handle ends it.
    template <class Visit>
    void forEachAncestor(Handle from, Visit visit) const {
        for (Node *node = find(from); node; node = find(node->getParentClassHandle()))
            visit(*node);
    }

    std::size_t numNames() const { return _nameMap.size(); }
    std::size_t numHandles() const { return _handleMap.size(); }
    /// Pairs of handle and owned class, by ascending handle.
    auto begin() const { return _handleMap.begin(); }
    auto end() const { return _handleMap.end(); }

private:
    std::string_view _rootPrefix;
    RtiFedNameMap<Node *> _nameMap;
    RtiFedHandleMap<Handle, std::unique_ptr<Node>> _handleMap;
};
