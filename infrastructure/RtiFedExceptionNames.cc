// The published names of the exceptions that the federation database declares. The host defines them, so that an RTI
// can publish its exceptions under names of its own. Only this file of the infrastructure includes the declarations.

#include "fed/RtiFedExceptions.hh"

const char *RTI::NameNotFound::_ex = "NameNotFound";
const char *RTI::ObjectClassNotDefined::_ex = "ObjectClassNotDefined";
const char *RTI::AttributeNotDefined::_ex = "AttributeNotDefined";
const char *RTI::InteractionClassNotDefined::_ex = "InteractionClassNotDefined";
const char *RTI::InteractionParameterNotDefined::_ex = "InteractionParameterNotDefined";
const char *RTI::SpaceNotDefined::_ex = "SpaceNotDefined";
const char *RTI::DimensionNotDefined::_ex = "DimensionNotDefined";
const char *RTI::InvalidTransportationHandle::_ex = "InvalidTransportationHandle";
const char *RTI::InvalidOrderingHandle::_ex = "InvalidOrderingHandle";
const char *RTI::CouldNotOpenFED::_ex = "CouldNotOpenFED";
const char *RTI::ErrorReadingFED::_ex = "ErrorReadingFED";
const char *RTI::RTIinternalError::_ex = "RTIinternalError";
