// The library answers as a plain model of it. RTIFED_MODEL_ROUNDS=50 makes 50 times as many calls as usual.

#include "benchmarks/Random.hh"
#include "tests/Support.hh"
#include "tests/model/Calls.hh"

#include <algorithm>
#include <cctype>

namespace {

std::size_t numRounds(std::size_t usual) {
    const char *times = std::getenv("RTIFED_MODEL_ROUNDS");
    return times ? usual * std::stoul(times) : usual;
}

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

/// Changes something that may no longer load in the classes after the first `numMom`, which stay complete.
void spoil(std::vector<Federation::Class> &classes, std::size_t numMom, Random &random) {
    const std::size_t place = random.between(numMom, classes.size() - 1);
    Federation::Class &node = classes[place];
    const Federation::Class &other = classes[random.below(classes.size())];
    Federation::Member member{other.name, {"reliable", "receive", ""}};
    if (!other.members.empty())
        member.name = other.members.front().name;
    member.name[0] = static_cast<char>(std::tolower(member.name[0]));
    static const char *const kWords[] = {"relaible", "timestamp", "RTI_RELIABLE", "airspace", "hlamomdefaultspace", ""};
    const char *const word = kWords[random.below(std::size(kWords))];
    switch (random.below(6)) {
    case 0:
        node.name = other.name;
        break;
    case 1:
        node.level = static_cast<unsigned>(random.between(1, node.level));
        for (std::size_t next = place + 1; next < classes.size(); ++next)
            classes[next].level = std::min(classes[next].level, classes[next - 1].level + 1);
        break;
    case 2:
        node.members.push_back(member);
        break;
    case 3:
        node.delivery = {"best_effort", word[0] == '\0' ? "rti_receive_ordering" : word, ""};
        break;
    case 4:
        node.delivery.space = word;
        break;
    default:
        for (Federation::Member &each : node.members)
            each.delivery.space = word;
    }
}

} // namespace

TEST(Model, LibraryAnswersAsThePlainModel) {
    const ErrorLines unknownSpaces;
    for (std::size_t seed = 0; seed < numRounds(600); ++seed) {
        Random random(seed);
        const std::vector<Call> calls = randomCalls(random, 300);
        if (!faultOfCalls(calls).empty())
            FAIL() << "seed " << seed << '\n' << faultOfCalls(shortened(calls, nullptr));
    }
}

TEST(Model, LibraryLoadsAsThePlainModel) {
    const ErrorLines unknownSpaces;
    const auto minimal = load(example("minimal.fed"));
    for (std::size_t seed = 0; seed < numRounds(30); ++seed) {
        Random random(seed);
        Federation federation = generateFederation(*minimal, 100 * random.between(1, 3));
        for (std::size_t faults = random.below(4); faults > 0; --faults) {
            spoil(federation.objects, minimal->numObjectClasses(), random);
            spoil(federation.interactions, minimal->numInteractionClasses(), random);
        }
        const std::vector<Call> calls = randomCalls(random, 100);
        if (!faultOfCalls(calls, &federation).empty())
            FAIL() << "seed " << seed << '\n' << faultOfCalls(shortened(calls, &federation), &federation);
    }
}
