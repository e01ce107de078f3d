#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiSaveableType.hh"

#include <ostream>
#include <string>

/// The decimal text of a number, without padding or separators, whatever the locale.
template <class T>
std::string toString(const T &number) {
    return std::to_string(number);
}

/// A handle: one number that fits 32 bits, with its kind `N` in the type, so that a handle of one kind is not taken for
/// another. The kinds are named below. 0 means "no handle" but for dimensions, which are numbered from 0.
///
/// Its image is the number, and nothing else.
/// Threads: as any plain value.
template <class T, int N>
class RTIFED_EXPORT RtiTypeWrapper : public RtiSaveableType {
public:
    /// Implicit, since hosts keep handles as plain numbers.
    RtiTypeWrapper(T value = 0) : _value(value) {}

    RTI_bool save(RtiBuffer &buffer) const override {
        buffer.put(_value);
        return RTI_true;
    }
    void restore(RtiBuffer &buffer) override { buffer.get(&_value, 1); }
    void dump(std::ostream &os) const override { os << "_value=``" + toString(_value) + "''\n"; }
    void diff(RtiBuffer &buffer, std::ostream &os) const override {
        T saved = 0;
        buffer.get(&saved, 1);
        if (saved != _value)
            os << "old _value=``" + toString(saved) + "'', new _value=``" + toString(_value) + "''\n";
    }

    // By number; a routing space handle is signed, so -1 comes before 1.
    friend bool operator<(const RtiTypeWrapper &a, const RtiTypeWrapper &b) { return a._value < b._value; }
    friend bool operator==(const RtiTypeWrapper &a, const RtiTypeWrapper &b) { return a._value == b._value; }
    friend bool operator!=(const RtiTypeWrapper &a, const RtiTypeWrapper &b) { return a._value != b._value; }

    T _value;
};

using RtiParameterHandle = RtiTypeWrapper<unsigned long, 1>;
using RtiAttributeHandle = RtiTypeWrapper<unsigned long, 2>;
using RtiObjectClassHandle = RtiTypeWrapper<unsigned long, 3>;
using RtiInteractionClassHandle = RtiTypeWrapper<unsigned long, 4>;
using RtiSpaceHandle = RtiTypeWrapper<long, 9>;
using RtiDimensionHandle = RtiTypeWrapper<unsigned long, 10>;
using RtiOrderingHandle = RtiTypeWrapper<unsigned long, 16>;
using RtiTransportationHandle = RtiTypeWrapper<unsigned long, 17>;
