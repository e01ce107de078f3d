#include "infrastructure/RTI.hh"

RTI::Exception::~Exception() = default;
