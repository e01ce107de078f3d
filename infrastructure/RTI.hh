#pragma once

#include "infrastructure/RtiExport.hh"

#include <memory>
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

/// The trace masks that trace nothing and everything (see RtiDump::setTraceMask).
inline constexpr unsigned char RTI_T_NONE = 0;
inline constexpr unsigned char RTI_T_ALL = 0xFF;

namespace RTI {

/// Base of every exception of the HLA 1.3 interface.
///
/// The text is shared between copies, so copying never throws; it lives as long as the last copy.
/// Threads: copies may be used on different threads.
class RTI_EXPORT Exception {
public:
    /// Copies `reason`; a null pointer is treated as an empty text. Throws std::bad_alloc.
    Exception(const char *reason)
        : _reason(""), _name("Exception"), _text(std::make_shared<const std::string>(reason ? reason : "")) {
        _reason = _text->c_str();
    }
    Exception(const Exception &) noexcept = default;
    Exception &operator=(const Exception &) noexcept = default;
    virtual ~Exception() = default;

    /// Returns a new object of the most derived type, constructed from the reason and owned by the caller. The serial
    /// number is not copied. Returns null if memory runs out, since callers clone while they handle another error.
    virtual Exception *cloneSelf() const noexcept;

    /// Throws a copy of this object as its most derived type.
    virtual void throwSelf() const { throw *this; }

    unsigned long _serial = 0; ///< Numbers the exceptions of a host; always 0 here.
    const char *_reason;       ///< The message, never null; owned by the exception.
    const char *_name;         ///< The published class name, never null; a constant of the class.

private:
    std::shared_ptr<const std::string> _text;
};

} // namespace RTI
