#pragma once

#include "infrastructure/RTI.hh"

#include <sstream>

/// Keeps all messages.
class RtiDebugStream {
public:
    RTI_bool enabled(const unsigned long long &, const unsigned long &) const { return RTI_true; }
    std::ostream &getOutputStream() { return messages; }

    std::ostringstream messages;
};

extern RtiDebugStream _rtiDebugStream, _rtiErrorStream;
