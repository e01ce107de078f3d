#pragma once

#include "infrastructure/RtiExport.hh"

/// The trace mask of the calling thread, initially RTI_T_ALL. Each thread has its own mask, so that dumps on several
/// threads do not disturb each other.
class RTI_EXPORT RtiDump {
public:
    static void setTraceMask(const unsigned char &mask);
    static unsigned char getTraceMask();
};
