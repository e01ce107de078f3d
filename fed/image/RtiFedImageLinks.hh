#pragma once

#include "fed/RtiFedClassNesting.hh"
#include "fed/image/RtiFedImage.hh"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

/// Links the classes of an image to their parents and refuses links in a circle, so that every walk along them ends.
///
/// A class refers to its parent by handle, and a class lists the handles of its children. A parent handle or child
/// handle that no class has is accepted and ignored; so is a child that refers to another parent, since addChildClass
/// lets a host announce any handle. No class may be its own ancestor or its own descendant, and none may be nested
/// deeper than kMaxClassNesting levels.
///
/// In nearly every image each class follows its parent, since images are sorted by name. That gives a proof by counting
/// while each class is still in the cache:
/// - If every class that has a parent follows it, parents are linked at once and cannot form a circle.
/// - Each class that has a parent and is listed by it accounts for one child handle of that parent, a different one for
///   each class. So if there are as many such classes as child handles in all, every child handle leads from a parent
///   to a class below it, and a circle of children would be a circle of parents.
/// Otherwise finish searches the whole graph. That is slower, but linear, and needed for unusual images only.
template <class Node>
class RtiFedImageLinks {
    using Handle = typename Node::Handle;

public:
    void reserve(std::size_t numClasses) { _classes.reserve(numClasses); }

    /// Links a class that was just read. `parent` is null if there is none among the classes read so far; `byte` is
    /// where the class begins. Throws RTI::RTIinternalError if it is nested too deeply.
    void add(Node &node, Node *parent, std::size_t byte) {
        node.setParentClass(parent);
        checkDepth(node, byte);
        _inOrder = _inOrder && (parent || node.getParentClassHandle() == 0);
        _numChildHandles += node.children().size();
        if (parent && parent->children().contains(node.getHandle()))
            ++_numListedByParent;
        _classes.emplace_back(&node, byte);
    }

    /// Completes the links when all classes were read. `find` returns the class of a handle, or null. Throws
    /// RTI::RTIinternalError for a circle or a class that is nested too deeply.
    template <class Find>
    void finish(Find find) const {
        if (!_inOrder) {
            for (const auto &[node, byte] : _classes)
                node->setParentClass(find(node->getParentClassHandle()));
            for (const auto &[node, byte] : _classes)
                checkDepth(*node, byte);
        }
        if (!_inOrder || _numListedByParent != _numChildHandles)
            refuseCircles(find);
    }

private:
    static void checkDepth(const Node &node, std::size_t byte) {
        unsigned level = 1;
        for (const Node *above = node.getParentClass(); above; above = above->getParentClass())
            if (++level > kMaxClassNesting)
                refuseImage(byte, "the class ", node.getName(), " is nested in a circle or deeper than ",
                            toString(kMaxClassNesting), " levels");
    }

    /// A depth-first search along the child handles: a class that is reached again before the search has left it is in
    /// a circle.
    template <class Find>
    void refuseCircles(Find find) const {
        std::set<const Node *> left;
        for (const auto &place : _classes) {
            const Node *root = place.first;
            struct Step {
                const Node *node;
                std::set<Handle> children; // that were not visited yet
            };
            std::vector<Step> path;
            std::set<const Node *> onPath;
            const auto enter = [&](const Node *node) {
                if (!onPath.insert(node).second)
                    refuseImage(byteOf(node), "the children of the class ", node->getName(), " form a circle");
                path.push_back({node, node->getChildrenClasses()});
            };
            if (left.count(root) == 0)
                enter(root);
            while (!path.empty()) {
                Step &last = path.back();
                if (last.children.empty()) {
                    onPath.erase(last.node);
                    left.insert(last.node);
                    path.pop_back();
                } else {
                    const Node *child = find(*last.children.begin());
                    last.children.erase(last.children.begin());
                    if (child && left.count(child) == 0)
                        enter(child);
                }
            }
        }
    }

    std::size_t byteOf(const Node *node) const {
        return std::find_if(_classes.begin(), _classes.end(), [node](const auto &read) { return read.first == node; })
            ->second;
    }

    std::vector<std::pair<Node *, std::size_t>> _classes; // each with the byte where it begins
    bool _inOrder = true;
    std::size_t _numChildHandles = 0;
    std::size_t _numListedByParent = 0;
};
