#include "infrastructure/RTI.hh"

#include "fed/RtiFedExceptions.hh"

RTI::Exception::~Exception() = default;

const char *RTI::NameNotFound::_ex = "RTI.NameNotFound";
const char *RTI::ObjectClassNotDefined::_ex = "RTI.ObjectClassNotDefined";
const char *RTI::AttributeNotDefined::_ex = "RTI.AttributeNotDefined";
const char *RTI::InteractionClassNotDefined::_ex = "RTI.InteractionClassNotDefined";
const char *RTI::InteractionParameterNotDefined::_ex = "RTI.InteractionParameterNotDefined";
const char *RTI::SpaceNotDefined::_ex = "RTI.SpaceNotDefined";
const char *RTI::DimensionNotDefined::_ex = "RTI.DimensionNotDefined";
const char *RTI::InvalidTransportationHandle::_ex = "RTI.InvalidTransportationHandle";
const char *RTI::InvalidOrderingHandle::_ex = "RTI.InvalidOrderingHandle";
const char *RTI::CouldNotOpenFED::_ex = "RTI.CouldNotOpenFED";
const char *RTI::ErrorReadingFED::_ex = "RTI.ErrorReadingFED";
const char *RTI::RTIinternalError::_ex = "RTI.RTIinternalError";
