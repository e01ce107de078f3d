#pragma once

#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedRaise.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiCrc.hh"

#include <cstdint>
#include <string_view>
#include <type_traits>

// The terms of a checksum. They are combined by XOR, so their order does not matter and two equal terms cancel; that
// weakness is accepted.

inline unsigned long checksumOf(std::string_view text) {
    return RtiCrc::computeCrc(text.data(), static_cast<long>(text.size()));
}

/// The term of a handle: the CRC of its 32 bits, least significant byte first on every machine. Throws
/// RTI::RTIinternalError if the handle does not fit into 32 bits.
template <class T, int N>
unsigned long checksumOf(const RtiTypeWrapper<T, N> &handle) {
    using Narrow = std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>;
    const auto narrow = static_cast<Narrow>(handle._value);
    if (static_cast<T>(narrow) != handle._value)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedChecksum\", line 20: the handle ", toString(handle._value),
                                           " does not fit into 32 bits");
    const auto bits = static_cast<std::uint32_t>(narrow);
    const unsigned char bytes[] = {
        static_cast<unsigned char>(bits & 0xFF), static_cast<unsigned char>(bits >> 8 & 0xFF),
        static_cast<unsigned char>(bits >> 16 & 0xFF), static_cast<unsigned char>(bits >> 24)};
    return RtiCrc::computeCrc(bytes, sizeof bytes);
}
