#pragma once

#include "fed/RtiConcreteException.hh"

namespace RTI {

/// A name given to a lookup has no match, or a FED declaration names an unknown routing space.
class RTIFED_EXPORT NameNotFound : public ConcreteException<NameNotFound> {
public:
    static constexpr const char *_ex = "NameNotFound";
    using ConcreteException::ConcreteException;
};

/// No object class has this handle.
class RTIFED_EXPORT ObjectClassNotDefined : public ConcreteException<ObjectClassNotDefined> {
public:
    static constexpr const char *_ex = "ObjectClassNotDefined";
    using ConcreteException::ConcreteException;
};

/// The handle is no attribute of the object class.
class RTIFED_EXPORT AttributeNotDefined : public ConcreteException<AttributeNotDefined> {
public:
    static constexpr const char *_ex = "AttributeNotDefined";
    using ConcreteException::ConcreteException;
};

/// No interaction class has this handle.
class RTIFED_EXPORT InteractionClassNotDefined : public ConcreteException<InteractionClassNotDefined> {
public:
    static constexpr const char *_ex = "InteractionClassNotDefined";
    using ConcreteException::ConcreteException;
};

/// The handle is no parameter of the interaction class.
class RTIFED_EXPORT InteractionParameterNotDefined : public ConcreteException<InteractionParameterNotDefined> {
public:
    static constexpr const char *_ex = "InteractionParameterNotDefined";
    using ConcreteException::ConcreteException;
};

/// No routing space has this handle.
class RTIFED_EXPORT SpaceNotDefined : public ConcreteException<SpaceNotDefined> {
public:
    static constexpr const char *_ex = "SpaceNotDefined";
    using ConcreteException::ConcreteException;
};

/// The handle is no dimension of the routing space.
class RTIFED_EXPORT DimensionNotDefined : public ConcreteException<DimensionNotDefined> {
public:
    static constexpr const char *_ex = "DimensionNotDefined";
    using ConcreteException::ConcreteException;
};

/// The handle is neither reliable nor best-effort transportation.
class RTIFED_EXPORT InvalidTransportationHandle : public ConcreteException<InvalidTransportationHandle> {
public:
    static constexpr const char *_ex = "InvalidTransportationHandle";
    using ConcreteException::ConcreteException;
};

/// The handle is neither time-stamp nor receive ordering.
class RTIFED_EXPORT InvalidOrderingHandle : public ConcreteException<InvalidOrderingHandle> {
public:
    static constexpr const char *_ex = "InvalidOrderingHandle";
    using ConcreteException::ConcreteException;
};

/// The FED file cannot be opened.
class RTIFED_EXPORT CouldNotOpenFED : public ConcreteException<CouldNotOpenFED> {
public:
    static constexpr const char *_ex = "CouldNotOpenFED";
    using ConcreteException::ConcreteException;
};

/// The FED file cannot be parsed, contradicts itself, or lacks a part of the Management Object Model.
class RTIFED_EXPORT ErrorReadingFED : public ConcreteException<ErrorReadingFED> {
public:
    static constexpr const char *_ex = "ErrorReadingFED";
    using ConcreteException::ConcreteException;
};

/// An index is out of range, or something that the database itself handed out does not resolve.
class RTIFED_EXPORT RTIinternalError : public ConcreteException<RTIinternalError> {
public:
    static constexpr const char *_ex = "RTIinternalError";
    using ConcreteException::ConcreteException;
};

} // namespace RTI
