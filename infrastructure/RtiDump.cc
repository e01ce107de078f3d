#include "infrastructure/RtiDump.hh"

#include "infrastructure/RTI.hh"

namespace {
thread_local unsigned char theTraceMask = RTI_T_ALL;
}

void RtiDump::setTraceMask(const unsigned char &mask) {
    theTraceMask = mask;
}

unsigned char RtiDump::getTraceMask() {
    return theTraceMask;
}
