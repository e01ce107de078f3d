// Loads once in a fresh process and prints the CPU time in nanoseconds.
// Usage: rtifed-bench-load-once CONTENDER STEM

#include "benchmarks/Loads.hh"
#include "benchmarks/Program.hh"

#include <ctime>
#include <iostream>
#include <stdexcept>

namespace {

long long processNanoseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<long long>(now.tv_sec) * 1000000000 + now.tv_nsec;
}

} // namespace

int main(int argc, char **argv) {
    return runProgram([&] {
        if (argc != 3)
            throw std::runtime_error("usage: rtifed-bench-load-once CONTENDER STEM");
        const Load load = loadOf(argv[1], argv[2]);
        const long long begin = processNanoseconds();
        const auto model = load.load();
        std::cout << processNanoseconds() - begin << '\n';
    });
}
