#pragma once

#include "fed/image/RtiFedImage.hh"

/// A handle as the records store it: the number alone, without the virtual table of a handle object.
template <class Handle>
class RtiFedStoredHandle {
public:
    RtiFedStoredHandle() = default;
    RtiFedStoredHandle(const Handle &handle) : _number(handle._value) {}
    operator Handle() const { return _number; }

    void save(RtiBuffer &buffer) const { writeHandle(buffer, Handle(_number)); }
    void restore(RtiBuffer &buffer) { _number = readHandle<Handle>(buffer)._value; }

private:
    decltype(Handle::_value) _number = 0;
};
