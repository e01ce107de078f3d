#pragma once

#include "infrastructure/RtiDump.hh"

class RtiDebugStream;

class RtiDebugSaver {
public:
    explicit RtiDebugSaver(RtiDebugStream &) {}
    ~RtiDebugSaver() { RtiDump::traceMask = _mask; }

private:
    unsigned char _mask = RtiDump::traceMask;
};
