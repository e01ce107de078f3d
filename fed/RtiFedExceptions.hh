#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <string>
#include <type_traits>

namespace RTI {

/// Implements what HLA 1.3 requires of each concrete exception class: its name, `cloneSelf` and `throwSelf`.
/// `Concrete` inherits the constructors and declares the text `_ex`, its published name, which the host's
/// infrastructure defines.
template <class Concrete>
class RTIFED_EXPORT ConcreteException : public Exception {
public:
    /// Copies the text. Throws std::bad_alloc.
    ConcreteException(const char *reason) : Exception(reason) { _name = Concrete::_ex; }
    ConcreteException(const ConcreteException &other) noexcept(std::is_nothrow_copy_constructible_v<Exception>)
        : Exception(other) {
        _name = Concrete::_ex;
    }
    ConcreteException &operator=(const ConcreteException &) = default;

    /// Returns a new object with the same reason, owned by the caller. The serial number is not copied. Returns null if
    /// memory runs out, since callers clone while they handle another error.
    Exception *cloneSelf() const noexcept override {
        try {
            return new Concrete(textOf(_reason));
        } catch (...) {
            return nullptr;
        }
    }
    void throwSelf() const override { throw static_cast<const Concrete &>(*this); }

private:
    // The host's base class may keep the reason as either.
    static const char *textOf(const char *reason) { return reason; }
    static const char *textOf(const std::string &reason) { return reason.c_str(); }
};

/// A name given to a lookup has no match, or a FED declaration names an unknown routing space.
class RTIFED_EXPORT NameNotFound : public ConcreteException<NameNotFound> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// No object class has this handle.
class RTIFED_EXPORT ObjectClassNotDefined : public ConcreteException<ObjectClassNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The object class neither declares nor inherits an attribute of this handle.
class RTIFED_EXPORT AttributeNotDefined : public ConcreteException<AttributeNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// No interaction class has this handle.
class RTIFED_EXPORT InteractionClassNotDefined : public ConcreteException<InteractionClassNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The interaction class neither declares nor inherits a parameter of this handle.
class RTIFED_EXPORT InteractionParameterNotDefined : public ConcreteException<InteractionParameterNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// No routing space has this handle.
class RTIFED_EXPORT SpaceNotDefined : public ConcreteException<SpaceNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The routing space has no dimension of this handle.
class RTIFED_EXPORT DimensionNotDefined : public ConcreteException<DimensionNotDefined> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The handle is neither reliable nor best-effort transportation.
class RTIFED_EXPORT InvalidTransportationHandle : public ConcreteException<InvalidTransportationHandle> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The handle is neither time-stamp nor receive ordering.
class RTIFED_EXPORT InvalidOrderingHandle : public ConcreteException<InvalidOrderingHandle> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The FED file cannot be opened.
class RTIFED_EXPORT CouldNotOpenFED : public ConcreteException<CouldNotOpenFED> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// The FED file cannot be parsed, contradicts itself, or lacks a part of the Management Object Model.
class RTIFED_EXPORT ErrorReadingFED : public ConcreteException<ErrorReadingFED> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

/// An index is out of range, an image is damaged, or a handle that the database itself issued is unknown.
class RTIFED_EXPORT RTIinternalError : public ConcreteException<RTIinternalError> {
public:
    static const char *_ex;
    using ConcreteException::ConcreteException;
};

} // namespace RTI
