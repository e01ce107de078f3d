#pragma once

#include "infrastructure/RTI.hh"
#include "infrastructure/RtiDebugStream.hh"

#include <exception>
#include <string>

/// Writes a line to the error stream, if that takes messages of this importance. A stream of the host that throws when
/// it cannot write is no reason for the caller to throw anything but what it throws in any case.
inline void rtiFedReport(unsigned long importance, const std::string &message) {
    if (!_rtiErrorStream.enabled(RTI_P_fedDatabase, importance))
        return;
    try {
        _rtiErrorStream.getOutputStream() << message << std::endl;
    } catch (const std::exception &) { // the message is lost, and nothing else
    } catch (const RTI::Exception &) {
    }
}
