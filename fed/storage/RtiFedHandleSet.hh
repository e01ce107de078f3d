#pragma once

#include "fed/image/RtiFedImage.hh"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <utility>

/// A set of handles of one kind, stored as ascending runs of consecutive numbers.
///
/// Counters issue handles in the order of the file, so the descendants of a class are one or two runs. Lookups are
/// binary searches over the runs; inserting a handle that extends the last run is O(1). Handles without any order need
/// one run each: then the set is a sorted array, and inserting is linear.
/// Its image is the number of handles, then each handle, ascending.
/// Threads: const members on any number of threads at once.
template <class Handle>
class RtiFedHandleSet {
    using Number = decltype(Handle::_value);

public:
    RtiFedHandleSet() = default;
    RtiFedHandleSet(const RtiFedHandleSet &) = delete;
    RtiFedHandleSet &operator=(const RtiFedHandleSet &) = delete;

    void insert(Handle handle) {
        const Number number = handle._value;
        if (extendsLast(number)) {
            ++_runs[_numRuns - 1].last;
            return; // equivalent: only speed; the search finds that the run has it
        }
        Run *next = std::upper_bound(begin(), end(), number, isBefore); // the first run after it
        const bool joinsNext = next != end() && next->first - 1 == number;
        if (next != begin()) {
            Run &run = *(next - 1);
            if (number <= run.last)
                return;
            if (number - 1 == run.last) {
                run.last = joinsNext ? next->last : number;
                if (joinsNext) {
                    std::move(next + 1, end(), next);
                    --_numRuns;
                }
                return;
            }
        }
        if (joinsNext) {
            next->first = number;
            return;
        }
        const auto place = next - begin();
        reserveFor(handle);
        std::move_backward(begin() + place, end(), end() + 1);
        _runs[static_cast<std::size_t>(place)] = {number, number};
        ++_numRuns;
    }

    /// Allocates what inserting this handle needs, so that inserting it next cannot fail.
    void reserveFor(Handle handle) {
        if (_numRuns < _capacity || extendsLast(handle._value))
            return;
        // equivalent: only memory
        const std::uint32_t capacity = _capacity == 0 ? 1 : 2 * _capacity; // nearly all sets stay one run
        std::unique_ptr<Run[]> runs(new Run[capacity]);
        std::copy(begin(), end(), runs.get());
        _runs = std::move(runs);
        _capacity = capacity;
    }

    bool contains(const Handle &handle) const { return contains(Run{handle._value, handle._value}); }
    bool containsAll(const RtiFedHandleSet &others) const {
        return std::all_of(others.begin(), others.end(), [this](const Run &run) { return contains(run); });
    }

    std::size_t size() const {
        std::size_t size = 0;
        for (const Run *run = begin(); run != end(); ++run)
            size += static_cast<std::size_t>(run->last - run->first) + 1;
        return size;
    }

    /// Calls `visit` for each handle, ascending.
    template <class Visit>
    void forEach(Visit visit) const {
        for (const Run *run = begin(); run != end(); ++run)
            for (Number number = run->first;; ++number) {
                visit(Handle(number));
                if (number == run->last)
                    break;
            }
    }

    std::set<Handle> toSet() const {
        std::set<Handle> all;
        forEach([&all](const Handle &handle) { all.insert(all.end(), handle); });
        return all;
    }

    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(size()));
        forEach([&buffer](const Handle &handle) { writeHandle(buffer, handle); });
    }
    /// Throws RTI::RTIinternalError if the handles do not ascend.
    void restore(RtiFedImageReader &reader) {
        const unsigned long count = reader.count(1, "handles");
        _numRuns = 0;
        for (unsigned long i = 0; i < count; ++i) {
            const std::size_t byte = reader.byte();
            Handle handle;
            reader.read(handle);
            const Number number = handle._value;
            if (i > 0 && number <= _runs[_numRuns - 1].last)
                refuseImage(byte, "the handle ", toString(number), " follows ", toString(_runs[_numRuns - 1].last));
            insert(handle);
        }
    }

private:
    struct Run {
        Number first, last;
    };
    /// Whether one of the runs contains the whole run `all`.
    bool contains(const Run &all) const {
        const Run *run = begin(); // becomes the last run that begins at or before `all`; the loop has no branch
        for (std::size_t left = _numRuns; left > 1;) {
            const std::size_t half = left / 2;
            run += run[half].first <= all.first ? half : 0;
            left -= half;
        }
        return _numRuns > 0 && run->first <= all.first && all.last <= run->last;
    }
    static bool isBefore(Number number, const Run &run) { return number < run.first; }

    bool extendsLast(Number number) const {
        return _numRuns > 0 && _runs[_numRuns - 1].last < number && _runs[_numRuns - 1].last == number - 1;
    }

    Run *begin() { return _runs.get(); }
    Run *end() { return _runs.get() + _numRuns; }
    const Run *begin() const { return _runs.get(); }
    const Run *end() const { return _runs.get() + _numRuns; }

    // A third of the size of a vector: most classes have neither children nor descendants.
    std::unique_ptr<Run[]> _runs; // ascending, with a gap between any two
    std::uint32_t _numRuns = 0;
    std::uint32_t _capacity = 0;
};
