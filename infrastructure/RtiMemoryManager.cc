#include "infrastructure/RtiMemoryManager.hh"

#include <cstdlib>

void *RtiMemoryManager::malloc(unsigned long size) noexcept {
    return std::malloc(size);
}

void RtiMemoryManager::free(void *memory) noexcept {
    std::free(memory);
}
