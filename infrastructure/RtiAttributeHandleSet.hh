#pragma once

#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiExceptions.hh"

#include <cstddef>
#include <memory>

/// A set of attribute handles: the HLA 1.3 AttributeHandleSet of a subscription, publication or update.
///
/// The set is stored as ascending runs of consecutive handles, because attributes that are declared together have
/// consecutive handles. Up to eight runs are stored in the object itself; more need an allocation, which copies share
/// until one of them changes, since sets are passed by value. A set on the heap is allocated with RtiMemoryManager.
/// Lookups are binary searches over the runs.
/// Threads: const members on any number of threads at once; add needs exclusive access.
class RTI_EXPORT RtiAttributeHandleSet {
public:
    /// Makes an empty set. It grows as needed; `capacity` is ignored.
    explicit RtiAttributeHandleSet(unsigned long capacity);
    // Moving would save nothing, so it copies.
    RtiAttributeHandleSet(const RtiAttributeHandleSet &) = default;
    RtiAttributeHandleSet &operator=(const RtiAttributeHandleSet &) = default;
    ~RtiAttributeHandleSet() = default;

    /// Adds a handle, if the set does not have it. Adding in ascending order is fastest. Throws std::bad_alloc, leaving
    /// the set unchanged.
    void add(RtiAttributeHandle handle);

    bool isMember(const RtiAttributeHandle &handle) const {
        const Run *run = lastRun([&handle](const Run &r) { return r.first <= handle._value; });
        return run && handle._value - run->first < lengthOf(run);
    }
    /// Whether each of the handles is in this set. One lookup for each run of `others`.
    bool containsAll(const RtiAttributeHandleSet &others) const {
        for (const Run *all = others.begin(); all != others.end(); ++all) {
            const Run *run = lastRun([all](const Run &r) { return r.first <= all->first; });
            if (!run)
                return false;
            const unsigned long offset = all->first - run->first, length = lengthOf(run);
            if (offset >= length || others.lengthOf(all) > length - offset)
                return false;
        }
        return true;
    }
    /// Whether `holds` is true of the first and the last handle of each run of consecutive handles. Called for each
    /// run, ascending; without a branch, so that the processor need not wait for an answer to go on.
    template <class Holds>
    bool allRuns(Holds holds) const {
        bool all = true;
        for (const Run *run = begin(); run != end(); ++run)
            all &= holds(run->first, run->first + (lengthOf(run) - 1));
        return all;
    }
    unsigned long size() const { return _size; }

    /// Returns the handle at `index`, counted from 0 in ascending order. Throws RTI::ArrayIndexOutOfBounds.
    RtiAttributeHandle getHandle(unsigned long index) const {
        if (index >= _size)
            refuseIndex(index);
        const Run *run = lastRun([index](const Run &r) { return r.before <= index; });
        return run->first + (index - run->before);
    }

    static void *operator new(std::size_t size);
    static void operator delete(void *memory) noexcept;

private:
    struct Run {
        unsigned long first;
        unsigned long before; // the number of handles in the runs before it
    };
    static constexpr std::size_t kFew = 8;

    const Run *begin() const { return _many ? _many.get() : _few; }
    const Run *end() const { return begin() + _numRuns; }
    unsigned long lengthOf(const Run *run) const { return (run + 1 == end() ? _size : run[1].before) - run->before; }

    /// Returns the last run for which `isBefore` holds, or null. `isBefore` holds for a prefix of the runs.
    template <class IsBefore>
    const Run *lastRun(IsBefore isBefore) const {
        const Run *run = begin();
        for (std::size_t left = _numRuns; left > 1;) {
            const std::size_t half = left / 2;
            run += isBefore(run[half]) ? half : 0;
            left -= half;
        }
        return _numRuns > 0 && isBefore(*run) ? run : nullptr;
    }

    [[noreturn]] void refuseIndex(unsigned long index) const;
    Run *reserve(std::size_t numRuns);

    unsigned long _size = 0;
    std::size_t _numRuns = 0;
    Run _few[kFew] = {}; // ascending, with a gap between any two
    std::size_t _capacity = kFew;
    std::shared_ptr<Run[]> _many; // all runs, once they are more than kFew
};
