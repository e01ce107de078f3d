#include "infrastructure/RtiDebugSaver.hh"

#include "infrastructure/RtiDump.hh"

// All streams of a thread share its trace mask, so the stream is named only for the reader.
RtiDebugSaver::RtiDebugSaver(RtiDebugStream &) : _traceMask(RtiDump::getTraceMask()) {}

RtiDebugSaver::~RtiDebugSaver() {
    RtiDump::setTraceMask(_traceMask);
}
