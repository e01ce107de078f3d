#pragma once

#include "fed/RtiTypeWrapper.hh"
#include "infrastructure/RTI.hh"
#include "infrastructure/RtiDebugSaver.hh"
#include "infrastructure/RtiDebugStream.hh"
#include "infrastructure/RtiDump.hh"

#include <cstddef>
#include <ostream>
#include <string>

/// One line in the dump and diff of a record. Each class has one list of them, in the order of the lines.
template <class Record>
struct RtiFedField {
    const char *label = nullptr;
    std::string (*value)(const Record &) = nullptr;
    const char *separator = "'', "; ///< Between the old and the new value in a diff.
};

inline std::string fieldText(const std::string &text) {
    return text;
}
inline std::string fieldText(std::size_t size) {
    return std::to_string(size);
}
template <class T, int N>
std::string fieldText(const RtiTypeWrapper<T, N> &handle) {
    return toString(handle._value);
}

/// Turns debug tracing off during its lifetime, so that no trace output interleaves with a dump.
class RtiFedTracingOff {
public:
    RtiFedTracingOff() : _saver(_rtiDebugStream) { RtiDump::setTraceMask(RTI_T_NONE); }

private:
    RtiDebugSaver _saver;
};

template <class Record, std::size_t n>
void dumpFields(const RtiFedField<Record> (&fields)[n], const Record &record, std::ostream &os) {
    const RtiFedTracingOff guard;
    for (const auto &field : fields)
        os << std::string(field.label) + "=``" + field.value(record) + "''\n";
}

/// Compares a record with one of the same class that is read from the buffer: "old" is the buffer's, "new" is
/// `record`. Consumes one whole image in any case.
template <class Record, std::size_t n>
void diffFields(const RtiFedField<Record> (&fields)[n], const Record &record, RtiBuffer &buffer, std::ostream &os) {
    const RtiFedTracingOff guard;
    const Record saved(buffer);
    for (const auto &field : fields) {
        const std::string oldValue = field.value(saved), newValue = field.value(record);
        if (oldValue != newValue)
            os << std::string("old ") + field.label + "=``" + oldValue + field.separator + "new " + field.label +
                      "=``" + newValue + "''\n";
    }
}
