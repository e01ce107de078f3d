#pragma once

#include "fed/RtiFedAttribute.hh"
#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedNumberedElement.hh"
#include "fed/RtiFedRaise.hh"
#include "infrastructure/RtiCrc.hh"

#include <string>

// The terms of a checksum, which are joined by XOR. Two equal terms cancel; that weakness is accepted.

inline unsigned long checksumOf(const std::string &text) {
    return RtiCrc::computeCrc(text.data(), static_cast<long>(text.size()));
}

/// A handle enters as its 32 bits, least significant byte first, on every machine. Throws RTI::RTIinternalError if it
/// is wider.
template <class T, int N>
unsigned long checksumOf(const RtiTypeWrapper<T, N> &handle) {
    const unsigned long bits = static_cast<unsigned long>(handle._value) & 0xFFFFFFFFUL;
    if (static_cast<T>(bits) != handle._value && static_cast<T>(bits) - handle._value != static_cast<T>(1) << 32)
        rtiFedRaise<RTI::RTIinternalError>("the handle ", toString(handle._value), " does not fit into 32 bits");
    const unsigned char bytes[] = {
        static_cast<unsigned char>(bits & 0xFF), static_cast<unsigned char>(bits >> 8 & 0xFF),
        static_cast<unsigned char>(bits >> 16 & 0xFF), static_cast<unsigned char>(bits >> 24)};
    return RtiCrc::computeCrc(bytes, sizeof bytes);
}

template <class Handle>
unsigned long checksumOf(const RtiFedNumberedElement<Handle> &element) {
    return checksumOf(element.getName()) ^ checksumOf(element.getHandle());
}

inline unsigned long checksumOf(const RtiFedAttribute &attribute) {
    return checksumOf(attribute.getHandle()) ^ checksumOf(attribute.getName()) ^ checksumOf(attribute.getTransport()) ^
           checksumOf(attribute.getOrdering()) ^ checksumOf(attribute.getSpace());
}
