// Loads once and prints the bytes that the model holds and the peak while loading: everything allocated or mapped since
// the start. Usage: rtifed-bench-memory CONTENDER STEM

#include "benchmarks/Loads.hh"
#include "benchmarks/Program.hh"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <iostream>
#include <malloc.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

std::size_t liveBytes = 0;
std::size_t peakBytes = 0;

void *count(void *memory) {
    liveBytes += malloc_usable_size(memory);
    peakBytes = std::max(peakBytes, liveBytes);
    return memory;
}

} // namespace

// ---- The allocator of the C library, with a counter. While a block grows, both the old and the new one count, since
// it may be copied.

extern "C" {

void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t number, std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);
void *__libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void *memory);

void *malloc(std::size_t size) {
    return count(__libc_malloc(size));
}

void *calloc(std::size_t number, std::size_t size) {
    return count(__libc_calloc(number, size));
}

void *realloc(void *memory, std::size_t size) {
    const std::size_t before = malloc_usable_size(memory);
    void *moved = __libc_realloc(memory, size);
    if (moved || size == 0) {
        count(moved);
        liveBytes -= before;
    }
    return moved;
}

void *memalign(std::size_t alignment, std::size_t size) {
    return count(__libc_memalign(alignment, size));
}

void *aligned_alloc(std::size_t alignment, std::size_t size) {
    return count(__libc_memalign(alignment, size));
}

int posix_memalign(void **memory, std::size_t alignment, std::size_t size) {
    *memory = count(__libc_memalign(alignment, size));
    return *memory ? 0 : ENOMEM;
}

void free(void *memory) {
    liveBytes -= malloc_usable_size(memory);
    __libc_free(memory);
}

void *mmap(void *address, std::size_t size, int protection, int flags, int file, off_t offset) {
    const long mapped = syscall(SYS_mmap, address, size, protection, flags, file, offset);
    if (mapped != -1) {
        liveBytes += size;
        peakBytes = std::max(peakBytes, liveBytes);
    }
    return reinterpret_cast<void *>(mapped);
}

int munmap(void *address, std::size_t size) {
    const long result = syscall(SYS_munmap, address, size);
    if (result == 0)
        liveBytes -= size;
    return static_cast<int>(result);
}

} // extern "C"

int main(int argc, char **argv) {
    return runProgram([&] {
        if (argc != 3)
            throw std::runtime_error("usage: rtifed-bench-memory CONTENDER STEM");
        const Load load = loadOf(argv[1], argv[2]);
        const std::size_t before = peakBytes = liveBytes;
        const auto model = load.load();
        std::cout << liveBytes - before << ' ' << peakBytes - before << '\n';
    });
}
