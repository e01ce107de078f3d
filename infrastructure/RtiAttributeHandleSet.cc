#include "infrastructure/RtiAttributeHandleSet.hh"

#include "infrastructure/RtiMemoryManager.hh"

#include <algorithm>
#include <atomic>
#include <new>
#include <utility>

RtiAttributeHandleSet::RtiAttributeHandleSet(unsigned long) {}

void RtiAttributeHandleSet::add(RtiAttributeHandle handle) {
    const unsigned long number = handle._value;
    const Run *before = lastRun([number](const Run &run) { return run.first <= number; });
    if (before && number - before->first < lengthOf(before))
        return;
    const std::size_t place = before ? static_cast<std::size_t>(before - begin()) + 1 : 0; // of the run after it
    const bool joinsLast = before && number - before->first == lengthOf(before);
    const bool joinsNext = place < _numRuns && begin()[place].first - 1 == number;
    Run *runs = reserve(joinsLast || joinsNext ? _numRuns : _numRuns + 1);
    std::size_t later = place; // the first run that now has one more handle before it
    if (joinsLast && joinsNext) {
        std::copy(runs + place + 1, runs + _numRuns, runs + place);
        --_numRuns;
    } else if (joinsNext) {
        runs[place].first = number;
        ++later;
    } else if (!joinsLast) {
        std::copy_backward(runs + place, runs + _numRuns, runs + _numRuns + 1);
        runs[place] = {number, place < _numRuns ? runs[place + 1].before : _size};
        ++_numRuns;
        ++later;
    }
    for (; later < _numRuns; ++later)
        ++runs[later].before;
    ++_size;
}

/// Returns the runs, not shared with a copy and with memory for `numRuns`. Throws std::bad_alloc, leaving the set
/// unchanged.
RtiAttributeHandleSet::Run *RtiAttributeHandleSet::reserve(std::size_t numRuns) {
    if (!_many && numRuns <= kFew)
        return _few;
    // equivalent: a copy too many is only slow
    if (numRuns > _capacity || _many.use_count() > 1) {
        const std::size_t capacity = numRuns > _capacity ? 2 * _capacity : _capacity;
        std::shared_ptr<Run[]> runs(new Run[capacity]);
        std::copy(begin(), begin() + _numRuns, runs.get());
        _many = std::move(runs);
        _capacity = capacity;
    } else {
        std::atomic_thread_fence(std::memory_order_acquire); // another thread may just have read and freed a copy
    }
    return _many.get();
}

void RtiAttributeHandleSet::refuseIndex(unsigned long index) const {
    throw RTI::ArrayIndexOutOfBounds(
        ("attribute handle set: index " + toString(index) + " of " + toString(size()) + " handles").c_str());
}

void *RtiAttributeHandleSet::operator new(std::size_t size) {
    if (void *memory = RtiMemoryManager::malloc(static_cast<unsigned long>(size)))
        return memory;
    throw std::bad_alloc();
}

void RtiAttributeHandleSet::operator delete(void *memory) noexcept {
    RtiMemoryManager::free(memory);
}
