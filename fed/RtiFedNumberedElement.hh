#pragma once

#include "fed/RtiFedElement.hh"
#include "fed/image/RtiFedChecksum.hh"
#include "fed/image/RtiFedDump.hh"
#include "fed/image/RtiFedImage.hh"
#include "fed/storage/RtiFedStoredHandle.hh"

#include <utility>

/// A record of a name and a handle: the base of parameters and dimensions.
///
/// Its image is the name, then the handle. Dump and diff omit the name; callers rely on that.
/// Threads: as for RtiFedSaveable.
template <class Handle>
class RtiFedNumberedElement : public RtiFedElement {
public:
    static constexpr std::size_t _numImageValues = 2; ///< A name and a handle.

    RtiFedNumberedElement(const Handle &handle, std::string name)
        : RtiFedElement(std::move(name)), _theHandle(handle) {}
    RtiFedNumberedElement(const Handle &handle, RtiFedLetters name) : RtiFedElement(name), _theHandle(handle) {}
    /// Restores itself from the buffer. Throws RtiBufferUnderflow.
    explicit RtiFedNumberedElement(RtiBuffer &buffer) { RtiFedNumberedElement::restore(buffer); }
    /// Restores itself from an image whose name, which comes first, was read already.
    RtiFedNumberedElement(RtiFedLetters name, RtiFedImageReader &reader) : RtiFedElement(name) {
        _theHandle.restore(reader);
    }

    Handle getHandle() const { return _theHandle; }

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override {
        RtiFedElement::save(buffer);
        writeHandle(buffer, getHandle());
        return RTI_true;
    }
    void restore(RtiBuffer &buffer) override {
        RtiFedImageReader reader(buffer);
        restoreName(reader);
        _theHandle.restore(reader);
    }
    void dump(std::ostream &os) override { dumpFields(_fields, *this, os); }
    void diff(RtiBuffer &buffer, std::ostream &os) override { diffFields(_fields, *this, buffer, os); }

private:
    static const RtiFedField<RtiFedNumberedElement> _fields[1];

    RtiFedStoredHandle<Handle> _theHandle;
};

template <class Handle>
const RtiFedField<RtiFedNumberedElement<Handle>> RtiFedNumberedElement<Handle>::_fields[] = {
    {"_theHandle", [](const RtiFedNumberedElement &e) { return fieldText(e.getHandle()); }}};

/// The terms of a record in the checksum of its class or space.
template <class Handle>
unsigned long checksumOf(const RtiFedNumberedElement<Handle> &element) {
    return checksumOf(element.nameText()) ^ checksumOf(element.getHandle());
}
