#pragma once

#include "fed/RtiFedAttribute.hh"
#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedNumberedElement.hh"
#include "fed/RtiFedRaise.hh"
#include "infrastructure/RtiCrc.hh"

#include <cstdint>
#include <string>
#include <type_traits>

// The terms of a checksum, which are joined by XOR. Two equal terms cancel; that weakness is accepted.

inline unsigned long checksumOf(const std::string &text) {
    return RtiCrc::computeCrc(text.data(), static_cast<long>(text.size()));
}

/// A handle enters as its 32 bits, least significant byte first, on every machine. Throws RTI::RTIinternalError if it
/// is wider.
template <class T, int N>
unsigned long checksumOf(const RtiTypeWrapper<T, N> &handle) {
    using Narrow = std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>;
    const auto narrow = static_cast<Narrow>(handle._value);
    if (static_cast<T>(narrow) != handle._value)
        rtiFedRaise<RTI::RTIinternalError>("the handle ", toString(handle._value), " does not fit into 32 bits");
    const auto bits = static_cast<std::uint32_t>(narrow);
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
