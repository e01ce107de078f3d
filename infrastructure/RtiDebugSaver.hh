#pragma once

#include "infrastructure/RtiExport.hh"

class RtiDebugStream;

/// Saves the calling thread's trace mask and restores it on destruction, which must be on the same thread.
class RTI_EXPORT RtiDebugSaver {
public:
    explicit RtiDebugSaver(RtiDebugStream &stream);
    ~RtiDebugSaver();
    RtiDebugSaver(const RtiDebugSaver &) = delete;
    RtiDebugSaver &operator=(const RtiDebugSaver &) = delete;

private:
    unsigned char _traceMask;
};
