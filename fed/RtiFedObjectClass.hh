#pragma once

#include "fed/RtiFedAttribute.hh"
#include "fed/storage/RtiFedClassNode.hh"
#include "fed/storage/RtiFedPublished.hh"
#include "infrastructure/RtiAttributeHandleSet.hh"

#include <memory>
#include <set>

/// An object class: a node of the object class tree, with the attributes declared on it. Inherited attributes are found
/// by searching the ancestors; they are not copied.
///
/// It owns its attributes, the subclasses that its own addObjectClass made, and its sets of available attributes.
/// Its image is name, subclasses (each whole, by ascending handle), attributes, children, all descendants, handle,
/// parent's handle.
/// Lifetime: a returned record lives as long as the class.
/// Threads: const members on any number of threads at once; all others need exclusive access.
class RTIFED_EXPORT RtiFedObjectClass
    : public RtiFedClassNode<RtiFedObjectClass, RtiObjectClassHandle, RtiFedAttribute> {
public:
    static constexpr const char *_thisClassName = "RtiFedObjectClass";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = kNumSharedValues + 3; ///< The shared part, a count and two handles.
    static constexpr const char *_membersAre = "attributes";
    static constexpr std::string_view _rootPrefix = "OBJECTROOT.";

    /// `parent` is null for a root and is not owned. Throws RTI::RTIinternalError beyond kMaxClassNesting levels.
    RtiFedObjectClass(RtiObjectClassHandle handle, std::string name, RtiFedObjectClass *parent);
    RtiFedObjectClass(RtiObjectClassHandle handle, RtiFedLetters name, RtiFedObjectClass *parent);
    /// Restores itself from the buffer. Throws what restore throws.
    explicit RtiFedObjectClass(RtiBuffer &buffer);

    /// Makes a subclass that this node owns, and returns it. It is not added to the children: the database does that
    /// itself. Throws like the constructor.
    RtiFedObjectClass *addObjectClass(RtiObjectClassHandle handle, std::string name);

    /// Declares an attribute and returns it. Throws RTI::ErrorReadingFED if this class or an ancestor declares an
    /// attribute of that name, in any letter case. Existing subclasses are not checked.
    RtiFedAttribute *addAttribute(RtiAttributeHandle handle, std::string name, RtiTransportationHandle transport,
                                  RtiOrderingHandle ordering, RtiSpaceHandle space);
    RtiFedAttribute *addAttribute(const RtiAttributeHandle &handle, const RtiFedName &name,
                                  const RtiTransportationHandle &transport, const RtiOrderingHandle &ordering,
                                  const RtiSpaceHandle &space);

    /// Adds a descendant to this class and to each of its ancestors.
    void addChildClassToAll(RtiObjectClassHandle descendant);
    /// As in the base class; all ancestors list the subclass as well.
    void announceSubclass(RtiObjectClassHandle subclass);
    void reserveForSubclass(RtiObjectClassHandle subclass);

    /// Replaces the set of available attributes and frees the old one, unless it is the same.
    void setAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available);
    void setAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available);
    /// The sets, owned by this class; null until they are set or published. Do not change them.
    RtiAttributeHandleSet *getAvailableAttributes() const { return _availableAttributes.get(); }
    std::set<RtiFedAttribute *> *getAvailableFedAttributes() const { return _availableFedAttributes.get(); }
    /// Keeps the set unless another thread has published one, and returns the set that is kept.
    RtiAttributeHandleSet *publishAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available) const;
    std::set<RtiFedAttribute *> *
    publishAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available) const;

    /// Returns the handle of an attribute declared here, by its name in any letter case; 0 if there is none.
    RtiAttributeHandle getAttributeHandle(std::string_view name) const;
    /// The same, including inherited attributes.
    RtiAttributeHandle getAttributeHandleRecursive(std::string_view name) const;
    /// Whether this class itself declares the attribute.
    RTI_bool attributeExists(std::string_view name) const;
    /// Whether an ancestor declares it.
    RTI_bool attributeIsInherited(std::string_view name) const;
    /// Returns the name of an attribute declared here; an empty text if there is none.
    std::string getAttributeName(RtiAttributeHandle handle) const;
    /// The attribute of a handle, declared here. Throws RTI::RTIinternalError.
    RtiFedAttribute *find(RtiAttributeHandle handle) const;
    /// The attribute of a handle, declared here or inherited; null if there is none.
    RtiFedAttribute *findRecurse(RtiAttributeHandle handle) const;
    /// The attribute declared here at `index`, from 0. Throws RTI::RTIinternalError.
    RtiFedAttribute *getAttribute(unsigned long index) const;
    unsigned long getNumberOfAttributes() const;

    /// Returns the owned subclass whose *handle* is `index`. If there is none, returns null and adds an empty entry,
    /// which getNumberOfSubclasses counts and images leave out. Throws RTI::RTIinternalError if `index` is not below
    /// getNumberOfSubclasses.
    RtiFedObjectClass *getSubclass(unsigned long index);
    unsigned long getNumberOfSubclasses() const;
    /// Whether the class of this handle is a descendant, at any depth.
    RTI_bool hasDerrivedClass(RtiObjectClassHandle handle) const;
    /// The handles of all descendants, without a copy.
    const RtiFedHandleSet<RtiObjectClassHandle> &descendants() const { return _allChildrenClasses; }

    /// Returns a 32-bit checksum over names, handles and attributes of this class and the subclasses it owns. Throws
    /// RTI::RTIinternalError if a handle does not fit into 32 bits.
    unsigned long getChecksum() const;

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    /// Frees what the class owned. Throws RtiBufferUnderflow, and RTI::RTIinternalError for a duplicate member name, a
    /// duplicate subclass handle, or subclasses beyond kMaxClassNesting levels. The class is then partly restored.
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares handles and the numbers of elements.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

private:
    friend RtiFedClassNode;
    friend RtiFedArena;
    friend RtiFedClassTree<RtiFedObjectClass>;
    static const RtiFedField<RtiFedObjectClass> _fields[8];
    static constexpr auto imageHandles();

    RtiFedObjectClass() = default;
    explicit RtiFedObjectClass(RtiFedLetters name) : RtiFedClassNode(name) {}
    void restoreAfterName(RtiFedImageReader &reader);

    RtiFedHandleSet<RtiObjectClassHandle> _allChildrenClasses;
    RtiFedPublished<RtiAttributeHandleSet> _availableAttributes;
    RtiFedPublished<std::set<RtiFedAttribute *>> _availableFedAttributes;
};
