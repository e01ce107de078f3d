#pragma once

#include "fed/RtiFedImage.hh"

#include <algorithm>
#include <set>
#include <vector>

/// A set of handles of one kind, kept as runs of consecutive numbers, ascending. Handles come from counters in the
/// order of the file, so that the descendants of a class are a run or two.
///
/// Its image is how many there are, then each, ascending.
/// Threads: const members on any number of threads at once.
template <class Handle>
class RtiFedHandleSet {
    using Number = decltype(Handle::_value);

public:
    void insert(Handle handle) {
        const Number number = handle._value;
        auto next = std::upper_bound(_runs.begin(), _runs.end(), number, isBefore); // the first run behind it
        const bool joinsNext = next != _runs.end() && next->first - 1 == number;
        if (next != _runs.begin()) {
            Run &run = *(next - 1);
            if (number <= run.last)
                return;
            if (number - 1 == run.last) {
                run.last = joinsNext ? next->last : number;
                if (joinsNext)
                    _runs.erase(next);
                ++_size;
                return;
            }
        }
        if (joinsNext)
            next->first = number;
        else
            _runs.insert(next, {number, number});
        ++_size;
    }

    /// Takes the memory that the next insert may need, so that it cannot fail if it is that of this handle.
    void makeRoomFor(Handle handle) {
        const bool joins = !_runs.empty() && _runs.back().last == handle._value - 1;
        if (!joins && _runs.size() == _runs.capacity())
            _runs.reserve(_runs.size() * 2 + 1);
    }

    bool contains(Handle handle) const {
        const auto next = std::upper_bound(_runs.begin(), _runs.end(), handle._value, isBefore);
        return next != _runs.begin() && handle._value <= (next - 1)->last;
    }

    std::size_t size() const { return _size; }

    /// Calls `visit` with each handle, ascending.
    template <class Visit>
    void forEach(Visit visit) const {
        for (const Run &run : _runs)
            for (Number number = run.first;; ++number) {
                visit(Handle(number));
                if (number == run.last)
                    break;
            }
    }

    std::set<Handle> toSet() const {
        std::set<Handle> all;
        forEach([&all](const Handle &handle) { all.insert(all.end(), handle); });
        return all;
    }

    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_size));
        forEach([&buffer](const Handle &handle) { buffer.put(handle); });
    }
    /// Throws RTI::RTIinternalError for handles that do not ascend.
    void restore(RtiBuffer &buffer) {
        const unsigned long count = readCount(buffer, 4, "handles");
        _runs.clear();
        _size = 0;
        for (unsigned long i = 0; i < count; ++i) {
            const std::size_t byte = imageByte(buffer);
            Handle handle;
            buffer.get(handle);
            if (i > 0 && handle._value <= _runs.back().last)
                refuseImage(byte, "the handle ", toString(handle._value), " stands behind ",
                            toString(_runs.back().last));
            insert(handle);
        }
    }

private:
    struct Run {
        Number first, last;
    };
    static bool isBefore(Number number, const Run &run) { return number < run.first; }

    std::vector<Run> _runs; // ascending, with a gap between each two
    std::size_t _size = 0;
};
