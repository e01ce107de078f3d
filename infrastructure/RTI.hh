#pragma once

#include "infrastructure/RtiExport.hh"

#include <memory>
#include <new>
#include <string>

/// The infrastructure's boolean, passed by value: the HLA 1.3 answer to a yes/no question.
using RTI_bool = bool;
inline constexpr RTI_bool RTI_true = true;
inline constexpr RTI_bool RTI_false = false;

/// Importance of a diagnostic message (see RtiDebugStream::enabled). Each is one bit.
inline constexpr unsigned long RTI_G_high = 1;
inline constexpr unsigned long RTI_G_medium = 2;

/// The package a diagnostic message comes from (see RtiDebugStream::enabled). Each is one bit.
inline constexpr unsigned long long RTI_P_fedDatabase = 1;

/// The trace masks with which nothing and everything is traced (see RtiDump::setTraceMask).
inline constexpr unsigned char RTI_T_NONE = 0;
inline constexpr unsigned char RTI_T_ALL = 0xFF;

namespace RTI {

/// Base of every exception of the HLA 1.3 interface.
///
/// The text is shared between copies, so copying never throws; it lives as long as the last copy.
/// Threads: copies may be used on different threads.
class RTI_EXPORT Exception {
public:
    /// Copies `reason`; a null pointer counts as an empty text. Throws std::bad_alloc.
    Exception(const char *reason)
        : _reason(""), _name("Exception"), _text(std::make_shared<const std::string>(reason ? reason : "")) {
        _reason = _text->c_str();
    }
    Exception(const Exception &) noexcept = default;
    Exception &operator=(const Exception &) noexcept = default;
    virtual ~Exception() = default;

    /// A new object of the most derived type with the same reason, owned by the caller. The serial number is not
    /// carried over. Null when memory is exhausted: a clone is asked for while an error is being handled.
    virtual Exception *cloneSelf() const noexcept {
        auto *clone = new (std::nothrow) Exception(*this);
        if (clone)
            clone->_serial = 0;
        return clone;
    }

    /// Throws a copy of this object as its most derived type.
    virtual void throwSelf() const { throw *this; }

    unsigned long _serial = 0; ///< For the host to number its exceptions; this library leaves it 0.
    const char *_reason;       ///< The message, never null; owned by the exception.
    const char *_name;         ///< The published class name, never null; a constant of the class.

private:
    std::shared_ptr<const std::string> _text;
};

} // namespace RTI
