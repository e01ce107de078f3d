#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

/// A look-up from handles to values. Handles come from counters, so nearly all stand in a vector, at their own number;
/// the few that would leave it mostly empty, or are negative, stand in a tree. So do values equal to `Value()`, which
/// marks an empty place of the vector.
///
/// Threads: const members on any number of threads at once.
template <class Handle, class Value>
class RtiFedHandleMap {
    using Number = decltype(Handle::_value);

public:
    /// The value of a handle, or null. The pointer holds until the next insert.
    const Value *find(const Handle &handle) const {
        const Number number = handle._value;
        if (isInVector(number) && !isEmpty(_vector[static_cast<std::size_t>(number)]))
            return &_vector[static_cast<std::size_t>(number)];
        return _tree.empty() ? nullptr : findInTree(number);
    }

    /// Adds an entry and returns true; a handle that is taken keeps its value, and false is returned. If memory runs
    /// out, nothing has changed.
    bool insert(Handle handle, Value value) {
        if (find(handle))
            return false;
        const Number number = handle._value;
        if (!isInVector(number) && isNear(number))
            _vector.resize(static_cast<std::size_t>(number)); // and the value behind, most often the only one
        if (static_cast<std::size_t>(number) == _vector.size() && isNear(number) && !isEmpty(value))
            _vector.push_back(std::move(value));
        else if (isInVector(number) && !isEmpty(value))
            _vector[static_cast<std::size_t>(number)] = std::move(value);
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

    /// Takes the memory for so many handles from 1.
    void reserve(std::size_t size) { _vector.reserve(size + 1); }

    std::size_t size() const { return _size; }

    /// The greatest handle, 0 if there is none.
    Handle greatest() const {
        std::size_t end = _vector.size();
        while (end > 0 && isEmpty(_vector[end - 1]))
            --end;
        const Number inVector = end > 0 ? static_cast<Number>(end - 1) : Number(0);
        return _tree.empty() ? inVector : std::max(inVector, _tree.rbegin()->first);
    }

    /// Calls `visit` with each handle and its value, by ascending handle.
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
    /// Whether the vector has room for this number already, or would not be mostly empty if it reached it.
    bool isNear(Number number) const {
        return number >= Number(0) && static_cast<std::size_t>(number) < std::max(2 * _size + 8, _vector.capacity());
    }
    const Value *findInTree(Number number) const {
        const auto place = _tree.find(number);
        return place == _tree.end() ? nullptr : &place->second;
    }

    std::vector<Value> _vector;
    std::map<Number, Value> _tree;
    std::size_t _size = 0;
};
