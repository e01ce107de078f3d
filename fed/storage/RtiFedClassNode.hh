#pragma once

#include "fed/RtiFedClassNesting.hh"
#include "fed/RtiFedElement.hh"
#include "fed/image/RtiFedFields.hh"
#include "fed/storage/RtiFedHandleSet.hh"
#include "fed/storage/RtiFedMemberTable.hh"
#include "fed/storage/RtiFedStoredHandle.hh"

#include <memory>
#include <set>
#include <utility>
#include <vector>

template <class Node>
class RtiFedClassTree;

/// What the nodes of the two class trees share: the members declared on the class, its subclasses, its children's
/// handles, and the way to its parent. `Node` is the concrete class.
///
/// A node has two ways to know a subclass: it owns the nodes made by its own add operation, while the database, which
/// owns its nodes itself, only announces their handles by addChildClass.
/// Threads: const members on any number of threads at once; all others need the node to themselves.
template <class Node, class ClassHandle, class Member>
class RtiFedClassNode : public RtiFedElement {
public:
    using Handle = ClassHandle;

    Handle getHandle() const { return _theHandle; }
    /// The parent's handle as it was when this node was made or saved; 0 for a root.
    Handle getParentClassHandle() const { return _parentHandle; }
    /// The node above, not owned; null for a root, and after a restore until it is set again.
    Node *getParentClass() const { return _parent; }
    void setParentClass(Node *parent) { _parent = parent; }

    /// Announces a direct child.
    void addChildClass(Handle child) { _childrenClasses.insert(child); }
    /// Takes the memory for that, so that announcing this child next cannot fail.
    void makeRoomForChildClass(Handle child) { _childrenClasses.makeRoomFor(child); }
    /// A copy of the handles of the direct children, ascending.
    std::set<Handle> getChildrenClasses() const { return _childrenClasses.toSet(); }

    /// The same, and the members, without a copy.
    const RtiFedHandleSet<Handle> &children() const { return _childrenClasses; }
    const RtiFedMemberTable<Member> &members() const { return _members; }
    /// Puts the members into an arena that others share, before there are any. It must outlive the node.
    void shareArena(RtiFedArena &arena) { _members.share(arena); }
    void makeRoomForMembers(std::size_t number) { _members.reserve(number); }

    /// Whether there may be nodes that this one owns.
    bool ownsAny() const { return _owned != nullptr; }
    /// Calls `visit` for each node that this one owns, at any depth.
    template <class Visit>
    void forEachOwned(Visit visit) const {
        if (_owned)
            for (const auto &owned : _owned->nodes) {
                visit(*owned);
                owned->forEachOwned(visit);
            }
    }

protected:
    RtiFedClassNode() = default;

    /// Throws RTI::RTIinternalError if the node would be nested deeper than kMaxClassNesting.
    RtiFedClassNode(Handle handle, std::string name, Node *parent)
        : RtiFedElement(std::move(name)), _parent(parent), _theHandle(handle),
          _parentHandle(parent ? parent->getHandle() : Handle(0)), _level(levelBelow(parent)) {
        if (_level > kMaxClassNesting)
            rtiFedRaise<RTI::RTIinternalError>("the class ", getName(), " is nested deeper than ",
                                               toString(kMaxClassNesting), " levels");
    }

    /// Owns a subclass; one whose handle is taken is kept, but not found by it. If memory runs out, nothing has
    /// changed.
    Node *adopt(std::unique_ptr<Node> subclass) {
        Node *node = subclass.get();
        Owned &owned = theOwned();
        owned.nodes.push_back(std::move(subclass));
        try {
            owned.byHandle.insert(node->getHandle(), node);
        } catch (...) {
            owned.nodes.pop_back();
            throw;
        }
        return node;
    }

    unsigned long numSubclasses() const { return _owned ? static_cast<unsigned long>(_owned->byHandle.size()) : 0; }
    /// The subclass of a handle. If there is none, there is an empty entry for it from now on.
    Node *subclassOrEmpty(Handle handle) {
        theOwned().byHandle.insert(handle, nullptr);
        return *_owned->byHandle.find(handle);
    }

    bool memberExists(const RtiFedName &name) const { return _members.has(name); }
    bool memberIsInherited(const RtiFedName &name) const {
        for (const RtiFedClassNode *node = _parent; node; node = node->_parent)
            if (node->memberExists(name))
                return true;
        return false;
    }

    unsigned long sharedChecksum() const {
        unsigned long checksum = checksumOf(getName()) ^ checksumOf(getHandle()) ^ _members.checksum();
        forEachSubclass([&checksum](const Node &subclass) { checksum ^= subclass.getChecksum(); });
        return checksum;
    }

    /// The part of the image that both trees begin with: name, subclasses, members, children.
    void saveShared(RtiBuffer &buffer) const {
        RtiFedElement::save(buffer);
        unsigned long count = 0;
        forEachSubclass([&count](const Node &) { ++count; });
        buffer.put(count);
        forEachSubclass([&buffer](const Node &subclass) { buffer.put(subclass); });
        _members.save(buffer);
        _childrenClasses.save(buffer);
    }

    void restoreShared(RtiBuffer &buffer, unsigned level) {
        if (level > kMaxClassNesting)
            refuseImage(imageByte(buffer), "a class nested deeper than ", toString(kMaxClassNesting), " levels");
        _level = level;
        _parent = nullptr;
        RtiFedElement::restore(buffer);
        _owned.reset();
        for (unsigned long count = readCount(buffer, Node::_numImageValues, "subclasses"); count > 0; --count) {
            const std::size_t byte = imageByte(buffer);
            const auto *subclass = adopt(std::unique_ptr<Node>(new Node(buffer, level + 1)));
            if (*_owned->byHandle.find(subclass->getHandle()) != subclass)
                refuseImage(byte, "the handle ", toString(subclass->getHandle()._value), " stands twice in the class ",
                            getName());
        }
        _members.restore(buffer, Node::_membersAre);
        if (_members.numNames() < _members.size())
            refuseImage(imageByte(buffer), "a name stands twice among the ", Node::_membersAre, " of the class ",
                        getName());
        _childrenClasses.restore(buffer);
    }

    unsigned level() const { return _level; }

    Node *_parent = nullptr; // beside the members, since most look-ups go on from there
    RtiFedMemberTable<Member> _members;
    RtiFedHandleSet<Handle> _childrenClasses;
    RtiFedStoredHandle<Handle> _theHandle;
    RtiFedStoredHandle<Handle> _parentHandle;

private:
    struct Owned {
        std::vector<std::unique_ptr<Node>> nodes;
        RtiFedHandleMap<Handle, Node *> byHandle; // with empty entries that getSubclass made
    };

    Owned &theOwned() {
        if (!_owned)
            _owned = std::make_unique<Owned>();
        return *_owned;
    }

    /// Calls `visit` with each subclass that is found by its handle, by ascending handle.
    template <class Visit>
    void forEachSubclass(Visit visit) const {
        if (_owned)
            _owned->byHandle.forEach([&visit](const Handle &, const Node *subclass) {
                if (subclass)
                    visit(*subclass);
            });
    }

    static unsigned levelBelow(const RtiFedClassNode *parent) {
        unsigned level = parent ? parent->_level + 1 : 1; // a node that was restored may have lost its own parent
        unsigned counted = 1;
        for (const RtiFedClassNode *above = parent; above && counted <= kMaxClassNesting; above = above->_parent)
            ++counted;
        return level < counted ? counted : level;
    }

    std::unique_ptr<Owned> _owned; // only if there are any: the database owns its nodes itself
    unsigned _level = 1;           // bounds every walk down the nodes that this one owns
};
