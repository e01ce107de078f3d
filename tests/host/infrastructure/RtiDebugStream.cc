#include "infrastructure/RtiDebugStream.hh"

RtiDebugStream _rtiDebugStream, _rtiErrorStream;
