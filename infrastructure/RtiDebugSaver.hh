#pragma once

#include "infrastructure/RtiExport.hh"

class RtiDebugStream;

/// Remembers the calling thread's trace state and puts it back when destroyed, on the same thread.
class RTI_EXPORT RtiDebugSaver {
public:
    explicit RtiDebugSaver(RtiDebugStream &stream);
    ~RtiDebugSaver();
    RtiDebugSaver(const RtiDebugSaver &) = delete;
    RtiDebugSaver &operator=(const RtiDebugSaver &) = delete;

private:
    unsigned char _traceMask;
};
