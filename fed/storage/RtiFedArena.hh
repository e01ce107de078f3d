#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

/// A bump allocator for the many small records of a database: allocating advances a pointer within a block, and all
/// blocks are freed with the arena.
///
/// No record is freed alone, which a database never needs: it only grows until it is replaced as a whole. Blocks double
/// up to 32 KiB, so a small database stays small and a large one wastes at most one block.
/// Threads: an arena belongs to one thread at a time; the objects in it do not.
class RtiFedArena {
public:
    /// Allocates `size` bytes, so that the byte at offset `offset` is aligned to `alignment`. Throws std::bad_alloc.
    [[gnu::always_inline]] void *allocate(std::size_t size, std::size_t alignment, std::size_t offset = 0) {
        if (_left < gapBefore(alignment, offset) + size)
            addBlock(size + alignment);
        const std::size_t skipped = gapBefore(alignment, offset);
        if (skipped >= alignof(std::max_align_t)) {
            _gap = _next; // an even address: no size is odd
            _leftInGap = skipped;
        }
        std::byte *allocated = _next + skipped;
        _next = allocated + size;
        _left -= skipped + size;
        return allocated;
    }

    /// Allocates `size` bytes at an even address, in the last gap that an alignment left if they fit there. Throws
    /// std::bad_alloc.
    char *allocateLetters(std::size_t size) {
        const std::size_t even = size + size % 2;
        if (even > _leftInGap)
            return static_cast<char *>(allocate(even, 2));
        _leftInGap -= even;
        return reinterpret_cast<char *>(std::exchange(_gap, _gap + even));
    }

    /// Makes an object, which the caller must destroy before the arena is destroyed. If the constructor throws, the
    /// memory can be used again, so it must not allocate from this arena itself.
    template <class T, std::size_t alignment = alignof(T), std::size_t offset = 0, class... Arguments>
    T *make(Arguments &&...arguments) {
        static_assert(alignment % alignof(T) == 0 && offset % alignof(T) == 0);
        auto *allocated = static_cast<std::byte *>(allocate(sizeof(T), alignment, offset));
        try {
            return new (allocated) T(std::forward<Arguments>(arguments)...);
        } catch (...) {
            _left += static_cast<std::size_t>(_next - allocated);
            _next = allocated;
            throw;
        }
    }

private:
    static constexpr std::size_t kFirstBlock = 128, kGreatestBlock = 32768; // bytes

    std::size_t gapBefore(std::size_t alignment, std::size_t offset) const {
        return (0 - (reinterpret_cast<std::uintptr_t>(_next) + offset)) & (alignment - 1); // a power of 2
    }

    [[gnu::noinline]] void addBlock(std::size_t atLeast) {
        const std::size_t size =
            std::max(atLeast, std::min(kFirstBlock << std::min<std::size_t>(_blocks.size(), 9), kGreatestBlock));
        _blocks.push_back(std::unique_ptr<std::byte[]>(new std::byte[size]));
        _next = _blocks.back().get();
        _left = size;
    }

    std::vector<std::unique_ptr<std::byte[]>> _blocks;
    std::byte *_next = nullptr;
    std::size_t _left = 0;
    std::byte *_gap = nullptr; // free bytes that an alignment skipped
    std::size_t _leftInGap = 0;
};

/// A deleter for objects in an arena: it destroys the object and leaves the memory to the arena.
struct RtiFedDestroy {
    template <class T>
    void operator()(T *object) const {
        object->~T();
    }
};
