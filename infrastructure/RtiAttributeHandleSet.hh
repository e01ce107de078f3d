#pragma once

#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiExport.hh"

#include <cstddef>
#include <vector>

/// A set of attribute handles: the HLA 1.3 AttributeHandleSet of a subscription, publication or update.
///
/// A set on the heap takes its memory from RtiMemoryManager.
/// Threads: const members on any number of threads at once; add needs the set to itself.
class RTI_EXPORT RtiAttributeHandleSet {
public:
    /// An empty set with room for `capacity` handles; it grows beyond that.
    explicit RtiAttributeHandleSet(unsigned long capacity);

    /// Adds a handle; one that is in the set already changes nothing. Handles added in ascending order cost least.
    void add(RtiAttributeHandle handle);

    bool isMember(RtiAttributeHandle handle) const;
    unsigned long size() const { return static_cast<unsigned long>(_handles.size()); }

    /// The handle at `index` in ascending order, from 0. Throws RTI::ArrayIndexOutOfBounds.
    RtiAttributeHandle getHandle(unsigned long index) const;

    static void *operator new(std::size_t size);
    static void operator delete(void *memory) noexcept;

private:
    std::vector<RtiAttributeHandle> _handles; // ascending, none twice
};
