#pragma once

#include "fed/RtiFedExport.hh"
#include "fed/RtiFedSaveable.hh"

#include <ostream>
#include <string>

/// Returns the decimal text of a number, without padding or separators, in every locale.
template <class T>
std::string toString(const T &number) {
    return std::to_string(number);
}

/// A handle: a number of 32 bits whose type carries its kind `N`, so that a handle of one kind cannot be passed for
/// another. The kinds are named below. 0 means "no handle", except for dimensions, which are numbered from 0.
///
/// Its image is the number.
/// Threads: as for any plain value.
template <class T, int N>
class RTIFED_EXPORT RtiTypeWrapper : public RtiFedSaveable {
public:
    /// Implicit, since hosts store handles as plain numbers.
    RtiTypeWrapper(T value = 0) : _value(value) {}

    using RtiFedSaveable::diff, RtiFedSaveable::dump, RtiFedSaveable::save;
    RTI_bool save(RtiBuffer &buffer) override {
        buffer.put(_value);
        return RTI_true;
    }
    void restore(RtiBuffer &buffer) override { buffer.get(&_value, 1); }
    void dump(std::ostream &os) override { os << "_value=``" + toString(_value) + "''\n"; }
    void diff(RtiBuffer &buffer, std::ostream &os) override {
        T saved = 0;
        buffer.get(&saved, 1);
        if (saved != _value)
            os << "old _value=``" + toString(saved) + "'', new _value=``" + toString(_value) + "''\n";
    }

    // By number. Routing space handles are signed, so -1 comes before 1.
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
