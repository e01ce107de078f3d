#pragma once

#include "fed/RtiFedElement.hh"
#include "fed/RtiTypeWrapper.hh"
#include "fed/image/RtiFedChecksum.hh"
#include "fed/storage/RtiFedStoredHandle.hh"

#include <utility>

/// An attribute of an object class: its name, its handle, and its transportation, ordering and routing space. The space
/// handle is 0 if the attribute has no space.
///
/// Its image is name, transportation, ordering, space, handle.
/// Threads: const members on any number of threads at once; setSpace and restore need exclusive access.
class RTIFED_EXPORT RtiFedAttribute : public RtiFedElement {
public:
    static constexpr const char *_thisClassName = "RtiFedAttribute";
    static constexpr const char *_thisClassVersion = "1.0";
    static constexpr std::size_t _numImageValues = 5; ///< A name and four handles.

    RtiFedAttribute(const RtiAttributeHandle &handle, std::string name, const RtiTransportationHandle &transport,
                    const RtiOrderingHandle &ordering, const RtiSpaceHandle &space)
        : RtiFedElement(std::move(name)), _theHandle(handle), _defaultTransport(transport), _defaultOrdering(ordering),
          _defaultSpace(space) {}
    RtiFedAttribute(const RtiAttributeHandle &handle, RtiFedLetters name, const RtiTransportationHandle &transport,
                    const RtiOrderingHandle &ordering, const RtiSpaceHandle &space)
        : RtiFedElement(name), _theHandle(handle), _defaultTransport(transport), _defaultOrdering(ordering),
          _defaultSpace(space) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedAttribute(RtiBuffer &buffer);
    /// Restores itself from an image whose name, which comes first, was read already.
    RtiFedAttribute(RtiFedLetters name, RtiFedImageReader &reader);

    RtiAttributeHandle getHandle() const { return _theHandle; }
    RtiTransportationHandle getTransport() const { return _defaultTransport; }
    RtiOrderingHandle getOrdering() const { return _defaultOrdering; }
    RtiSpaceHandle getSpace() const { return _defaultSpace; }
    void setSpace(RtiSpaceHandle space) { _defaultSpace = space; }

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override;
    void restore(RtiBuffer &buffer) override;
    void dump(std::ostream &os) override;
    /// Compares all fields except the name.
    void diff(RtiBuffer &buffer, std::ostream &os) override;

private:
    static const RtiFedField<RtiFedAttribute> _fields[4];
    static constexpr auto imageHandles();

    RtiFedStoredHandle<RtiAttributeHandle> _theHandle;
    RtiFedStoredHandle<RtiTransportationHandle> _defaultTransport;
    RtiFedStoredHandle<RtiOrderingHandle> _defaultOrdering;
    RtiFedStoredHandle<RtiSpaceHandle> _defaultSpace;
};

/// The terms of an attribute in the checksum of its class.
inline unsigned long checksumOf(const RtiFedAttribute &attribute) {
    return checksumOf(attribute.getHandle()) ^ checksumOf(attribute.nameText()) ^ checksumOf(attribute.getTransport()) ^
           checksumOf(attribute.getOrdering()) ^ checksumOf(attribute.getSpace());
}
