#pragma once

#include "fed/RtiFedExceptions.hh"
#include "fed/RtiFedRaise.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiBuffer.hh"

#include <algorithm>
#include <cstddef>
#include <cstdint>
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

inline constexpr std::size_t kUnknownByte = SIZE_MAX;

/// The offset of the byte that is read next, from 0, or kUnknownByte.
template <class Buffer>
std::size_t imageByte(const Buffer &buffer) {
    return RtiFedByteCount<Buffer>::known(buffer) ? RtiFedByteCount<Buffer>::read(buffer) : kUnknownByte;
}

/// Throws RTI::RTIinternalError with a message that gives the byte, if it is known, and the reason.
template <class... Pieces>
[[noreturn]] void refuseImage(std::size_t byte, const Pieces &...pieces) {
    rtiFedRaise<RTI::RTIinternalError>(byte == kUnknownByte ? "image: " : "image byte " + toString(byte) + ": ",
                                       pieces...);
}

/// Reads the number of elements that follow, each of at least `valuesEach` numbers and strings. Throws
/// RTI::RTIinternalError if the buffer counts its bytes and too few remain for that many elements.
template <class Buffer>
unsigned long readCount(Buffer &buffer, std::size_t valuesEach, const char *elements) {
    using Bytes = RtiFedByteCount<Buffer>;
    const std::size_t byte = imageByte(buffer);
    const unsigned long count = buffer.getUnsignedLong();
    const std::size_t bytesEach = valuesEach * Bytes::leastValueSize;
    if (Bytes::known(buffer) && count > Bytes::remaining(buffer) / bytesEach)
        refuseImage(byte, toString(count), " ", elements, " need ", toString(bytesEach), " bytes each, ",
                    toString(Bytes::remaining(buffer)), " are left");
    return count;
}

/// The number of elements to allocate memory for before reading `count` of them. A count that could not be compared
/// with the remaining bytes may be far too large; then the containers grow as they are filled.
template <class Buffer>
std::size_t countToReserve(const Buffer &buffer, unsigned long count) {
    return RtiFedByteCount<Buffer>::known(buffer) ? count : std::min(count, 1000UL);
}

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

template <class Buffer, class T, int N>
void writeHandle(Buffer &buffer, RtiTypeWrapper<T, N> handle) {
    if (RtiFedPlainHandles<Buffer>::allowed(buffer))
        buffer.Buffer::put(handle._value);
    else
        buffer.put(handle);
}

/// Reads the handles of a record, a set or a list. It asks only once how the buffer stores them.
template <class Buffer>
class RtiFedHandleReader {
public:
    explicit RtiFedHandleReader(Buffer &buffer)
        : _buffer(buffer), _arePlain(RtiFedPlainHandles<Buffer>::allowed(buffer)) {}

    template <class Handle>
    void read(Handle &handle) const {
        if (_arePlain)
            _buffer.Buffer::get(&handle._value, 1);
        else
            _buffer.get(handle);
    }
    /// Reads two handles, in one call if possible.
    template <int M, int N>
    void read(RtiTypeWrapper<unsigned long, M> &first, RtiTypeWrapper<unsigned long, N> &second) const {
        if (_arePlain) {
            unsigned long values[2];
            _buffer.Buffer::get(values, 2);
            first = values[0];
            second = values[1];
        } else {
            read(first);
            read(second);
        }
    }

private:
    Buffer &_buffer;
    const bool _arePlain;
};

/// Writes and reads the handles of a record, given as a tuple of pointers to members in the order of the image.
template <class Members, class Record>
void saveHandles(const Members &members, const Record &record, RtiBuffer &buffer) {
    std::apply([&](const auto &...member) { (writeHandle(buffer, (record.*member).get()), ...); }, members);
}
template <class Members, class Record>
void restoreHandles(const Members &members, Record &record, RtiBuffer &buffer) {
    const RtiFedHandleReader<RtiBuffer> reader(buffer);
    std::apply([&](const auto &...member) { ((record.*member).restore(reader), ...); }, members);
}
