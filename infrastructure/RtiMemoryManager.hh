#pragma once

#include "infrastructure/RtiExport.hh"

/// The infrastructure's allocator. Threads: any number at once.
class RTI_EXPORT RtiMemoryManager {
public:
    /// Allocates `size` bytes, aligned for any type, or returns null. The caller releases them with free.
    static void *malloc(unsigned long size) noexcept;
    /// Releases what malloc returned; null is allowed.
    static void free(void *memory) noexcept;
};
