// What a process has reached: when it exits, or raises a signal that may end it, it writes the passed places of each
// module, as offsets, one a line after the module's name, to a file of its own in the folder $RTIFED_REACHED; those of
// $RTIFED_PLACES has all places.

#include <cstdint>
#include <cstdlib>
#include <dlfcn.h>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <unistd.h>

namespace {

struct Module {
    const unsigned char *begin, *end;
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
        for (const unsigned char *counter = module.begin; counter != module.end; ++counter)
            if (all || *counter)
                file << module.places[2 * (counter - module.begin)] - reinterpret_cast<std::uintptr_t>(info.dli_fbase)
                     << '\n';
    }
}

struct AtExit {
    ~AtExit() { write(); }
} atExit;

} // namespace

// The compiler calls both for each module, in this order.
extern "C" void __sanitizer_cov_8bit_counters_init(unsigned char *begin, unsigned char *end) {
    if (begin != end && numModules < 16 && (numModules == 0 || modules[numModules - 1].begin != begin))
        modules[numModules++] = {begin, end, nullptr};
}

extern "C" void __sanitizer_cov_pcs_init(const std::uintptr_t *begin, const std::uintptr_t *) {
    if (numModules > 0)
        modules[numModules - 1].places = begin;
}

extern "C" int raise(int signal) {
    const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY}; // a test may limit the sizes of files
    setrlimit(RLIMIT_FSIZE, &unlimited);
    write();
    return reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "raise"))(signal);
}
