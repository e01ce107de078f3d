#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>
#include <vector>

/// Memory for the many small records that a database makes and that go together with it: to take some is a step forward
/// in a block, and the blocks are given back as a whole, when the arena goes.
///
/// Threads: an arena belongs to one thread at a time; what stands in it does not.
class RtiFedArena {
public:
    /// Memory for `size` bytes. What is aligned is the byte so far behind its beginning.
    void *take(std::size_t size, std::size_t alignment, std::size_t behind = 0) {
        std::size_t skipped = gapBefore(alignment, behind);
        if (_left < skipped + size) {
            addBlock(size + alignment);
            skipped = gapBefore(alignment, behind);
        }
        std::byte *taken = _next + skipped;
        _next = taken + size;
        _left -= skipped + size;
        return taken;
    }

    /// Makes an object. Whoever holds it destroys it, before the arena goes. If its constructor throws, its memory is
    /// free again.
    template <class T, std::size_t alignment = alignof(T), std::size_t behind = 0, class... Arguments>
    T *make(Arguments &&...arguments) {
        static_assert(alignment % alignof(T) == 0 && behind % alignof(T) == 0);
        auto *taken = static_cast<std::byte *>(take(sizeof(T), alignment, behind));
        try {
            return new (taken) T(std::forward<Arguments>(arguments)...);
        } catch (...) {
            _left += static_cast<std::size_t>(_next - taken);
            _next = taken;
            throw;
        }
    }

private:
    static constexpr std::size_t kFirstBlock = 128, kGreatestBlock = 65536; // bytes

    std::size_t gapBefore(std::size_t alignment, std::size_t behind) const {
        return (alignment - (reinterpret_cast<std::uintptr_t>(_next) + behind) % alignment) % alignment;
    }

    void addBlock(std::size_t atLeast) {
        const std::size_t size =
            std::max(atLeast, std::min(kFirstBlock << std::min<std::size_t>(_blocks.size(), 9), kGreatestBlock));
        _blocks.push_back(std::unique_ptr<std::byte[]>(new std::byte[size]));
        _next = _blocks.back().get();
        _left = size;
    }

    std::vector<std::unique_ptr<std::byte[]>> _blocks;
    std::byte *_next = nullptr;
    std::size_t _left = 0;
};

/// Destroys what stands in an arena, and leaves its memory there.
struct RtiFedDestroy {
    template <class T>
    void operator()(T *object) const {
        object->~T();
    }
};
