#pragma once

/// A handle as the records store it: the number alone, without the virtual table of a handle object.
template <class Handle>
class RtiFedStoredHandle {
public:
    RtiFedStoredHandle() = default;
    RtiFedStoredHandle(const Handle &handle) : _number(handle._value) {}
    operator Handle() const { return _number; }
    Handle get() const { return _number; }

    template <class Reader>
    void restore(Reader &reader) {
        Handle handle;
        reader.read(handle);
        _number = handle._value;
    }

private:
    decltype(Handle::_value) _number = 0;
};
