#include "infrastructure/RtiAttributeHandleSet.hh"

#include "infrastructure/RtiMemoryManager.hh"

#include <algorithm>
#include <new>

RtiAttributeHandleSet::RtiAttributeHandleSet(unsigned long capacity) {
    _handles.reserve(capacity);
}

void RtiAttributeHandleSet::add(RtiAttributeHandle handle) {
    const auto place = std::lower_bound(_handles.begin(), _handles.end(), handle);
    if (place == _handles.end() || handle < *place)
        _handles.insert(place, handle);
}

bool RtiAttributeHandleSet::isMember(RtiAttributeHandle handle) const {
    return std::binary_search(_handles.begin(), _handles.end(), handle);
}

RtiAttributeHandle RtiAttributeHandleSet::getHandle(unsigned long index) const {
    if (index >= _handles.size())
        throw RTI::ArrayIndexOutOfBounds(
            ("attribute handle set: index " + toString(index) + " of " + toString(size()) + " handles").c_str());
    return _handles[index];
}

void *RtiAttributeHandleSet::operator new(std::size_t size) {
    if (void *memory = RtiMemoryManager::malloc(static_cast<unsigned long>(size)))
        return memory;
    throw std::bad_alloc();
}

void RtiAttributeHandleSet::operator delete(void *memory) noexcept {
    RtiMemoryManager::free(memory);
}
