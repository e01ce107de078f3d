#pragma once

#include "infrastructure/RTI.hh"

#include <atomic>
#include <ostream>

/// A stream of diagnostic messages that can be switched per package and importance.
///
/// Threads: every member may run on any number of threads at once; writing to the output stream is synchronised by
/// whoever owns that stream.
class RTI_EXPORT RtiDebugStream {
public:
    /// Writes to standard error until setOutputStream is called. A stream for tracing is silent for a thread whose
    /// trace mask is RTI_T_NONE.
    RtiDebugStream(bool on, bool forTracing);

    /// Whether messages of this package (RTI_P_...) and importance (RTI_G_...) are written: both are enabled.
    RTI_bool enabled(const unsigned long long &package, const unsigned long &importance) const;

    /// The stream for messages: the one last set, initially standard error.
    std::ostream &getOutputStream() const;
    /// Sets the stream for messages. It must outlive this object or be replaced before.
    void setOutputStream(std::ostream &os);

    /// Enables the packages and importances whose bits are set and disables all others.
    void enable(unsigned long long packages = ~0ULL, unsigned long importances = ~0UL);
    void disable();

private:
    const bool _forTracing;
    std::atomic<unsigned long long> _packages;
    std::atomic<unsigned long> _importances;
    std::atomic<std::ostream *> _output;
};

extern RTI_EXPORT RtiDebugStream _rtiDebugStream; ///< Tracing for developers; off by default.
extern RTI_EXPORT RtiDebugStream _rtiErrorStream; ///< Failures that an operator should see; on by default.
