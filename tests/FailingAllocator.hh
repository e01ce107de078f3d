#pragma once

/// The allocator of executables that are linked with FailingAllocator.cc: malloc, so that sanitizers keep their checks,
/// with a counter and a failure on demand.

/// The number of allocations that were not released.
extern long liveAllocations;
/// How many allocations later one fails, by throwing std::bad_alloc; 0: none fails.
extern unsigned long allocationsToFailure;

/// Lets the n-th allocation of its lifetime fail.
class FailNthAllocation {
public:
    explicit FailNthAllocation(unsigned long n) { allocationsToFailure = n; }
    ~FailNthAllocation() { allocationsToFailure = 0; }
    FailNthAllocation(const FailNthAllocation &) = delete;
    FailNthAllocation &operator=(const FailNthAllocation &) = delete;
    bool happened() const { return allocationsToFailure == 0; }
};
