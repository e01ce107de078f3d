#include "infrastructure/RtiDebugStream.hh"

#include "infrastructure/RtiDump.hh"

#include <iostream>

RtiDebugStream _rtiDebugStream(false, true);
RtiDebugStream _rtiErrorStream(true, false);

RtiDebugStream::RtiDebugStream(bool on, bool forTracing)
    : _forTracing(forTracing), _packages(on ? ~0ULL : 0), _importances(on ? ~0UL : 0), _output(&std::cerr) {}

RTI_bool RtiDebugStream::enabled(const unsigned long long &package, const unsigned long &importance) const {
    if (_forTracing && RtiDump::getTraceMask() == RTI_T_NONE)
        return RTI_false;
    return (_packages & package) != 0 && (_importances & importance) != 0;
}

std::ostream &RtiDebugStream::getOutputStream() const {
    return *_output;
}

void RtiDebugStream::setOutputStream(std::ostream &os) {
    _output = &os;
}

void RtiDebugStream::enable(unsigned long long packages, unsigned long importances) {
    _packages = packages;
    _importances = importances;
}

void RtiDebugStream::disable() {
    enable(0, 0); // equivalent: importances alone disable it
}
