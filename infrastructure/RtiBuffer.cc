#include "infrastructure/RtiBuffer.hh"

#include "infrastructure/RtiSaveableType.hh"

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

} // namespace

RtiBuffer::RtiBuffer() = default;

RtiBuffer::RtiBuffer(const void *bytes, std::size_t size) {
    putBytes(bytes, size);
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

void RtiBuffer::put(const RtiSaveableType &object) {
    object.save(*this);
}

void RtiBuffer::get(unsigned long *values, unsigned long count) {
    requireNumbers(count);
    for (unsigned long i = 0; i < count; ++i)
        values[i] = read32();
}

void RtiBuffer::get(long *values, unsigned long count) {
    requireNumbers(count);
    for (unsigned long i = 0; i < count; ++i) {
        const unsigned long bits = read32();
        // Two's complement by arithmetic: `long` may be wider than the 32 bits.
        values[i] = bits <= static_cast<unsigned long>(kLargestSigned) ? static_cast<long>(bits)
                                                                       : -static_cast<long>(kLargest - bits) - 1;
    }
}

void RtiBuffer::get(RtiSaveableType &object) {
    object.restore(*this);
}

unsigned long RtiBuffer::getUnsignedLong() {
    requireNumbers(1);
    return read32();
}

void RtiBuffer::putBytes(const void *bytes, std::size_t size) {
    const auto *first = static_cast<const unsigned char *>(bytes);
    _bytes.insert(_bytes.end(), first, first + size);
}

void RtiBuffer::getBytes(void *bytes, std::size_t size) {
    if (size > remaining())
        underflow(std::to_string(size) + " bytes");
    if (size > 0)
        std::memcpy(bytes, _bytes.data() + _position, size);
    _position += size;
}

void RtiBuffer::requireNumbers(unsigned long count) const {
    if (count > remaining() / kNumberSize)
        underflow(std::to_string(count) + (count == 1 ? " number" : " numbers") + " of 4 bytes");
}

void RtiBuffer::underflow(const std::string &wanted) const {
    throw RtiBufferUnderflow(("byte " + std::to_string(_position) + ": " + wanted + " wanted, " +
                              std::to_string(remaining()) + " bytes left")
                                 .c_str());
}

unsigned long RtiBuffer::read32() {
    const unsigned char *bytes = &_bytes[_position];
    _position += kNumberSize;
    return static_cast<unsigned long>(bytes[0]) << 24 | static_cast<unsigned long>(bytes[1]) << 16 |
           static_cast<unsigned long>(bytes[2]) << 8 | static_cast<unsigned long>(bytes[3]);
}

void RtiBuffer::append32(unsigned long value) {
    const unsigned char bytes[kNumberSize] = {
        static_cast<unsigned char>(value >> 24 & 0xFF), static_cast<unsigned char>(value >> 16 & 0xFF),
        static_cast<unsigned char>(value >> 8 & 0xFF), static_cast<unsigned char>(value & 0xFF)};
    putBytes(bytes, sizeof bytes);
}
