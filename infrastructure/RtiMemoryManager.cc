#include "infrastructure/RtiMemoryManager.hh"

#include <cstdlib>

void *RtiMemoryManager::malloc(unsigned long size) noexcept {
    return std::malloc(size); // NOLINT(cppcoreguidelines-no-malloc): this is the allocator
}

void RtiMemoryManager::free(void *memory) noexcept {
    std::free(memory); // NOLINT(cppcoreguidelines-no-malloc): as above
}
