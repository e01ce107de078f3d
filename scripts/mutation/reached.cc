// What a process has reached: when it exits, or raises a signal that may end it, it writes the passed places of each
// module, as offsets, one a line after the module's name, to a file of its own in the folder $RTIFED_REACHED; those of
// $RTIFED_PLACES has all places.

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

namespace {

struct Module {
    const unsigned char *begin, *end;
    unsigned char *ofChildren;    // the counters of processes that were forked and could not write
    const std::uintptr_t *places; // two words each: the address and flags
};

Module modules[16];
int numModules;

void write() {
    const char *all = std::getenv("RTIFED_PLACES"), *folder = all ? all : std::getenv("RTIFED_REACHED");
    if (!folder)
        return;
    std::ofstream file(folder + ("/" + std::to_string(getpid())), std::ios::app);
    for (const Module &module : modules) {
        Dl_info info;
        if (!module.places || !dladdr(module.places, &info))
            continue;
        file << '@' << info.dli_fname << '\n' << std::hex;
        for (std::ptrdiff_t i = 0; i < module.end - module.begin; ++i)
            if (all || module.begin[i] || module.ofChildren[i])
                file << module.places[2 * i] - reinterpret_cast<std::uintptr_t>(info.dli_fbase) << '\n';
    }
}

struct AtExit {
    ~AtExit() { write(); }
} atExit;

} // namespace

// The compiler calls both for each module, in this order.
extern "C" void __sanitizer_cov_8bit_counters_init(unsigned char *begin, unsigned char *end) {
    if (begin != end && numModules < 16 && (numModules == 0 || modules[numModules - 1].begin != begin))
        modules[numModules++] = {begin, end,
                                 static_cast<unsigned char *>(mmap(nullptr, end - begin, PROT_READ | PROT_WRITE,
                                                                   MAP_SHARED | MAP_ANONYMOUS, -1, 0)),
                                 nullptr};
}

extern "C" void __sanitizer_cov_pcs_init(const std::uintptr_t *begin, const std::uintptr_t *) {
    if (numModules > 0)
        modules[numModules - 1].places = begin;
}

extern "C" int raise(int signal) {
    for (const Module &module : modules) // a test may limit the sizes of files
        for (std::ptrdiff_t i = 0; i < module.end - module.begin; ++i)
            module.ofChildren[i] |= module.begin[i];
    write();
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "raise"))(signal);
}
