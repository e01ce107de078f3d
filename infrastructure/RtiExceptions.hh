#pragma once

#include "infrastructure/RTI.hh"

/// A read needed more bytes than the buffer has left. The text gives both numbers.
class RTI_EXPORT RtiBufferUnderflow : public RTI::Exception {
public:
    static constexpr const char *_ex = "RtiBufferUnderflow";

    RtiBufferUnderflow(const char *reason) : Exception(reason) { _name = _ex; }
    Exception *cloneSelf() const noexcept override;
    void throwSelf() const override { throw *this; }
};

/// A number does not fit into 32 bits. It was refused, not truncated.
class RTI_EXPORT RtiBufferOverflow : public RTI::Exception {
public:
    static constexpr const char *_ex = "RtiBufferOverflow";

    RtiBufferOverflow(const char *reason) : Exception(reason) { _name = _ex; }
    Exception *cloneSelf() const noexcept override;
    void throwSelf() const override { throw *this; }
};

namespace RTI {

/// An index is not below the number of elements.
class RTI_EXPORT ArrayIndexOutOfBounds : public Exception {
public:
    static constexpr const char *_ex = "ArrayIndexOutOfBounds";

    ArrayIndexOutOfBounds(const char *reason) : Exception(reason) { _name = _ex; }
    Exception *cloneSelf() const noexcept override;
    void throwSelf() const override { throw *this; }
};

} // namespace RTI
