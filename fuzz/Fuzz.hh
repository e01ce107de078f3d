#pragma once

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiDebugStream.hh"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// Aborts the process unless `holds`; the fuzzer reports that as a finding.
#define FUZZ_CHECK(holds)                                                                                              \
    do {                                                                                                               \
        if (!(holds)) {                                                                                                \
            std::fprintf(stderr, "%s:%d: not so: %s\n", __FILE__, __LINE__, #holds);                                   \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)

inline std::string textOf(const std::uint8_t *data, std::size_t size) {
    return {reinterpret_cast<const char *>(data), size};
}

inline std::string bytesOf(const RtiFedSaveable &object) {
    RtiBuffer buffer;
    object.save(buffer);
    return {reinterpret_cast<const char *>(buffer.data()), buffer.size()};
}

template <class Action>
bool isRefused(Action action) {
    try {
        action();
        return false;
    } catch (const RTI::Exception &) {
        return true;
    }
}

/// Checks that a saved image restores and is then saved as the same bytes.
template <class Record>
void checkThatItReturns(const Record &origin) {
    const std::string image = bytesOf(origin);
    RtiBuffer buffer(image.data(), image.size());
    const Record copy(buffer);
    FUZZ_CHECK(buffer.remaining() == 0);
    FUZZ_CHECK(bytesOf(copy) == image);
}
