#pragma once

#include "fed/RtiFedImage.hh"

#include <algorithm>
#include <set>
#include <vector>

/// A set of handles of one kind, kept as ascending numbers. Handles come from counters, so most are added at the end.
///
/// Its image is how many there are, then each, ascending.
/// Threads: const members on any number of threads at once.
template <class Handle>
class RtiFedHandleSet {
    using Number = decltype(Handle::_value);

public:
    void insert(Handle handle) {
        const auto place = std::lower_bound(_numbers.begin(), _numbers.end(), handle._value);
        if (place == _numbers.end() || *place != handle._value)
            _numbers.insert(place, handle._value);
    }
    bool contains(Handle handle) const { return std::binary_search(_numbers.begin(), _numbers.end(), handle._value); }
    std::set<Handle> toSet() const { return {_numbers.begin(), _numbers.end()}; }

    std::size_t size() const { return _numbers.size(); }
    auto begin() const { return _numbers.begin(); }
    auto end() const { return _numbers.end(); }
    auto rbegin() const { return _numbers.rbegin(); }
    auto rend() const { return _numbers.rend(); }

    void save(RtiBuffer &buffer) const {
        buffer.put(static_cast<unsigned long>(_numbers.size()));
        for (const Number number : _numbers)
            buffer.put(number);
    }
    /// Throws RTI::RTIinternalError for handles that do not ascend.
    void restore(RtiBuffer &buffer) {
        const unsigned long count = readCount(buffer, 4, "handles");
        _numbers.clear();
        _numbers.reserve(count);
        for (unsigned long i = 0; i < count; ++i) {
            const std::size_t byte = imageByte(buffer);
            Handle handle;
            buffer.get(handle);
            if (i > 0 && handle._value <= _numbers.back())
                refuseImage(byte, "the handle ", toString(handle._value), " stands behind ", toString(_numbers.back()));
            _numbers.push_back(handle._value);
        }
    }

private:
    std::vector<Number> _numbers; // ascending, none twice
};
