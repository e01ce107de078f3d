#pragma once

#include "infrastructure/RtiExceptions.hh"

#include <cstddef>
#include <string>
#include <vector>

class RtiSaveableType;

/// A growing byte buffer in memory with one read position. Objects save themselves into it and restore themselves from
/// it.
///
/// A 32-bit number is four bytes, most significant first, signed ones in two's complement, so that an image is the same
/// bytes on every machine. What `put` writes, the `get` of the same type reads back, in the same order.
/// A failing `get` leaves the read position where it was.
/// Threads: a buffer belongs to one thread at a time.
class RTI_EXPORT RtiBuffer {
public:
    /// The size of a number, and the least size of a string, which begins with its length.
    static constexpr std::size_t _leastValueSize = 4;

    /// A handle may be written and read as its number, without calling `put` and `get` for the handle object.
    static constexpr bool _handlesAreNumbers = true;

    /// An image in an object of exactly this class may be read from `data()`, `skip` then moving the read position, and
    /// each string may be read and written as its length and its bytes.
    static constexpr bool _isPlainBytes = true;

    RtiBuffer();
    /// Copies `size` bytes; the read position is at the first.
    RtiBuffer(const void *bytes, std::size_t size);
    virtual ~RtiBuffer();

    /// Appends a number. Throws RtiBufferOverflow if it is wider than 32 bits.
    virtual void put(unsigned long value);
    virtual void put(long value);
    /// Appends what the object's own save writes and nothing else.
    virtual void put(RtiSaveableType &object);

    /// Reads `count` numbers into the array. Throws RtiBufferUnderflow, the array then being untouched.
    virtual void get(unsigned long *values, unsigned long count);
    virtual void get(long *values, unsigned long count);
    /// Lets the object restore itself from the read position.
    virtual void get(RtiSaveableType &object);
    /// Reads one number, such as the count of elements that follow. Throws RtiBufferUnderflow.
    virtual unsigned long getUnsignedLong();

    /// Appends or reads raw bytes. Reading throws RtiBufferUnderflow, the target then being untouched.
    virtual void putBytes(const void *bytes, std::size_t size);
    virtual void getBytes(void *bytes, std::size_t size);

    /// All bytes, including those already read. The pointer is valid until the next put.
    const unsigned char *data() const { return _bytes.data(); }
    std::size_t size() const { return _bytes.size(); }
    /// The number of bytes not yet read.
    std::size_t remaining() const { return _bytes.size() - _position; }
    /// Moves the read position back to the first byte.
    void rewind() { _position = 0; }
    /// Moves the read position `size` bytes on. Throws RtiBufferUnderflow.
    void skip(std::size_t size) {
        if (size > remaining())
            underflow(size);
        _position += size;
    }

private:
    const unsigned char *takeNumbers(unsigned long count);
    [[noreturn]] void lacksNumbers(unsigned long count) const;
    [[noreturn]] void underflow(std::size_t size) const;
    [[noreturn]] void underflow(const std::string &wanted) const;
    void append32(unsigned long value);

    std::vector<unsigned char> _bytes;
    std::size_t _position = 0;
};
