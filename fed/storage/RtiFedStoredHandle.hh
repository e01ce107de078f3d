#pragma once

#include "infrastructure/RtiBuffer.hh"

/// A handle as the records keep it: its number alone, where the handle itself also carries its table of operations.
template <class Handle>
class RtiFedStoredHandle {
public:
    RtiFedStoredHandle() = default;
    RtiFedStoredHandle(const Handle &handle) : _number(handle._value) {}
    operator Handle() const { return _number; }

    void save(RtiBuffer &buffer) const { buffer.put(Handle(_number)); }
    void restore(RtiBuffer &buffer) { buffer.get(&_number, 1); }

private:
    decltype(Handle::_value) _number = 0;
};
