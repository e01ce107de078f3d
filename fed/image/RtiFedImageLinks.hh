#pragma once

#include "fed/RtiFedClassNesting.hh"
#include "fed/image/RtiFedImage.hh"

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

/// Links the classes of an image to their parents and refuses cycles, so that every walk along the links ends.
///
/// A class stores the handle of its parent and the handles of its children. These are accepted and ignored: a parent or
/// child handle that no class has, and a child whose parent is another class, since addChildClass accepts any handle.
/// No class may be its own ancestor or its own descendant, and none may be nested deeper than kMaxClassNesting levels.
/// A cycle of parents is found by that limit, a cycle of children as follows.
///
/// Images are sorted by full name, which begins with the name of the superclass, so parents nearly always come first.
/// Then two counters, kept while reading, prove that there is no cycle of children: a class that its parent lists uses
/// up one of the parent's child handles, and no other class uses up the same one. If there are as many such classes as
/// child handles in all, each child handle refers to a class from its parent, so a cycle of children would be a cycle
/// of parents. Otherwise, for unusual images only, finish searches the graph, in O(n log n) for n classes and child
/// handles.
template <class Node>
class RtiFedImageLinks {
    using Handle = typename Node::Handle;

public:
    void reserve(std::size_t numClasses) { _classes.reserve(numClasses); } // equivalent: only speed

    /// Links a class that was just read, and the subclasses it owns. `parent` is null if there is none among the
    /// classes read so far; `byte` is where the class begins. Throws RTI::RTIinternalError if it is nested too deeply.
    void add(Node &node, Node *parent, std::size_t byte) {
        node.setParentClass(parent);
        node.linkOwned();
        checkNesting(node, byte);
        _parentsCameFirst = _parentsCameFirst && (parent || node.getParentClassHandle() == 0);
        _numChildHandles += node.children().size();
        if (parent && parent->children().contains(node.getHandle()))
            ++_numListedByParent;
        _classes.emplace_back(&node, byte);
    }

    /// Completes the links when all classes were read. `find` returns the class of a handle, or null. Throws
    /// RTI::RTIinternalError for a cycle or a class that is nested too deeply.
    template <class Find>
    void finish(Find find) const {
        if (!_parentsCameFirst) {
            for (const auto &[node, byte] : _classes)
                node->setParentClass(find(node->getParentClassHandle()));
            for (const auto &[node, byte] : _classes)
                checkNesting(*node, byte);
        }
        if (!_parentsCameFirst || _numListedByParent != _numChildHandles)
            refuseChildCycles(find);
    }

private:
    static void checkNesting(const Node &node, std::size_t byte) {
        unsigned level = 1;
        for (const Node *above = node.getParentClass(); above; above = above->getParentClass())
            if (++level > kMaxClassNesting)
                refuseImage(byte, "the class ", node.getName(), " is nested in a cycle or deeper than ",
                            toString(kMaxClassNesting), " levels");
    }

    /// Removes, again and again, a class that no remaining class lists as a child. If classes are left, each of them is
    /// listed by another one that is left, so following these links backwards ends in a cycle.
    template <class Find>
    void refuseChildCycles(Find find) const {
        std::map<const Node *, std::size_t> numListings; // of each class, by the remaining ones
        const auto forEachChild = [&find](const Node *node, auto visit) {
            node->children().forEach([&](const Handle &handle) {
                if (const Node *child = find(handle))
                    visit(child);
            });
        };
        for (const auto &[node, byte] : _classes)
            forEachChild(node, [&numListings](const Node *child) { ++numListings[child]; });

        std::vector<const Node *> removable;
        for (const auto &[node, byte] : _classes)
            if (numListings[node] == 0)
                removable.push_back(node);
        while (!removable.empty()) {
            const Node *node = removable.back();
            removable.pop_back();
            forEachChild(node, [&](const Node *child) {
                if (--numListings[child] == 0)
                    removable.push_back(child);
            });
        }
        for (const auto &[node, byte] : _classes)
            if (numListings[node] != 0)
                refuseImage(byte, "the class ", node->getName(), " is in or below a cycle of children");
    }

    std::vector<std::pair<Node *, std::size_t>> _classes; // each with the byte where it begins
    bool _parentsCameFirst = true;                        // equivalent: only speed
    std::size_t _numChildHandles = 0;
    std::size_t _numListedByParent = 0;
};
