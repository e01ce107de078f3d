// Loads repeatedly in one process. Usage: rtifed-bench-load DIRECTORY CONTENDER/SIZE... [--benchmark_...]

#include "benchmarks/Loads.hh"
#include "benchmarks/Program.hh"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <stdexcept>

namespace {

std::string listed(const Load &load, Listing::Detail detail) {
    Listing listing(detail);
    load.load()->list(listing);
    return listing.text();
}

/// Throws if two listings differ, naming the first line that does.
void requireEqual(const std::string &contender, const std::string &ours, const std::string &theirs) {
    const auto [here, there] = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
    if (here == ours.end() && there == theirs.end())
        return;
    const auto lineAt = [](const std::string &text, std::size_t place) {
        const std::size_t begin = place == 0 ? 0 : text.rfind('\n', place - 1) + 1;
        return text.substr(begin, text.find('\n', place) - begin);
    };
    const auto place = static_cast<std::size_t>(here - ours.begin());
    throw std::runtime_error(contender + " has another model: ours \"" + lineAt(ours, place) + "\", theirs \"" +
                             lineAt(theirs, place) + "\"");
}

void loadRepeatedly(benchmark::State &state, const Load &load) {
    load.load(); // the first one warms up
    for (auto _ : state) {
        auto model = load.load();
        benchmark::DoNotOptimize(model.get());
        state.PauseTiming();
        model.reset();
        state.ResumeTiming();
    }
}

} // namespace

int main(int argc, char **argv) {
    return runProgram([&] {
        benchmark::Initialize(&argc, argv);
        if (argc < 3)
            throw std::runtime_error("usage: rtifed-bench-load DIRECTORY CONTENDER/SIZE...");
        const std::string directory = argv[1];
        std::map<std::string, std::string> ours;
        for (int i = 2; i < argc; ++i) {
            const std::string name = argv[i], contender = name.substr(0, name.find('/'));
            const std::string stem = directory + name.substr(contender.size());
            const Load load = loadOf(contender, stem);
            std::string &expected = ours[stem + (load.detail == Listing::all ? " all" : "")];
            if (expected.empty())
                expected = listed(loadOf("text", stem), load.detail);
            requireEqual(name, expected, listed(load, load.detail));
            benchmark::RegisterBenchmark(name.c_str(), loadRepeatedly, load)->Unit(benchmark::kNanosecond);
        }
        ours.clear();
        benchmark::RunSpecifiedBenchmarks();
    });
}
