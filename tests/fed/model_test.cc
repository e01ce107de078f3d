// The library answers as a plain model of it.

#include "tests/Support.hh"
#include "tests/model/Calls.hh"
#include "tests/model/SpoiledFederation.hh"

namespace {

std::vector<Call> randomCalls(Random &random, std::size_t most) {
    std::vector<Call> calls(random.between(20, most));
    for (Call &call : calls)
        for (unsigned char &byte : call)
            byte = static_cast<unsigned char>(random.below(256));
    return calls;
}

/// Leaves out calls, half of them to one at a time, while the answers still differ.
std::vector<Call> shortened(std::vector<Call> calls, const Federation *federation) {
    for (std::size_t size = calls.size() / 2; size > 0; size /= 2)
        for (std::size_t begin = 0; begin + size <= calls.size();) {
            std::vector<Call> fewer = calls;
            const auto from = fewer.begin() + static_cast<std::ptrdiff_t>(begin);
            fewer.erase(from, from + static_cast<std::ptrdiff_t>(size));
            if (faultOfCalls(fewer, federation).empty())
                begin += size;
            else
                calls = fewer;
        }
    return calls;
}

} // namespace

TEST(Model, LibraryAnswersAsThePlainModel) {
    const ErrorLines unknownSpaces;
    for (std::size_t seed = 0; seed < rounds(600); ++seed) {
        Random random(seed);
        const std::vector<Call> calls = randomCalls(random, 300);
        if (!faultOfCalls(calls).empty())
            FAIL() << "seed " << seed << '\n' << faultOfCalls(shortened(calls, nullptr));
    }
}

TEST(Model, LibraryLoadsAsThePlainModel) {
    const ErrorLines unknownSpaces;
    const auto minimal = load(example("minimal.fed"));
    for (std::size_t seed = 0; seed < rounds(30); ++seed) {
        Random random(seed);
        const Federation federation = spoiledFederation(*minimal, random);
        const std::vector<Call> calls = randomCalls(random, 100);
        if (!faultOfCalls(calls, &federation).empty())
            FAIL() << "seed " << seed << '\n' << faultOfCalls(shortened(calls, &federation), &federation);
    }
}
