#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

/// A map from handles to values.
///
/// Counters issue handles densely from 1, so a vector indexed by handle answers nearly every lookup with one access. A
/// tree holds the few entries that would leave the vector mostly empty (handles chosen by a host), negative handles,
/// and values equal to `Value()`, which marks an empty element of the vector. The vector is at least about half full,
/// so memory is linear in the number of entries for any handles.
/// Threads: const members on any number of threads at once.
template <class Handle, class Value>
class RtiFedHandleMap {
    using Number = decltype(Handle::_value);

public:
    /// Returns the value of a handle, or null. The pointer is valid until the next insert.
    const Value *find(const Handle &handle) const {
        const Number number = handle._value;
        if (isInVector(number) && !isEmpty(_vector[static_cast<std::size_t>(number)]))
            return &_vector[static_cast<std::size_t>(number)];
        return _tree.empty() ? nullptr : findInTree(number);
    }

    /// Adds an entry and returns true. If the handle is in use, it keeps its value, and false is returned. Throws
    /// std::bad_alloc, leaving the map unchanged.
    bool insert(Handle handle, Value value) {
        if (find(handle))
            return false;
        const Number number = handle._value;
        if (fitsVector(number) && !isEmpty(value))
            putInVector(static_cast<std::size_t>(number), std::move(value));
        else
            _tree.emplace(number, std::move(value));
        ++_size;
        return true;
    }
    void erase(Handle handle) {
        if (!find(handle))
            return;
        if (_tree.erase(handle._value) == 0)
            _vector[static_cast<std::size_t>(handle._value)] = Value();
        --_size;
    }
    void clear() { *this = RtiFedHandleMap(); }

    /// Allocates memory for the handles from 1 to `size`.
    void reserve(std::size_t size) { _vector.reserve(size + 1); } // equivalent: only speed

    std::size_t size() const { return _size; }

    /// The greatest handle, or 0 if there is none.
    Handle greatest() const {
        std::size_t end = _vector.size();
        while (end > 0 && isEmpty(_vector[end - 1]))
            --end;
        const Number inVector = end > 0 ? static_cast<Number>(end - 1) : Number(0);
        return _tree.empty() ? inVector : std::max(inVector, _tree.rbegin()->first);
    }

    /// Calls `visit` for each handle and its value, by ascending handle.
    template <class Visit>
    void forEach(Visit visit) const {
        auto inTree = _tree.begin();
        for (std::size_t i = 0; i < _vector.size(); ++i) {
            for (; inTree != _tree.end() && inTree->first <= static_cast<Number>(i); ++inTree)
                visit(Handle(inTree->first), inTree->second);
            if (!isEmpty(_vector[i]))
                visit(Handle(static_cast<Number>(i)), _vector[i]);
        }
        for (; inTree != _tree.end(); ++inTree)
            visit(Handle(inTree->first), inTree->second);
    }

private:
    static bool isEmpty(const Value &value) { return value == Value(); }
    bool isInVector(Number number) const {
        return number >= Number(0) && static_cast<std::size_t>(number) < _vector.size();
    }
    /// Whether the vector has memory for this number already, or would be about half full if it reached it.
    bool fitsVector(Number number) const {
        // equivalent: it is found in either place
        return number >= Number(0) && static_cast<std::size_t>(number) < std::max(2 * _size + 8, _vector.capacity());
    }
    void putInVector(std::size_t index, Value value) {
        if (index < _vector.size()) {
            _vector[index] = std::move(value);
            return;
        }
        _vector.resize(index); // a handle may be skipped, most often none is
        _vector.push_back(std::move(value));
    }
    const Value *findInTree(Number number) const {
        const auto place = _tree.find(number);
        return place == _tree.end() ? nullptr : &place->second;
    }

    std::vector<Value> _vector;
    std::map<Number, Value> _tree;
    std::size_t _size = 0;
};
