#pragma once

#include "fed/RtiFedClassNesting.hh"
#include "fed/RtiFedElement.hh"
#include "fed/image/RtiFedDump.hh"
#include "fed/storage/RtiFedAvailableRuns.hh"
#include "fed/storage/RtiFedHandleSet.hh"
#include "fed/storage/RtiFedMemberIndex.hh"
#include "fed/storage/RtiFedMemberTable.hh"
#include "fed/storage/RtiFedStoredHandle.hh"

#include <memory>
#include <set>
#include <utility>
#include <vector>

template <class Node>
class RtiFedClassTree;

/// What lookups make of a whole tree. The classes of the tree drop it when they change.
struct RtiFedTreeIndexes {
    RtiFedMemberIndexHolder members;
    RtiFedAvailableRunsHolder available;

    void drop() {
        members.drop();
        available.drop();
    }
};

/// What the nodes of both class trees share: the members declared on the class, the subclasses it owns, the handles of
/// its children, and the link to its parent. `Node` is the concrete class.
///
/// A node knows its subclasses in two independent ways: it owns the nodes that its own add operation made, and it lists
/// the handles that addChildClass announced. The database owns its nodes itself and uses the handles only.
/// Threads: const members on any number of threads at once; all others need exclusive access.
template <class Node, class ClassHandle, class Member>
class RtiFedClassNode : public RtiFedElement {
public:
    using Handle = ClassHandle;

    Handle getHandle() const { return _theHandle; }
    /// The parent's handle when this node was made or saved; 0 for a root.
    Handle getParentClassHandle() const { return _parentHandle; }
    /// The parent, not owned; null for a root, and after a restore until setParentClass.
    Node *getParentClass() const { return _parent; }
    void setParentClass(Node *parent) {
        dropMemberIndex();
        _parent = parent;
    }

    /// Links the subclasses that this node owns, at any depth, to their parents; a restore leaves them without.
    void linkOwned() {
        forEachSubclass([this](Node &subclass) {
            subclass.setParentClass(static_cast<Node *>(this));
            subclass.linkOwned();
        });
    }

    /// Announces a direct child.
    void addChildClass(Handle child) { _childrenClasses.insert(child); }
    /// Enters a new subclass that the database owns wherever this class has to list it. reserveForSubclass, called
    /// directly before, allocates what that needs, so that it cannot fail.
    void announceSubclass(Handle subclass) { addChildClass(subclass); }
    void reserveForSubclass(Handle subclass) { _childrenClasses.reserveFor(subclass); }
    /// Returns a copy of the handles of the direct children.
    std::set<Handle> getChildrenClasses() const { return _childrenClasses.toSet(); }

    /// The handles of the direct children and the members, without a copy.
    const RtiFedHandleSet<Handle> &children() const { return _childrenClasses; }
    const RtiFedMemberTable<Member> &members() const { return _members; }
    /// Lets the members be allocated in the arena of a tree, and the indexes of the tree be dropped when what they are
    /// made of changes. Call it while there are no members; both must outlive the node.
    void joinTree(RtiFedArena &arena, RtiFedTreeIndexes &indexes) {
        _members.useArena(arena);
        _indexes = &indexes;
    }
    void reserveMembers(std::size_t number) { _members.reserve(number); } // equivalent: only speed

    /// Calls `visit` for each owned subclass that its handle finds, at any depth, by ascending handle.
    template <class Visit>
    void forEachOwned(Visit visit) const {
        forEachSubclass([&visit](const Node &subclass) {
            visit(subclass);
            subclass.forEachOwned(visit);
        });
    }

protected:
    RtiFedClassNode() = default;
    explicit RtiFedClassNode(RtiFedLetters name) : RtiFedElement(name) {}

    /// Throws RTI::RTIinternalError if the node would be nested deeper than kMaxClassNesting. `Name` is a string or a
    /// name that is stored already.
    template <class Name>
    RtiFedClassNode(Handle handle, Name name, Node *parent)
        : RtiFedElement(std::move(name)), _parent(parent), _theHandle(handle),
          _parentHandle(parent ? parent->getHandle() : Handle(0)), _level(levelBelow(parent)) {
        if (_level > kMaxClassNesting)
            rtiFedRaise<RTI::RTIinternalError>("\"RtiFedClassNode\", line 60: the class ", getName(),
                                               " is nested deeper than ", toString(kMaxClassNesting), " levels");
    }

    /// Takes ownership of a subclass. If its handle is in use, lookups by it still return the earlier subclass. Throws
    /// std::bad_alloc, leaving the node unchanged.
    Node *adopt(std::unique_ptr<Node> subclass) {
        Node *node = subclass.get();
        Owned &owned = ensureOwned();
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
    /// Returns the subclass of a handle. A miss returns null and leaves an empty entry for the handle.
    Node *subclassOrEmpty(Handle handle) {
        ensureOwned().byHandle.insert(handle, nullptr);
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
        unsigned long checksum = checksumOf(nameText()) ^ checksumOf(getHandle()) ^ _members.checksum();
        forEachSubclass([&checksum](const Node &subclass) { checksum ^= subclass.getChecksum(); });
        return checksum;
    }

    // The images of both trees begin with the same part: a name and three lists.
    static constexpr std::size_t kNumSharedValues = 4;

    void saveShared(RtiBuffer &buffer) {
        RtiFedElement::save(buffer);
        unsigned long count = 0;
        forEachSubclass([&count](const Node &) { ++count; });
        buffer.put(count);
        forEachSubclass([&buffer](Node &subclass) { buffer.put(subclass); });
        _members.save(buffer);
        _childrenClasses.save(buffer);
    }

    void restoreWhole(RtiFedImageReader &reader, unsigned level) {
        if (level > kMaxClassNesting)
            refuseImage(reader.byte(), "a class nested deeper than ", toString(kMaxClassNesting), " levels");
        _level = level;
        restoreName(reader);
        static_cast<Node *>(this)->restoreAfterName(reader);
    }

    /// Restores the lists of the shared part.
    void restoreShared(RtiFedImageReader &reader) {
        setParentClass(nullptr); // also drops the index, before the members change
        _owned.reset();
        for (unsigned long count = reader.count(Node::_numImageValues, "subclasses"); count > 0; --count) {
            const std::size_t byte = reader.byte();
            auto made = std::unique_ptr<Node>(new Node);
            made->restoreWhole(reader, _level + 1);
            const Node *subclass = adopt(std::move(made));
            if (*_owned->byHandle.find(subclass->getHandle()) != subclass)
                refuseImage(byte, "duplicate handle ", toString(subclass->getHandle()._value),
                            " among the subclasses of the class ", getName());
        }
        _members.restore(reader, Node::_membersAre);
        if (_members.numNames() < _members.size())
            refuseImage(reader.byte(), "duplicate name among the ", Node::_membersAre, " of the class ", getName());
        _childrenClasses.restore(reader);
    }

    unsigned level() const { return _level; }

    /// Call it before a change of the members or the parent.
    void dropMemberIndex() {
        if (_indexes)
            _indexes->members.drop();
    }
    /// Call it before a change of the available attributes.
    void dropAvailableRuns() {
        if (_indexes)
            _indexes->available.drop();
    }

    Node *_parent = nullptr; // next to the members, since most lookups of a member continue with the parent
    RtiFedMemberTable<Member> _members;
    RtiFedHandleSet<Handle> _childrenClasses;
    RtiFedStoredHandle<Handle> _theHandle;
    RtiFedStoredHandle<Handle> _parentHandle;

private:
    struct Owned {
        std::vector<std::unique_ptr<Node>> nodes;
        RtiFedHandleMap<Handle, Node *> byHandle; // including the empty entries
    };

    Owned &ensureOwned() {
        if (!_owned)
            _owned = std::make_unique<Owned>();
        return *_owned;
    }

    /// Calls `visit` for each subclass that its handle finds, by ascending handle.
    template <class Visit>
    void forEachSubclass(Visit visit) const {
        if (_owned)
            _owned->byHandle.forEach([&visit](const Handle &, Node *subclass) {
                if (subclass)
                    visit(*subclass);
            });
    }

    /// The level of a child: one below its parent's, or the number of classes on the way up if that is greater, since a
    /// restored node counts its level from the node that was restored, and can be given a parent afterwards.
    static unsigned levelBelow(const RtiFedClassNode *parent) {
        const unsigned level = parent ? parent->_level + 1 : 1;
        unsigned counted = 1;
        // unreached: only a host that links classes in a cycle exceeds the bound
        for (const RtiFedClassNode *above = parent; above && counted <= kMaxClassNesting; above = above->_parent)
            ++counted;
        return level < counted ? counted : level;
    }

    std::unique_ptr<Owned> _owned; // null if there are none, as in every node of a database that a FED file made
    RtiFedTreeIndexes *_indexes = nullptr; // of the tree that the node is in; not owned
    unsigned _level = 1;                   // bounds the recursion over owned nodes
};
