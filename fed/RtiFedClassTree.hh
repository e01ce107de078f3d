#pragma once

#include "fed/RtiFedHandleMap.hh"
#include "fed/RtiFedImage.hh"
#include "fed/RtiFedNameMap.hh"
#include "infrastructure/RtiFedLimits.hh"

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

    /// Owns a class, whose handle must be free, and returns it. Either it is added or, if memory runs out, nothing has
    /// changed.
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
    /// its class without one. Throws RTI::RTIinternalError for names, handles or links that no sound tree has.
    /// `classes` is what they are called there; `check` is called for each class, with the byte where it begins, and
    /// may refuse more.
    template <class Check>
    void restore(RtiBuffer &buffer, const char *classes, Check check) {
        clear();
        std::vector<std::pair<Node *, std::size_t>> read;
        for (unsigned long count = readCount(buffer, Node::_leastImageSize, classes); count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            auto node = std::make_unique<Node>(buffer);
            if (_nameMap.find(node->getName()))
                refuseImage(byte, "the class name ", node->getName(), " stands twice");
            if (node->getHandle() == 0 || find(node->getHandle()))
                refuseImage(byte, "the handle of the class ", node->getName(), " is 0 or stands twice");
            read.emplace_back(add(std::move(node)), byte);
        }
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
        for (const auto &[node, byte] : read)
            check(*node, byte);
    }

    void clear() {
        _nameMap.clear();
        _handleMap.clear();
    }

    Handle greatest() const { return _handleMap.greatest(); }

    std::set<Handle> handles() const {
        std::set<Handle> all;
        for (const auto &[handle, node] : _handleMap)
            all.insert(all.end(), handle);
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

    std::size_t numNames() const { return _nameMap.size(); }
    std::size_t numHandles() const { return _handleMap.size(); }
    /// Pairs of handle and owned class, by ascending handle.
    auto begin() const { return _handleMap.begin(); }
    auto end() const { return _handleMap.end(); }

private:
    /// Refuses a class in a circle or too deep, and one that is not the child of its parent or the parent of its
    /// children.
    void checkLinks(const Node &node, std::size_t byte) const {
        unsigned level = 1;
        for (const Node *above = node.getParentClass(); above; above = above->getParentClass())
            if (++level > kMaxClassNesting)
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

    std::string_view _rootPrefix;
    RtiFedNameMap<Node *> _nameMap;
    RtiFedHandleMap<Handle, std::unique_ptr<Node>> _handleMap;
};
