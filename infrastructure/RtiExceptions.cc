#include "infrastructure/RtiExceptions.hh"

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
