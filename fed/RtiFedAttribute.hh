#pragma once

#include "fed/RtiFedElement.hh"
#include "fed/RtiTypeWrapper.hh"
#include "fed/storage/RtiFedStoredHandle.hh"

#include <utility>

/// An attribute of an object class: its name, its handle, and the transportation, ordering and routing space that the
/// FED file gives it. The space handle is 0 for an attribute in no space.
///
/// Its image is the name, transportation, ordering, space, handle.
/// Threads: const members on any number of threads at once; setSpace and restore need the attribute to themselves.
class RTIFED_EXPORT RtiFedAttribute : public RtiFedElement {
public:
    static constexpr const char *_thisClassName = "RtiFedAttribute";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = 5; ///< At least: a name, and four handles.

    RtiFedAttribute(const RtiAttributeHandle &handle, std::string name, const RtiTransportationHandle &transport,
                    const RtiOrderingHandle &ordering, const RtiSpaceHandle &space)
        : RtiFedElement(std::move(name)), _theHandle(handle), _defaultTransport(transport), _defaultOrdering(ordering),
          _defaultSpace(space) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedAttribute(RtiBuffer &buffer);

    RtiAttributeHandle getHandle() const { return _theHandle; }
    RtiTransportationHandle getTransport() const { return _defaultTransport; }
    RtiOrderingHandle getOrdering() const { return _defaultOrdering; }
    RtiSpaceHandle getSpace() const { return _defaultSpace; }
    void setSpace(RtiSpaceHandle space) { _defaultSpace = space; }

    RTI_bool save(RtiBuffer &buffer) const override;
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) const override;
    /// Compares all but the name.
    void diff(RtiBuffer &buffer, std::ostream &os) const override;

private:
    static const RtiFedField<RtiFedAttribute> _fields[4];
    template <class Attribute, class Visit>
    static void visitImage(Attribute &attribute, Visit visit);

    RtiFedStoredHandle<RtiAttributeHandle> _theHandle;
    RtiFedStoredHandle<RtiTransportationHandle> _defaultTransport;
    RtiFedStoredHandle<RtiOrderingHandle> _defaultOrdering;
    RtiFedStoredHandle<RtiSpaceHandle> _defaultSpace;
};
