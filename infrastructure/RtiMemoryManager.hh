#pragma once

#include "infrastructure/RtiExport.hh"

/// The infrastructure's allocator. Threads: any number at once.
class RTI_EXPORT RtiMemoryManager {
public:
    /// Memory for `size` bytes, aligned for any type, or null when there is none. To be given back with free.
    static void *malloc(unsigned long size) noexcept;
    /// Gives back what malloc returned; null is allowed.
    static void free(void *memory) noexcept;
};
