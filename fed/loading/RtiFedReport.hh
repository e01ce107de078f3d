#pragma once

#include "infrastructure/RTI.hh"
#include "infrastructure/RtiDebugStream.hh"

#include <exception>
#include <string>

/// Writes a line to the error stream, if messages of this importance are enabled. If the host's stream throws, the
/// message is lost, so that the caller still throws the exception it was going to throw.
inline void rtiFedReport(unsigned long importance, const std::string &message) {
    if (!_rtiErrorStream.enabled(RTI_P_fedDatabase, importance))
        return;
    try {
        _rtiErrorStream.getOutputStream() << message << std::endl;
        // The standard streams throw nothing; a host's may.
    } catch (const std::exception &) {
    } catch (const RTI::Exception &) {
    }
}
