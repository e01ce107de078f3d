#pragma once

#include "infrastructure/RtiSaveableType.hh"

#include <stdexcept>

/// A number is eight bytes, the least significant first. Objects that pass through the buffer are counted.
class RtiBuffer {
public:
    RtiBuffer() = default;
    explicit RtiBuffer(std::string bytes) : _bytes(std::move(bytes)) {}
    virtual ~RtiBuffer() = default;

    virtual void put(unsigned long value) { appendNumber(value, 8); }
    virtual void put(long value) { appendNumber(static_cast<unsigned long long>(value), 8); }
    virtual void put(RtiSaveableType &object) {
        ++numObjects;
        object.save(*this);
    }
    virtual void get(unsigned long *values, unsigned long count) {
        for (unsigned long i = 0; i < count; ++i)
            values[i] = getUnsignedLong();
    }
    virtual void get(long *values, unsigned long count) {
        for (unsigned long i = 0; i < count; ++i)
            values[i] = static_cast<long>(getUnsignedLong());
    }
    virtual void get(RtiSaveableType &object) {
        ++numObjects;
        object.restore(*this);
    }
    virtual unsigned long getUnsignedLong() { return takeNumber(8); }

    int numObjects = 0;
    const std::string &bytes() const { return _bytes; }

    void append(const std::string &bytes) { _bytes += bytes; }
    void appendNumber(unsigned long long value, unsigned size) {
        for (; size > 0; --size, value >>= 8)
            _bytes += static_cast<char>(value & 0xFF);
    }
    std::string take(std::size_t size) {
        if (size > _bytes.size() - _next)
            throw std::out_of_range("the image is too short");
        _next += size;
        return _bytes.substr(_next - size, size);
    }
    unsigned long takeNumber(unsigned size) {
        unsigned long long value = 0;
        const std::string bytes = take(size);
        for (unsigned i = 0; i < size; ++i)
            value |= static_cast<unsigned long long>(static_cast<unsigned char>(bytes[i])) << 8 * i;
        return static_cast<unsigned long>(value);
    }

private:
    std::string _bytes;
    std::size_t _next = 0;
};
