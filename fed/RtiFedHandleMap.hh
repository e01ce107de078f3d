#pragma once

#include <cstddef>
#include <map>
#include <utility>

/// A look-up from handles to values. Every handle map of the model is one of these. Handles come from counters, so they
/// are dense and mostly arrive in ascending order.
///
/// Iteration is in ascending order of the handles; its elements are pairs of handle and value.
/// Threads: const members on any number of threads at once.
template <class Handle, class Value>
class RtiFedHandleMap {
public:
    /// The value of a handle, or null. The pointer holds until the entry is erased or the map cleared.
    const Value *find(Handle handle) const {
        const auto place = _map.find(handle);
        return place == _map.end() ? nullptr : &place->second;
    }

    /// Adds an entry and returns true; a handle that is taken keeps its value, and false is returned. The value given
    /// is moved from only if it was added.
    bool insert(Handle handle, Value &&value) { return _map.try_emplace(handle, std::move(value)).second; }
    bool insert(Handle handle, const Value &value) { return _map.try_emplace(handle, value).second; }
    void erase(Handle handle) { _map.erase(handle); }
    void clear() { _map.clear(); }

    /// The greatest handle, 0 if there is none.
    Handle greatest() const { return _map.empty() ? Handle(0) : _map.rbegin()->first; }
    std::size_t size() const { return _map.size(); }
    auto begin() const { return _map.begin(); }
    auto end() const { return _map.end(); }

private:
    std::map<Handle, Value> _map;
};
