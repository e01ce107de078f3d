#pragma once

#include "fed/storage/RtiFedNameMap.hh"
#include "fed/storage/RtiFedPublished.hh"

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

/// Finds the members that a class declares or inherits by their names, without a walk up its ancestors.
///
/// The classes are numbered in pre-order, so that a class and all its descendants are a range of numbers, the scope of
/// the members that the class declares. A name has one scope for each class that declares it. They are disjoint and
/// ascend, so a binary search finds the only one that can contain a class. Nearly all names have one scope, which is in
/// the entry of the name map.
///
/// The index answers only where it cannot err; for all else, the caller walks. It has no answer for classes in a
/// circle, for names that a class and one of its ancestors declare, for handles that are 0 or have more than 32 bits,
/// and for a tree with a parent of another tree or with handles far apart. Threads: const members on any number of
/// threads at once.
class RtiFedMemberIndex {
public:
    template <class Tree>
    explicit RtiFedMemberIndex(const Tree &tree) {
        using Node = typename Tree::NodeType;
        std::vector<Links<Node>> links = linksOf<Node>(tree);
        const std::vector<std::uint32_t> handles = inPreOrder(links);
        _orders.resize(links.size());
        for (std::size_t i = handles.size(); i-- > 0;) {
            _orders[handles[i]] = static_cast<std::uint32_t>(i) + 1;
            links[links[handles[i]].parent].size += links[handles[i]].size;
        }
        std::vector<std::vector<Scope>> groups(1); // of the names with several scopes; the first is not used
        for (const std::uint32_t handle : handles)
            for (const auto &member : links[handle].node->members())
                enter(member.nameText(), {_orders[handle], links[handle].size, narrow(member.getHandle()._value)},
                      groups);
        for (const std::vector<Scope> &group : groups) {
            _groups.push_back(static_cast<std::uint32_t>(_scopes.size()));
            _scopes.insert(_scopes.end(), group.begin(), group.end());
        }
        _groups.push_back(static_cast<std::uint32_t>(_scopes.size()));
    }

    /// Returns the handle of the member, or 0 if the index has no answer.
    [[gnu::always_inline]] std::uint32_t find(unsigned long classHandle, const RtiFedFoldedName &name) const {
        const std::uint32_t order = classHandle < _orders.size() ? _orders.data()[classHandle] : 0;
        const Scope scope = _names.find(name);
        if (scope.size != 0)
            return scope.contains(order) ? scope.handle : 0;
        return findIn(scope.first, order);
    }

private:
    /// A range of classes, and the member that they have. Of a name with several scopes, `first` is the number of its
    /// group, and `size` is 0.
    struct Scope {
        std::uint32_t first = 0, size = 0, handle = 0;

        bool contains(std::uint32_t order) const { return order - first < size; }
    };

    /// A class and its neighbours in the tree, by their handles; 0 for none. The roots are the children of 0.
    template <class Node>
    struct Links {
        const Node *node = nullptr;
        std::uint32_t parent = 0, child = 0, sibling = 0; // the first child and the next sibling
        std::uint32_t size = 1;                           // the number of classes in the subtree, once it is known
    };

    /// Returns the classes by their handles; nothing if the tree is one for which there is no index.
    template <class Node, class Tree>
    static std::vector<Links<Node>> linksOf(const Tree &tree) {
        const std::uint64_t greatest = tree.greatest()._value;
        if (greatest > 4 * static_cast<std::uint64_t>(tree.numHandles()) + 64)
            return {};
        std::vector<Links<Node>> links(static_cast<std::size_t>(greatest) + 1);
        for (auto handle = static_cast<std::uint32_t>(greatest); handle > 0; --handle) {
            const Node *node = tree.find(handle), *parent = node ? node->getParentClass() : nullptr;
            const auto above = parent ? parent->getHandle()._value : 0;
            if (parent && tree.find(above) != parent)
                return {};
            if (node) {
                links[handle] = {node, static_cast<std::uint32_t>(above), links[handle].child, links[above].child, 1};
                links[above].child = handle;
            }
        }
        return links;
    }

    /// Returns the handles in pre-order, without those of classes in a circle.
    template <class Node>
    static std::vector<std::uint32_t> inPreOrder(const std::vector<Links<Node>> &links) {
        std::vector<std::uint32_t> handles, waiting;
        if (!links.empty())
            waiting.push_back(links[0].child);
        while (!waiting.empty()) {
            const std::uint32_t handle = waiting.back();
            waiting.pop_back();
            if (handle == 0)
                continue;
            handles.push_back(handle);
            waiting.push_back(links[handle].sibling);
            waiting.push_back(links[handle].child);
        }
        return handles;
    }

    static std::uint32_t narrow(std::uint64_t handle) {
        return handle <= UINT32_MAX ? static_cast<std::uint32_t>(handle) : 0;
    }

    /// Enters a scope. Those of a name come in ascending order; if two overlap, one that contains all classes and
    /// has no answer replaces the whole group.
    void enter(std::string_view name, const Scope &scope, std::vector<std::vector<Scope>> &groups) {
        const RtiFedName hashed(name);
        if (_names.insert(hashed, scope))
            return;
        Scope known = _names.find(hashed);
        if (known.size != 0) {
            groups.push_back({known});
            known = {static_cast<std::uint32_t>(groups.size() - 1), 0, 0};
            _names.replace(hashed, known);
        }
        std::vector<Scope> &group = groups[known.first];
        if (group.back().contains(scope.first))
            group.assign(1, {0, UINT32_MAX, 0});
        else
            group.push_back(scope);
    }

    [[gnu::noinline]] std::uint32_t findIn(std::uint32_t group, std::uint32_t order) const {
        const Scope *scope = _scopes.data() + _groups[group];
        std::size_t left = _groups[group + 1] - _groups[group];
        if (left == 0)
            return 0;
        for (; left > 1; left -= left / 2)
            scope += scope[left / 2].first <= order ? left / 2 : 0;
        return scope->contains(order) ? scope->handle : 0;
    }

    std::vector<std::uint32_t> _orders; // by the handle of the class; 0 if it has no number
    RtiFedNameMap<Scope> _names;
    std::vector<std::uint32_t> _groups; // the first scope of each group, and the end of the last
    std::vector<Scope> _scopes;
};

/// The index of a tree, made when it pays off, and dropped by the classes of the tree when they change.
///
/// Making it takes about as long as one walk for each member. So the first lookups walk, and after one walk for each
/// member the index is made: all lookups together take at most about twice the time of the better way. A database that
/// is only asked a few names never makes it.
/// Threads: find and walked on any number of threads at once; drop needs exclusive access.
class RtiFedMemberIndexHolder {
public:
    const RtiFedMemberIndex *get() const { return _index.get(); }

    /// Counts a walk, and makes the index when they were many. `numMembers` may be an estimate. Throws std::bad_alloc.
    template <class Tree>
    void walked(const Tree &tree, std::size_t numMembers) const {
        if (_index.get())
            return;
        // Two threads may count one walk together, which does no harm, and need not wait for each other.
        const std::size_t walks = _walks.load(std::memory_order_relaxed) + 1;
        _walks.store(walks > numMembers ? 0 : walks, std::memory_order_relaxed);
        if (walks > numMembers)
            _index.publish(std::make_unique<RtiFedMemberIndex>(tree));
    }

    void drop() {
        if (_index.get())
            _index.set(nullptr);
    }

private:
    RtiFedPublished<RtiFedMemberIndex> _index;
    mutable std::atomic<std::size_t> _walks{0};
};
