#pragma once

#include "fed/RtiFedAttribute.hh"
#include "fed/storage/RtiFedClassNode.hh"
#include "fed/storage/RtiFedPublished.hh"
#include "infrastructure/RtiAttributeHandleSet.hh"

#include <memory>
#include <set>

/// An object class: a node of the object class tree, with the attributes declared on it. Attributes are inherited by
/// looking upward, never by copying.
///
/// It owns its attributes, the subclasses made by its own addObjectClass, and its sets of available attributes.
/// Its image is name, subclasses (each whole, by ascending handle), attributes, children, all descendants, handle,
/// parent's handle.
/// Lifetime: what is handed out by pointer lives as long as the class.
/// Threads: const members on any number of threads at once; all others need the class to themselves.
class RTIFED_EXPORT RtiFedObjectClass
    : public RtiFedClassNode<RtiFedObjectClass, RtiObjectClassHandle, RtiFedAttribute> {
public:
    static constexpr const char *_thisClassName = "RtiFedObjectClass";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = 7; ///< At least: a name, four counts, and two handles.
    static constexpr const char *_membersAre = "attributes";
    static constexpr std::string_view _rootPrefix = "OBJECTROOT.";

    /// `parent` is null for a root; it is not owned. Throws RTI::RTIinternalError beyond kMaxClassNesting levels.
    RtiFedObjectClass(RtiObjectClassHandle handle, std::string name, RtiFedObjectClass *parent);
    /// Restores itself from the buffer. Throws what restore throws.
    explicit RtiFedObjectClass(RtiBuffer &buffer);

    /// Makes a subclass, owned by this node, and returns it. It announces no child: the database does that itself.
    /// Throws as the constructor.
    RtiFedObjectClass *addObjectClass(RtiObjectClassHandle handle, std::string name);

    /// Declares an attribute and returns it. Throws RTI::ErrorReadingFED if this class or one above it declares an
    /// attribute of that name, in any letter case. Subclasses that exist already are not asked.
    RtiFedAttribute *addAttribute(RtiAttributeHandle handle, std::string name, RtiTransportationHandle transport,
                                  RtiOrderingHandle ordering, RtiSpaceHandle space);
    RtiFedAttribute *addAttribute(const RtiAttributeHandle &handle, const RtiFedName &name,
                                  const RtiTransportationHandle &transport, const RtiOrderingHandle &ordering,
                                  const RtiSpaceHandle &space);

    /// Announces a descendant to this class and every class above it.
    void addChildClassToAll(RtiObjectClassHandle descendant);
    /// Takes the memory for that, so that announcing this descendant next cannot fail.
    void makeRoomInAllFor(RtiObjectClassHandle descendant);

    /// Replaces the set of available attributes and frees the old one, unless it is the same.
    void setAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available);
    void setAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available);
    /// The sets held, still owned by this class, or null while there are none.
    RtiAttributeHandleSet *getAvailableAttributes() const { return _availableAttributes.get(); }
    std::set<RtiFedAttribute *> *getAvailableFedAttributes() const { return _availableFedAttributes.get(); }
    /// Keeps the set unless another thread was first; returns the one that is kept.
    RtiAttributeHandleSet *publishAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet> available) const;
    std::set<RtiFedAttribute *> *
    publishAvailableFedAttributes(std::unique_ptr<std::set<RtiFedAttribute *>> available) const;

    /// The handle of an attribute declared here, by its name in any letter case; 0 if there is none.
    RtiAttributeHandle getAttributeHandle(std::string_view name) const;
    /// The same, asking the classes above as well.
    RtiAttributeHandle getAttributeHandleRecursive(std::string_view name) const;
    /// Whether this class itself declares the attribute.
    RTI_bool attributeExists(std::string_view name) const;
    /// Whether a class above declares it; this class is not asked.
    RTI_bool attributeIsInherited(std::string_view name) const;
    /// The name of an attribute declared here, as declared; empty if there is none.
    std::string getAttributeName(RtiAttributeHandle handle) const;
    /// An attribute declared here. Throws RTI::RTIinternalError.
    RtiFedAttribute *find(RtiAttributeHandle handle) const;
    /// An attribute of this class or one above; null if there is none.
    RtiFedAttribute *findRecurse(RtiAttributeHandle handle) const;
    /// The attribute declared here at this place, from 0. Throws RTI::RTIinternalError.
    RtiFedAttribute *getAttribute(unsigned long index) const;
    unsigned long getNumberOfAttributes() const;

    /// The owned subclass whose *handle* is `index`; null if none has it, and then the class has one (empty) subclass
    /// more. Throws RTI::RTIinternalError if `index` is not below getNumberOfSubclasses.
    RtiFedObjectClass *getSubclass(unsigned long index);
    unsigned long getNumberOfSubclasses() const;
    /// Whether the handle is that of a descendant at any depth.
    RTI_bool hasDerrivedClass(RtiObjectClassHandle handle) const;
    /// The handles of all descendants, without a copy.
    const RtiFedHandleSet<RtiObjectClassHandle> &descendants() const { return _allChildrenClasses; }

    /// A 32-bit checksum over the names, handles and attributes of this class and the subclasses it owns. Throws
    /// RTI::RTIinternalError if a handle is wider than 32 bits.
    unsigned long getChecksum() const;

    RTI_bool save(RtiBuffer &buffer) const override;
    /// Frees what the class owned before. Throws RtiBufferUnderflow, and RTI::RTIinternalError for an image that no
    /// class has: a name or handle twice, or subclasses beyond kMaxClassNesting levels. The class is then partly
    /// restored.
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) const override;
    /// Compares handles and numbers of elements.
    void diff(RtiBuffer &buffer, std::ostream &os) const override;

private:
    friend RtiFedClassNode;
    friend RtiFedArena;
    friend RtiFedClassTree<RtiFedObjectClass>;
    static const RtiFedField<RtiFedObjectClass> _fields[8];

    RtiFedObjectClass() = default;
    RtiFedObjectClass(RtiBuffer &buffer, unsigned level);
    void restoreAtLevel(RtiBuffer &buffer, unsigned level);

    RtiFedHandleSet<RtiObjectClassHandle> _allChildrenClasses;
    RtiFedPublished<RtiAttributeHandleSet> _availableAttributes;
    RtiFedPublished<std::set<RtiFedAttribute *>> _availableFedAttributes;
};
