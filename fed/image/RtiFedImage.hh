#pragma once

#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedRaise.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiBuffer.hh"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

// An image may come from anywhere: what no sound record could have written is refused, and memory is taken only in
// proportion to the bytes that are there. How many bytes a number or a string takes is the buffer's business.

/// Whether a buffer tells how many bytes it has, `size()`, and how many of them are not read yet, `remaining()`. One
/// that does has a constant `_leastValueSize`: the bytes that any number and any string takes at least.
template <class Buffer, class = void>
inline constexpr bool tellsBytes = false;
template <class Buffer>
inline constexpr bool tellsBytes<Buffer, std::void_t<decltype(Buffer::_leastValueSize)>> = true;

inline constexpr std::size_t kUnknownByte = SIZE_MAX;

/// The byte of the image that is read next, from 0, or kUnknownByte.
template <class Buffer>
std::size_t imageByte(const Buffer &buffer) {
    if constexpr (tellsBytes<Buffer>)
        return buffer.size() - buffer.remaining();
    else
        return kUnknownByte;
}

/// Throws RTI::RTIinternalError that names the byte, if it is known, and says what is wrong there.
template <class... Pieces>
[[noreturn]] void refuseImage(std::size_t byte, const Pieces &...pieces) {
    rtiFedRaise<RTI::RTIinternalError>(byte == kUnknownByte ? "image: " : "image byte " + toString(byte) + ": ",
                                       pieces...);
}

/// Reads how many elements follow, each of at least so many numbers and strings. Throws RTI::RTIinternalError if the
/// buffer tells that the bytes left cannot hold them.
template <class Buffer>
unsigned long readCount(Buffer &buffer, std::size_t valuesEach, const char *elements) {
    const std::size_t byte = imageByte(buffer);
    const unsigned long count = buffer.getUnsignedLong();
    if constexpr (tellsBytes<Buffer>) {
        const std::size_t bytesEach = valuesEach * Buffer::_leastValueSize;
        if (count > buffer.remaining() / bytesEach)
            refuseImage(byte, toString(count), " ", elements, " need ", toString(bytesEach), " bytes each, ",
                        toString(buffer.remaining()), " are left");
    }
    return count;
}

/// Of so many elements that are to be read: for how many to take memory at once. A number that was not compared with
/// the bytes left may be far too large, and then the memory grows with what is read.
template <class Buffer>
std::size_t atOnce(const Buffer &, unsigned long count) {
    return tellsBytes<Buffer> ? count : std::min(count, 1000UL);
}
