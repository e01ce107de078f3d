#include "infrastructure/RtiAttributeHandleSet.hh"

#include "infrastructure/RtiMemoryManager.hh"

#include <algorithm>
#include <new>

RtiAttributeHandleSet::RtiAttributeHandleSet(unsigned long) {}

void RtiAttributeHandleSet::add(RtiAttributeHandle handle) {
    const unsigned long number = handle._value;
    const Run *before = lastRun([number](const Run &run) { return run.first <= number; });
    if (before && number - before->first < lengthOf(before))
        return;
    const std::size_t place = before ? static_cast<std::size_t>(before - begin()) + 1 : 0; // of the run after it
    const bool joinsNext = place < _numRuns && begin()[place].first - 1 == number;
    std::size_t later = place; // the first run that now has one more handle before it
    if (before && number - before->first == lengthOf(before)) {
        if (joinsNext)
            eraseRun(place);
    } else if (joinsNext) {
        begin()[place].first = number;
        ++later;
    } else {
        insertRun(place, {number, place < _numRuns ? begin()[place].before : _size});
        ++later;
    }
    for (; later < _numRuns; ++later)
        ++begin()[later].before;
    ++_size;
}

void RtiAttributeHandleSet::insertRun(std::size_t place, const Run &run) {
    if (_numRuns < kFew) {
        std::copy_backward(_few + place, _few + _numRuns, _few + _numRuns + 1);
        _few[place] = run;
    } else {
        if (_numRuns == kFew)
            _many.assign(_few, _few + kFew);
        _many.insert(_many.begin() + static_cast<std::ptrdiff_t>(place), run);
    }
    ++_numRuns;
}

void RtiAttributeHandleSet::eraseRun(std::size_t place) {
    std::copy(begin() + place + 1, begin() + _numRuns, begin() + place);
    if (_numRuns == kFew + 1)
        std::copy(_many.begin(), _many.begin() + kFew, _few);
    --_numRuns;
    if (_numRuns >= kFew)
        _many.resize(_numRuns > kFew ? _numRuns : 0);
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
