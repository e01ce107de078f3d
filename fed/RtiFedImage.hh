#pragma once

#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedRaise.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiBuffer.hh"

#include <cstddef>

// An image may come from anywhere: what no sound record could have written is refused, and memory is taken only in
// proportion to the bytes that are there.

/// The byte of the image that is read next, from 0.
inline std::size_t imageByte(const RtiBuffer &buffer) {
    return buffer.size() - buffer.remaining();
}

/// Throws RTI::RTIinternalError that names the byte and says what is wrong there.
template <class... Pieces>
[[noreturn]] void refuseImage(std::size_t byte, const Pieces &...pieces) {
    rtiFedRaise<RTI::RTIinternalError>("image byte ", toString(byte), ": ", pieces...);
}

/// Reads how many elements follow, each at least so many bytes long. Throws RTI::RTIinternalError if the bytes left
/// cannot hold that many.
inline unsigned long readCount(RtiBuffer &buffer, std::size_t leastBytesEach, const char *elements) {
    const std::size_t byte = imageByte(buffer);
    const unsigned long count = buffer.getUnsignedLong();
    if (count > buffer.remaining() / leastBytesEach)
        refuseImage(byte, toString(count), " ", elements, " need ", toString(leastBytesEach), " bytes each, ",
                    toString(buffer.remaining()), " are left");
    return count;
}
