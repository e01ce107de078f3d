#pragma once

#include "fed/RtiFedExport.hh"
#include "infrastructure/RTI.hh"

#include <type_traits>

namespace RTI {

/// Gives a concrete exception class what HLA 1.3 asks of each: its name, `cloneSelf` and `throwSelf`.
/// `Concrete` inherits the constructors and has the text `_ex`, its published name.
template <class Concrete>
class RTIFED_EXPORT ConcreteException : public Exception {
public:
    ConcreteException(const char *reason) : Exception(reason) { _name = Concrete::_ex; }
    ConcreteException(const ConcreteException &other) noexcept(std::is_nothrow_copy_constructible_v<Exception>)
        : Exception(other) {
        _name = Concrete::_ex;
    }
    ConcreteException &operator=(const ConcreteException &) = default;

    /// A new object with the same reason, owned by the caller. The serial number is not carried over. Null when memory
    /// is exhausted: a clone is asked for while an error is being handled.
    Exception *cloneSelf() const noexcept override {
        try {
            auto *clone = new Concrete(static_cast<const Concrete &>(*this));
            clone->_serial = 0;
            return clone;
        } catch (...) {
            return nullptr;
        }
    }
    void throwSelf() const override { throw static_cast<const Concrete &>(*this); }
};

} // namespace RTI
