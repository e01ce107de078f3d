#include "infrastructure/RtiBuffer.hh"

#include "infrastructure/RtiSaveableType.hh"

#include <cstdint>
#include <cstring>
#include <string>

namespace {

constexpr std::size_t kNumberSize = RtiBuffer::_leastValueSize;
constexpr unsigned long kLargest = 0xFFFFFFFFUL;
constexpr long kLargestSigned = 0x7FFFFFFFL;
constexpr long kSmallestSigned = -kLargestSigned - 1;

[[noreturn]] void refuse(const std::string &value) {
    throw RtiBufferOverflow(("the number " + value + " does not fit into the 32 bits of an image").c_str());
}

unsigned long numberAt(const unsigned char *bytes) {
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
}

} // namespace

RtiBuffer::RtiBuffer() = default;

RtiBuffer::RtiBuffer(const void *bytes, std::size_t size) {
    RtiBuffer::putBytes(bytes, size);
}

RtiBuffer::~RtiBuffer() = default;

void RtiBuffer::put(unsigned long value) {
    if (value > kLargest)
        refuse(std::to_string(value));
    append32(value);
}

void RtiBuffer::put(long value) {
    if (value < kSmallestSigned || value > kLargestSigned)
        refuse(std::to_string(value));
    append32(static_cast<unsigned long>(value) & kLargest);
}

void RtiBuffer::put(RtiSaveableType &object) {
    object.save(*this);
}

/// Returns the bytes of the next numbers and moves the read position after them.
inline const unsigned char *RtiBuffer::takeNumbers(unsigned long count) {
    if (count > remaining() / kNumberSize)
        lacksNumbers(count);
    const unsigned char *bytes = _bytes.data() + _position;
    _position += count * kNumberSize;
    return bytes;
}

void RtiBuffer::get(unsigned long *values, unsigned long count) {
    const unsigned char *bytes = takeNumbers(count);
    for (unsigned long i = 0; i < count; ++i)
        values[i] = numberAt(bytes + i * kNumberSize);
}

void RtiBuffer::get(long *values, unsigned long count) {
    const unsigned char *bytes = takeNumbers(count);
    for (unsigned long i = 0; i < count; ++i) {
        const unsigned long bits = numberAt(bytes + i * kNumberSize);
        // Two's complement by arithmetic: `long` may be wider than the 32 bits.
        values[i] = bits <= static_cast<unsigned long>(kLargestSigned) ? static_cast<long>(bits)
                                                                       : -static_cast<long>(kLargest - bits) - 1;
    }
}

void RtiBuffer::get(RtiSaveableType &object) {
    object.restore(*this);
}

unsigned long RtiBuffer::getUnsignedLong() {
    return numberAt(takeNumbers(1));
}

void RtiBuffer::putBytes(const void *bytes, std::size_t size) {
    const auto *first = static_cast<const unsigned char *>(bytes);
    _bytes.insert(_bytes.end(), first, first + size);
}

void RtiBuffer::getBytes(void *bytes, std::size_t size) {
    if (size > remaining())
        underflow(size);
    if (size > 0) // equivalent: else `bytes` may be null, which no machine minds
        std::memcpy(bytes, _bytes.data() + _position, size);
    _position += size;
}

void RtiBuffer::lacksNumbers(unsigned long count) const {
    underflow(std::to_string(count) + (count == 1 ? " number" : " numbers") + " of 4 bytes");
}

void RtiBuffer::underflow(std::size_t size) const {
    underflow(std::to_string(size) + " bytes");
}

void RtiBuffer::underflow(const std::string &wanted) const {
    throw RtiBufferUnderflow(("byte " + std::to_string(_position) + ": " + wanted + " wanted, " +
                              std::to_string(remaining()) + " bytes left")
                                 .c_str());
}

void RtiBuffer::append32(unsigned long value) {
    const unsigned char bytes[kNumberSize] = {
        static_cast<unsigned char>(value >> 24 & 0xFF), static_cast<unsigned char>(value >> 16 & 0xFF),
        static_cast<unsigned char>(value >> 8 & 0xFF), static_cast<unsigned char>(value & 0xFF)};
    putBytes(bytes, sizeof bytes);
}
