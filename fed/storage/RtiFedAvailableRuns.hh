#pragma once

#include "fed/storage/RtiFedPublished.hh"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

/// The attributes that each class of a tree has, as runs of consecutive handles, to check sets of attributes against.
///
/// A class keeps a set of these attributes. But to get to it, a check would read the address of the class, the class,
/// the set, and then branch on its size: in a large tree, each waits for the third-level cache. Here the handle of the
/// class is the index of one cache line with all its runs, which are compared at once without a branch, so that the
/// processor overlaps several checks. Classes with more than eight runs or handles of more than 31 bits are left out.
///
/// A line is written once, by the thread that first changes its state; the others ask the set in the meantime.
/// Threads: const members on any number of threads at once.
class RtiFedAvailableRuns {
public:
    class Runs {
    public:
        /// Whether one of the runs contains all handles from `first` to `last`.
        [[gnu::always_inline]] bool contain(unsigned long first, unsigned long last) const {
            const auto a = static_cast<std::int32_t>(first), b = static_cast<std::int32_t>(last);
            const auto found =
                reinterpret_cast<Words>(((_first[0] <= a) & (_last[0] >= b)) | ((_first[1] <= a) & (_last[1] >= b)));
            return static_cast<bool>(static_cast<unsigned>((found[0] | found[1]) != 0) & // both, without a branch
                                     static_cast<unsigned>(last <= INT32_MAX));
        }

    private:
        friend RtiFedAvailableRuns;
        static constexpr std::size_t kMost = 8;
        using Numbers = std::int32_t __attribute__((vector_size(16)));
        using Words = std::uint64_t __attribute__((vector_size(16)));

        Numbers _first[2], _last[2]; // equivalent: more only takes memory
    };

    /// For classes with handles below `size`.
    explicit RtiFedAvailableRuns(std::size_t size)
        : _size(size), _states(new std::atomic<State>[size]()), _runs(new Line[size]) {}

    /// The runs of a class, or null if they were not entered.
    const Runs *find(unsigned long classHandle) const {
        const bool isReady =
            classHandle < _size && _states[classHandle].load(std::memory_order_acquire) == State::ready;
        return isReady ? &_runs[classHandle].runs : nullptr;
    }

    /// Enters the runs of a class once. `forEachRun` calls a function with the first and the last handle of each run,
    /// ascending.
    template <class ForEachRun>
    void enter(unsigned long classHandle, ForEachRun forEachRun) const {
        State state = State::none;
        if (classHandle >= _size ||
            !_states[classHandle].compare_exchange_strong(state, State::closed, std::memory_order_relaxed))
            return;
        Runs &runs = _runs[classHandle].runs;
        // equivalent: new memory is most often zero: an empty run, too, since no handle is 0
        for (std::size_t i = 0; i < Runs::kMost; ++i) {
            runs._first[i / 4][i % 4] = INT32_MAX; // an empty run. equivalent: as above
            runs._last[i / 4][i % 4] = -1;         // equivalent: as above
        }
        std::size_t count = 0; // equivalent: only speed: the set is asked instead
        bool fits = true;      // equivalent: likewise
        forEachRun([&](unsigned long first, unsigned long last) {
            fits = fits && count < Runs::kMost && last <= INT32_MAX;
            if (!fits)
                return;
            runs._first[count / 4][count % 4] = static_cast<std::int32_t>(first);
            runs._last[count / 4][count % 4] = static_cast<std::int32_t>(last);
            ++count;
        });
        if (fits)
            _states[classHandle].store(State::ready, std::memory_order_release); // equivalent: likewise
    }

private:
    enum class State : unsigned char { none, closed, ready }; // closed: being written, or left out
    struct alignas(64) Line {
        Runs runs;
    };

    std::size_t _size;
    std::unique_ptr<std::atomic<State>[]> _states;
    std::unique_ptr<Line[]> _runs;
};

/// The runs of a tree, made after as many checks as there are classes, and dropped when the set of a class is replaced.
/// They take 65 bytes for each class, which a few checks would not be worth.
/// Threads: const members on any number of threads at once; drop needs exclusive access.
class RtiFedAvailableRunsHolder {
public:
    const RtiFedAvailableRuns *get() const { return _runs.get(); }

    /// Counts a check that found no runs, and returns the runs when there were many. The handles of `numClasses`
    /// classes are at most `greatest`. Throws std::bad_alloc.
    const RtiFedAvailableRuns *checked(std::size_t numClasses, unsigned long greatest) const {
        if (const RtiFedAvailableRuns *runs = _runs.get())
            return runs;
        // Two threads may count one check together, which does no harm, and need not wait for each other.
        const std::size_t checks = _checks.load(std::memory_order_relaxed) + 1; // equivalent: only speed
        _checks.store(checks, std::memory_order_relaxed);
        if (checks <= numClasses || greatest > 4 * numClasses + 64) // handles far apart would need too many lines
            return nullptr;
        return _runs.publish(std::make_unique<RtiFedAvailableRuns>(greatest + 1)); // equivalent: more only takes memory
    }

    void drop() {
        if (!_runs.get())
            return; // equivalent: only speed; the count begins anew
        _runs.set(nullptr);
        _checks.store(0, std::memory_order_relaxed);
    }

private:
    RtiFedPublished<RtiFedAvailableRuns> _runs;
    mutable std::atomic<std::size_t> _checks{0}; // equivalent: only speed
};
