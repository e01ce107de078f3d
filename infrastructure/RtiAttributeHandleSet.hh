#pragma once

#include "fed/RtiConcreteException.hh"
#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RtiExport.hh"

#include <cstddef>
#include <vector>

namespace RTI {

/// An index is not below the number of elements.
class RTI_EXPORT ArrayIndexOutOfBounds : public ConcreteException<ArrayIndexOutOfBounds> {
public:
    static constexpr const char *_ex = "ArrayIndexOutOfBounds";
    using ConcreteException::ConcreteException;
};

} // namespace RTI

/// A set of attribute handles: the HLA 1.3 AttributeHandleSet of a subscription, publication or update.
///
/// It is kept as runs of consecutive handles, as attributes that are declared together have; a set of a few runs takes
/// no memory beside its own. A set on the heap takes that from RtiMemoryManager.
/// Threads: const members on any number of threads at once; add needs the set to itself.
class RTI_EXPORT RtiAttributeHandleSet {
public:
    /// An empty set. It grows as it needs to, whatever `capacity` says.
    explicit RtiAttributeHandleSet(unsigned long capacity);
    // There is nothing to gain from moving, so it is copying.
    RtiAttributeHandleSet(const RtiAttributeHandleSet &) = default;
    RtiAttributeHandleSet &operator=(const RtiAttributeHandleSet &) = default;
    ~RtiAttributeHandleSet() = default;

    /// Adds a handle; one that is in the set already changes nothing. Handles added in ascending order cost least. If
    /// memory runs out, nothing has changed.
    void add(RtiAttributeHandle handle);

    bool isMember(const RtiAttributeHandle &handle) const {
        const Run *run = lastRun([&handle](const Run &r) { return r.first <= handle._value; });
        return run && handle._value - run->first < lengthOf(run);
    }
    unsigned long size() const { return _size; }

    /// The handle at `index` in ascending order, from 0. Throws RTI::ArrayIndexOutOfBounds.
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
        unsigned long before; // how many handles stand in the runs before it
    };
    static constexpr std::size_t kFew = 8;

    const Run *begin() const { return _numRuns <= kFew ? _few : _many.data(); }
    Run *begin() { return _numRuns <= kFew ? _few : _many.data(); }
    const Run *end() const { return begin() + _numRuns; }
    unsigned long lengthOf(const Run *run) const { return (run + 1 == end() ? _size : run[1].before) - run->before; }

    /// The last run of which `isBefore` is true, as it is of all before that; null if it is of none.
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
    void insertRun(std::size_t place, const Run &run);
    void eraseRun(std::size_t place);

    unsigned long _size = 0;
    std::size_t _numRuns = 0;
    Run _few[kFew] = {};    // ascending, with a gap between each two
    std::vector<Run> _many; // all of them, while there are more than a few
};
