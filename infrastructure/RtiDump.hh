#pragma once

#include "infrastructure/RtiExport.hh"

/// What the calling thread traces; at first everything. Each thread has a mask of its own, so that one thread's dump
/// does not disturb another's.
class RTI_EXPORT RtiDump {
public:
    static void setTraceMask(const unsigned char &mask);
    static unsigned char getTraceMask();
};
