#pragma once

#include <atomic>
#include <memory>

/// A value that is made on first demand by whichever thread comes first, and then kept and owned, without a lock.
///
/// Several threads may each make the value; an atomic compare-and-exchange keeps the first and frees the others, so all
/// threads see one object. That is right only because all of them make equal values.
template <class T>
class RtiFedPublished {
public:
    RtiFedPublished() = default;
    ~RtiFedPublished() { delete _value.load(std::memory_order_relaxed); }
    RtiFedPublished(const RtiFedPublished &) = delete;
    RtiFedPublished &operator=(const RtiFedPublished &) = delete;

    /// The value, or null while there is none. Pairs with the release in publish.
    T *get() const { return _value.load(std::memory_order_acquire); }

    /// Keeps `value` unless another thread has published first, in which case `value` is freed. Returns what is kept.
    T *publish(std::unique_ptr<T> value) const {
        T *first = nullptr;
        if (_value.compare_exchange_strong(first, value.get(), std::memory_order_release, std::memory_order_acquire))
            return value.release();
        return first;
    }

    /// Replaces the value and frees the old one, unless it is the same. Needs exclusive access.
    void set(std::unique_ptr<T> value) {
        T *old = _value.exchange(value.get());
        if (old != value.release())
            delete old;
    }

private:
    mutable std::atomic<T *> _value{nullptr};
};
