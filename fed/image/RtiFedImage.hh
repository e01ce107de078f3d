#pragma once

#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedRaise.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <typeinfo>

// Reading and writing images. An image may come from anywhere, so restoring refuses what would be unsafe: counts that
// the remaining bytes cannot hold, classes nested in a cycle or too deeply, two classes or spaces of one handle or
// name. It never allocates more memory than the bytes read so far justify. Everything that the public interface can
// make is accepted, however unusual. The buffer decides how many bytes a number or a string has.

/// Whether a buffer reports its `size()` and its `remaining()` bytes: if it is of exactly a class that has the constant
/// `_leastValueSize`, the least number of bytes of a number and of a string. A class derived from it may store its
/// bytes elsewhere or in another form.
template <class Buffer, class = void>
struct RtiFedByteCount {
    static constexpr std::size_t leastValueSize = 1;
    static constexpr bool known(const Buffer &) { return false; }
    static constexpr std::size_t read(const Buffer &) { return 0; }
    static constexpr std::size_t remaining(const Buffer &) { return 0; }
};
template <class Buffer>
struct RtiFedByteCount<Buffer, std::void_t<decltype(Buffer::_leastValueSize)>> {
    static constexpr std::size_t leastValueSize = Buffer::_leastValueSize;
    static bool known(const Buffer &buffer) { return typeid(buffer) == typeid(Buffer); }
    static std::size_t read(const Buffer &buffer) { return buffer.size() - buffer.remaining(); }
    static std::size_t remaining(const Buffer &buffer) { return buffer.remaining(); }
};

/// Whether single handles may be written and read as plain numbers, which is faster: only if the buffer is of exactly a
/// class that declares `_handlesAreNumbers`, as ours does, since that gives the same bytes. Any other buffer, such as
/// one of a class derived from ours, gets each handle as an object.
template <class Buffer, class = void>
struct RtiFedPlainHandles {
    static constexpr bool allowed(const Buffer &) { return false; }
};
template <class Buffer>
struct RtiFedPlainHandles<Buffer, std::void_t<decltype(Buffer::_handlesAreNumbers)>> {
    static bool allowed(const Buffer &buffer) { return typeid(buffer) == typeid(Buffer); }
};

/// Whether an image may be read and written as the bytes that docs/image-format.md describes, without calling an
/// operation for each number: only if the buffer is of exactly a class that declares `_isPlainBytes`, as ours does.
template <class Buffer, class = void>
struct RtiFedPlainBytes {
    static constexpr bool allowed(const Buffer &) { return false; }
    static constexpr const unsigned char *next(const Buffer &) { return nullptr; }
    static constexpr void skip(Buffer &, std::size_t) {}
    static void putText(Buffer &, std::string_view) {}
};
template <class Buffer>
struct RtiFedPlainBytes<Buffer, std::void_t<decltype(Buffer::_isPlainBytes)>> {
    static bool allowed(const Buffer &buffer) { return typeid(buffer) == typeid(Buffer); }
    static const unsigned char *next(const Buffer &buffer) {
        return buffer.data() + (buffer.size() - buffer.remaining());
    }
    static void skip(Buffer &buffer, std::size_t size) { buffer.skip(size); }
    static void putText(Buffer &buffer, std::string_view text) {
        buffer.Buffer::put(static_cast<unsigned long>(text.size()));
        buffer.Buffer::putBytes(text.data(), text.size());
    }
};

inline constexpr std::size_t kUnknownByte = SIZE_MAX;

/// Throws RTI::RTIinternalError with a message that gives the byte, if it is known, and the reason.
template <class... Pieces>
[[noreturn]] void refuseImage(std::size_t byte, const Pieces &...pieces) {
    rtiFedRaise<RTI::RTIinternalError>(byte == kUnknownByte ? "image: " : "image byte " + toString(byte) + ": ",
                                       pieces...);
}

/// Reads an image from the position of a buffer. While it exists, nothing else may use the buffer, whose position
/// follows in the destructor.
///
/// Most of an image are numbers, so a call of a virtual operation for each would take much of a restore. From plain
/// bytes, numbers and strings are taken directly. Whatever cannot be taken so, since the buffer is another one or has
/// too few bytes, is left to the buffer's own operations, which then read it or throw.
template <class Buffer>
class RtiFedBufferReader {
    using Bytes = RtiFedByteCount<Buffer>;
    using PlainBytes = RtiFedPlainBytes<Buffer>;

public:
    explicit RtiFedBufferReader(Buffer &buffer)
        : _buffer(buffer), _bytesAreKnown(Bytes::known(buffer)),
          _handlesArePlain(RtiFedPlainHandles<Buffer>::allowed(buffer)) {
        if (PlainBytes::allowed(buffer)) {
            _begin = _next = PlainBytes::next(buffer);
            _left = Bytes::remaining(buffer);
        }
    }
    ~RtiFedBufferReader() { moveBuffer(); }
    RtiFedBufferReader(const RtiFedBufferReader &) = delete;
    RtiFedBufferReader &operator=(const RtiFedBufferReader &) = delete;

    /// The offset of the byte that is read next, from 0, or kUnknownByte.
    std::size_t byte() const {
        return _bytesAreKnown ? Bytes::read(_buffer) + static_cast<std::size_t>(_next - _begin) : kUnknownByte;
    }

    unsigned long number() {
        if (_left >= kNumberSize)
            return take();
        moveBuffer();
        return _buffer.getUnsignedLong();
    }

    /// The next string. The view is valid until the next one is read.
    std::string_view string() {
        if (_left >= kNumberSize && numberAt(_next) <= _left - kNumberSize) {
            const std::size_t size = take();
            const auto *letters = reinterpret_cast<const char *>(_next);
            skip(size);
            return {letters, size};
        }
        moveBuffer();
        _string = RtiStringUtility::getString(_buffer);
        return _string;
    }

    template <class T, int N>
    void read(RtiTypeWrapper<T, N> &handle) {
        using Narrow = std::conditional_t<std::is_signed_v<T>, std::int32_t, std::uint32_t>;
        if (_left >= kNumberSize) {
            handle._value = static_cast<Narrow>(take());
            return;
        }
        moveBuffer();
        if (_handlesArePlain)
            _buffer.Buffer::get(&handle._value, 1);
        else
            _buffer.get(handle);
    }
    /// Reads two handles, in one call if possible.
    template <int M, int N>
    void read(RtiTypeWrapper<unsigned long, M> &first, RtiTypeWrapper<unsigned long, N> &second) {
        if (_left < 2 * kNumberSize && _handlesArePlain) {
            moveBuffer();
            unsigned long values[2];
            _buffer.Buffer::get(values, 2);
            first = values[0];
            second = values[1];
        } else {
            read(first);
            read(second);
        }
    }

    /// Reads the number of elements that follow, each of at least `valuesEach` numbers and strings. Throws
    /// RTI::RTIinternalError if the buffer counts its bytes and too few remain for that many elements.
    unsigned long count(std::size_t valuesEach, const char *elements) {
        const std::size_t begin = byte();
        const unsigned long count = number();
        const std::size_t bytesEach = valuesEach * Bytes::leastValueSize;
        if (_bytesAreKnown && count > remaining() / bytesEach)
            refuseImage(begin, toString(count), " ", elements, " need ", toString(bytesEach), " bytes each, ",
                        toString(remaining()), " are left");
        return count;
    }

    /// The number of elements to allocate memory for before reading `count` of them. A count that could not be compared
    /// with the remaining bytes may be far too large; then the containers grow as they are filled.
    std::size_t countToReserve(unsigned long count) const { return _bytesAreKnown ? count : std::min(count, 1000UL); }

private:
    static constexpr std::size_t kNumberSize = 4;

    static std::uint32_t numberAt(const unsigned char *bytes) {
        return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
               static_cast<std::uint32_t>(bytes[2]) << 8 | static_cast<std::uint32_t>(bytes[3]);
    }
    void skip(std::size_t size) {
        _next += size;
        _left -= size;
    }
    std::uint32_t take() {
        const std::uint32_t number = numberAt(_next);
        skip(kNumberSize);
        return number;
    }
    std::size_t remaining() const { return Bytes::remaining(_buffer) - static_cast<std::size_t>(_next - _begin); }

    /// Moves the buffer's position to where this object has read.
    void moveBuffer() {
        PlainBytes::skip(_buffer, static_cast<std::size_t>(_next - _begin));
        _begin = _next;
    }

    Buffer &_buffer;
    const bool _bytesAreKnown, _handlesArePlain;
    // The bytes that were read since the buffer's position was moved last, and the number of those after them that may
    // be read directly.
    const unsigned char *_begin = nullptr, *_next = nullptr;
    std::size_t _left = 0;
    std::string _string;
};
using RtiFedImageReader = RtiFedBufferReader<RtiBuffer>;

template <class Buffer, class T, int N>
void writeHandle(Buffer &buffer, RtiTypeWrapper<T, N> handle) {
    if (RtiFedPlainHandles<Buffer>::allowed(buffer))
        buffer.Buffer::put(handle._value);
    else
        buffer.put(handle);
}

template <class Buffer>
void writeString(Buffer &buffer, std::string_view text) {
    if (RtiFedPlainBytes<Buffer>::allowed(buffer))
        RtiFedPlainBytes<Buffer>::putText(buffer, text);
    else
        RtiStringUtility::putString(std::string(text), buffer);
}

/// Writes and reads the handles of a record, given as a tuple of pointers to members in the order of the image.
template <class Members, class Record>
void saveHandles(const Members &members, const Record &record, RtiBuffer &buffer) {
    std::apply([&](const auto &...member) { (writeHandle(buffer, (record.*member).get()), ...); }, members);
}
template <class Members, class Record>
void restoreHandles(const Members &members, Record &record, RtiFedImageReader &reader) {
    std::apply([&](const auto &...member) { ((record.*member).restore(reader), ...); }, members);
}
