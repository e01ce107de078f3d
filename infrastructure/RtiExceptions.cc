#include "infrastructure/RtiExceptions.hh"

#include "fed/RtiFedExceptions.hh"

namespace {

/// A new exception with the same reason, and a serial number of its own; null if memory runs out.
template <class Concrete>
RTI::Exception *cloneOf(const Concrete &original) noexcept {
    try {
        return new Concrete(original._reason);
    } catch (...) {
        return nullptr;
    }
}

} // namespace

RTI::Exception *RTI::Exception::cloneSelf() const noexcept {
    return cloneOf(*this);
}

RTI::Exception *RtiBufferUnderflow::cloneSelf() const noexcept {
    return cloneOf(*this);
}

RTI::Exception *RtiBufferOverflow::cloneSelf() const noexcept {
    return cloneOf(*this);
}

RTI::Exception *RTI::ArrayIndexOutOfBounds::cloneSelf() const noexcept {
    return cloneOf(*this);
}

// The published names of the exceptions that the federation database declares. The host defines them, so that an RTI
// can publish its exceptions under names of its own. Only this file of the infrastructure includes the declarations.

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
