#pragma once

#include "fed/RtiTypeWrapper.hh"

#include <algorithm>
#include <vector>

/// Each set on the heap is counted.
class RtiAttributeHandleSet {
public:
    explicit RtiAttributeHandleSet(unsigned long capacity) { _handles.reserve(capacity); }

    void add(RtiAttributeHandle handle) {
        if (!isMember(handle))
            _handles.insert(std::lower_bound(_handles.begin(), _handles.end(), handle._value), handle._value);
    }
    bool isMember(RtiAttributeHandle handle) const {
        return std::binary_search(_handles.begin(), _handles.end(), handle._value);
    }
    unsigned long size() const { return static_cast<unsigned long>(_handles.size()); }
    RtiAttributeHandle getHandle(unsigned long index) const { return _handles.at(index); }

    static inline int numOnHeap = 0;
    static void *operator new(std::size_t size) {
        ++numOnHeap;
        return ::operator new(size);
    }
    static void operator delete(void *memory) {
        --numOnHeap;
        ::operator delete(memory);
    }

private:
    std::vector<unsigned long> _handles;
};
