#include "tool/input/HeapReserve.hh"

#include <cstdlib>
#ifdef __GLIBC__

#include <algorithm>
#include <climits>
#include <cstdint>
#include <malloc.h>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

// equivalent in this function: only how long a command takes depends on it
namespace {

constexpr std::size_t kLeastFileSize = 262144; // smaller ones need less than two huge pages
constexpr std::size_t kHeapPerByte = 10;       // of a text: what the commands need that need most
constexpr std::size_t kGreatestReserve = std::size_t(1) << 30;
constexpr int kGreatestBlock = 1 << 25; // in the heap: greater ones are mapped; malloc allows no more
constexpr int kUsualTopPad = 131072;    // by which the heap grows more than it has to

/// Asks for huge pages between two ends of the heap.
void useHugePages(std::byte *oldEnd, const std::byte *newEnd) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    const std::size_t gap = (0 - reinterpret_cast<std::uintptr_t>(oldEnd)) & (page - 1);
    if (newEnd > oldEnd + gap) // otherwise there was room enough, or no memory
        static_cast<void>(madvise(oldEnd + gap, static_cast<std::size_t>(newEnd - oldEnd) - gap, MADV_HUGEPAGE));
}

} // namespace

// equivalent in this function: as above
void reserveHeap(std::size_t fileSize) {
    if (fileSize < kLeastFileSize)
        return;
    const std::size_t reserve = std::min(fileSize, kGreatestReserve / kHeapPerByte) * kHeapPerByte;
    const std::size_t block = std::min<std::size_t>(reserve, kGreatestBlock / 2);
    mallopt(M_MMAP_THRESHOLD, kGreatestBlock);
    mallopt(M_TRIM_THRESHOLD, INT_MAX); // a later file can use the memory again
    mallopt(M_TOP_PAD, static_cast<int>(reserve - block));
    auto *oldEnd = static_cast<std::byte *>(sbrk(0));
    void *const allocated = ::operator new(block, std::nothrow); // unlike a new expression, never optimized away
    mallopt(M_TOP_PAD, kUsualTopPad);
    useHugePages(oldEnd, static_cast<std::byte *>(sbrk(0)));
    ::operator delete(allocated);
}

#else

void reserveHeap(std::size_t) {}

#endif
