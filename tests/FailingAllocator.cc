#include "tests/FailingAllocator.hh"

#include <cstddef>
#include <cstdlib>
#include <new>

long liveAllocations = 0;
unsigned long allocationsToFailure = 0;

namespace {

void *allocate(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) noexcept {
    const std::size_t rounded = (size / alignment + 1) * alignment;
    void *memory = std::aligned_alloc(alignment, rounded);
    liveAllocations += memory ? 1 : 0;
    return memory;
}

void *allocateOrThrow(std::size_t size, std::size_t alignment = alignof(std::max_align_t)) {
    if (allocationsToFailure > 0 && --allocationsToFailure == 0)
        throw std::bad_alloc();
    if (void *memory = allocate(size, alignment))
        return memory;
    throw std::bad_alloc();
}

void release(void *memory) noexcept {
    liveAllocations -= memory ? 1 : 0;
    std::free(memory);
}

} // namespace

// clang-format off
void *operator new(std::size_t size) { return allocateOrThrow(size); }
void *operator new[](std::size_t size) { return allocateOrThrow(size); }
void *operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, static_cast<std::size_t>(alignment));
}
// Does not fail: callers such as std::stable_sort work without the memory.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept { return allocate(size); }
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept { return allocate(size); }
void operator delete(void *memory) noexcept { release(memory); }
void operator delete[](void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t) noexcept { release(memory); }
void operator delete[](void *memory, std::size_t) noexcept { release(memory); }
void operator delete(void *memory, std::align_val_t) noexcept { release(memory); }
void operator delete(void *memory, std::size_t, std::align_val_t) noexcept { release(memory); }
void operator delete(void *memory, const std::nothrow_t &) noexcept { release(memory); }
void operator delete[](void *memory, const std::nothrow_t &) noexcept { release(memory); }

// clang-format on
