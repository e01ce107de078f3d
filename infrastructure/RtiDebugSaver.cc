#include "infrastructure/RtiDebugSaver.hh"

#include "infrastructure/RtiDump.hh"

// All streams share the trace mask of their thread, so the stream is not needed.
RtiDebugSaver::RtiDebugSaver(RtiDebugStream &) : _traceMask(RtiDump::getTraceMask()) {}

RtiDebugSaver::~RtiDebugSaver() {
    RtiDump::setTraceMask(_traceMask);
}
