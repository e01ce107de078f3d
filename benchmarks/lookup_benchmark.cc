// Measures lookups of our database and of alternatives. Before any is timed, every contender answers all queries, and
// the answers must be equal to ours. Usage: rtifed-bench-lookup DIRECTORY WORKLOAD/SIZE... [--benchmark_...]

#include "benchmarks/Program.hh"
#include "benchmarks/Random.hh"
#include "fed/RtiFedDatabase.hh"

#include <absl/container/flat_hash_map.h>
#include <absl/strings/string_view.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using Handle = std::uint32_t;
using Hashed = absl::flat_hash_map<std::string, Handle>;

constexpr std::size_t kQueries = 1 << 15;
constexpr std::string_view kRootPrefix = "ObjectRoot.";

/// Outlives the benchmarks, which refer to it.
template <class T, class... Args>
T &keep(Args &&...args) {
    static std::vector<std::unique_ptr<T>> kept;
    return *kept.emplace_back(std::make_unique<T>(std::forward<Args>(args)...));
}

absl::string_view key(std::string_view name) {
    return {name.data(), name.size()};
}

// ---- Measuring

/// `ask` answers the query at the given index.
template <class Ask>
struct Contender {
    const char *name;
    Ask ask;
};
template <class Ask>
Contender(const char *, Ask) -> Contender<Ask>;

template <class Ask>
void backToBack(benchmark::State &state, Ask ask) {
    for (auto _ : state) {
        std::size_t sum = 0; // of the answers, so that the compiler cannot skip reading them
        for (std::size_t i = 0; i < kQueries; ++i)
            sum += static_cast<std::size_t>(ask(i));
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kQueries));
}

/// Each query depends on the previous answer, in a way that changes nothing but that the compiler cannot see through.
template <class Ask>
void chained(benchmark::State &state, Ask ask) {
    std::size_t zero = 0, i = 0;
    benchmark::DoNotOptimize(zero);
    for (auto _ : state)
        for (std::size_t count = 0; count < kQueries; ++count)
            i = (i + 1 + (ask(i) & zero)) % kQueries;
    benchmark::DoNotOptimize(i);
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kQueries));
}

/// Registers the contenders, back to back and chained. The first is ours; the answers of the others must be the same.
template <class Ours, class... Peers>
void compare(const std::string &workload, const Ours &ours, const Peers &...peers) {
    const auto add = [&](const auto &contender) {
        for (std::size_t i = 0; i < kQueries; ++i) {
            const auto expected = ours.ask(i), answer = contender.ask(i);
            if (answer != expected)
                throw std::runtime_error(workload + ", query " + std::to_string(i) + ": ours answers " +
                                         std::to_string(expected) + ", " + contender.name + " " +
                                         std::to_string(answer));
        }
        using Ask = decltype(contender.ask);
        const std::string name = workload + "/" + contender.name;
        benchmark::RegisterBenchmark((name + "/back-to-back").c_str(), backToBack<Ask>, contender.ask);
        benchmark::RegisterBenchmark((name + "/chained").c_str(), chained<Ask>, contender.ask);
    };
    add(ours);
    (add(peers), ...);
}

// ---- Queries

std::string upper(std::string_view name) {
    std::string text(name);
    for (char &c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string inMixedCase(std::string name, Random &random) {
    for (char &c : name)
        if (std::isalpha(static_cast<unsigned char>(c)) && random.below(2) == 0)
            c = static_cast<char>(c ^ 0x20);
    return name;
}

/// The federation's names as declared, and the same in mixed case; each kind contiguous in memory.
struct NameQueries {
    explicit NameQueries(const std::vector<std::string> &names) {
        Random random(names.size());
        for (const std::string &name : names) {
            _exactText += name;
            _mixedText += inMixedCase(name, random);
        }
        std::size_t begin = 0;
        for (const std::string &name : names) {
            exact.push_back(std::string_view(_exactText).substr(begin, name.size()));
            mixed.push_back(std::string_view(_mixedText).substr(begin, name.size()));
            begin += name.size();
        }
    }
    std::vector<std::string_view> exact, mixed;

private:
    std::string _exactText, _mixedText;
};

// ---- The database queried

/// A database, and its records by handle.
struct Federation {
    explicit Federation(const std::string &fileName) : database(RtiFedDatabaseConstructorArg(fileName, RTI_true)) {
        numClasses = database.numObjectClasses();
        for (Handle handle = 1; handle <= numClasses; ++handle) {
            records.push_back(database.find(RtiObjectClassHandle(handle)));
            numAttributes += records.back()->getNumberOfAttributes();
        }
    }

    const RtiFedObjectClass &record(Handle handle) const { return *records[handle - 1]; }
    Handle anyClass(Random &random) const { return static_cast<Handle>(random.below(numClasses)) + 1; }
    /// Classes in the order of the queries: uniformly distributed, or skewed towards a few.
    std::vector<Handle> draw(bool skewed) const {
        Random random(numClasses);
        std::vector<Handle> shuffled(numClasses), drawn(kQueries);
        std::size_t magnitudes = 1;
        for (std::size_t i = 0; i < numClasses; ++i) {
            shuffled[i] = static_cast<Handle>(i) + 1;
            std::swap(shuffled[i], shuffled[random.below(i + 1)]);
            magnitudes += std::size_t(1) << magnitudes < i ? 1 : 0;
        }
        // All orders of magnitude are equally likely, so the n-th class is about 1/n as frequent as the first.
        for (Handle &handle : drawn) {
            const std::size_t below =
                skewed ? std::min(std::size_t(1) << random.below(magnitudes + 1), numClasses) : numClasses;
            handle = shuffled[random.below(below)];
        }
        return drawn;
    }
    /// All attributes of a class, inherited ones included.
    std::vector<const RtiFedAttribute *> available(Handle handle) const {
        std::vector<const RtiFedAttribute *> all;
        for (const RtiFedObjectClass *node = &record(handle); node; node = node->getParentClass())
            for (unsigned long i = 0; i < node->getNumberOfAttributes(); ++i)
                all.push_back(node->getAttribute(i));
        return all;
    }

    RtiFedDatabase database;
    std::vector<const RtiFedObjectClass *> records;
    std::size_t numClasses = 0, numAttributes = 0;
};

/// The number of any kind of handle.
template <class AnyHandle>
Handle number(const AnyHandle &handle) {
    return static_cast<Handle>(handle._value);
}

/// A row of bits for each class.
class BitTable {
public:
    BitTable(std::size_t rows, std::size_t columns) : _stride(columns / 64 + 1), _words(rows * _stride) {}

    void set(std::size_t row, std::size_t column) {
        _words[row * _stride + column / 64] |= std::uint64_t(1) << column % 64;
    }
    bool test(std::size_t row, std::size_t column) const {
        return _words[row * _stride + column / 64] >> column % 64 & 1;
    }

private:
    std::size_t _stride;
    std::vector<std::uint64_t> _words;
};

// ---- Workloads

void classNames(const std::string &workload, const Federation &federation, bool skewed) {
    std::vector<std::string> names;
    for (const Handle handle : federation.draw(skewed))
        names.push_back(federation.record(handle).getName());
    const auto &queries = keep<NameQueries>(names);
    const auto &strings = keep<std::vector<std::string>>(names);
    auto &hashed = keep<Hashed>();
    auto &unordered = keep<std::unordered_map<std::string, Handle>>();
    auto &ordered = keep<std::map<std::string, Handle>>();
    hashed.reserve(federation.numClasses);
    unordered.reserve(federation.numClasses);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle) {
        const std::string &name = federation.record(handle).getName();
        hashed.emplace(name, handle);
        unordered.emplace(name, handle);
        ordered.emplace(upper(name), handle);
    }
    compare(
        workload,
        Contender{"ours",
                  [&](std::size_t i) { return number(federation.database.getObjectClassHandle(queries.mixed[i])); }},
        Contender{"flat_hash_map", [&](std::size_t i) { return hashed.find(key(queries.exact[i]))->second; }},
        Contender{"unordered_map", [&](std::size_t i) { return unordered.find(strings[i])->second; }},
        Contender{"map", [&](std::size_t i) { return ordered.find(upper(queries.exact[i]))->second; }});
}

void shortClassNames(const std::string &workload, const Federation &federation) {
    std::vector<std::string> names;
    for (const Handle handle : federation.draw(false)) {
        const std::string &name = federation.record(handle).getName();
        names.push_back(name.size() > kRootPrefix.size() ? name.substr(kRootPrefix.size())
                                                         : name); // the root keeps its name
    }
    const auto &queries = keep<NameQueries>(names);
    auto &hashed = keep<Hashed>();
    hashed.reserve(federation.numClasses);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle)
        hashed.emplace(federation.record(handle).getName(), handle);
    auto &joined = keep<std::string>();
    compare(
        workload,
        Contender{"ours",
                  [&](std::size_t i) { return number(federation.database.getObjectClassHandle(queries.mixed[i])); }},
        Contender{"flat_hash_map", [&](std::size_t i) {
                      auto found = hashed.find(key(queries.exact[i]));
                      if (found == hashed.end())
                          found = hashed.find(joined.assign(kRootPrefix).append(queries.exact[i]));
                      return found->second;
                  }});
}

void attributeNames(const std::string &workload, const Federation &federation) {
    struct Class {
        Handle parent;
        Hashed attributes;
    };
    auto &classes = keep<std::vector<Class>>(federation.numClasses + 1);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle) {
        const RtiFedObjectClass &node = federation.record(handle);
        Class &added = classes[handle];
        added.parent = number(node.getParentClassHandle());
        added.attributes.reserve(node.getNumberOfAttributes());
        for (unsigned long i = 0; i < node.getNumberOfAttributes(); ++i)
            added.attributes.emplace(node.getAttribute(i)->getName(), number(node.getAttribute(i)->getHandle()));
    }
    Random random(federation.numClasses);
    const auto &asked = keep<std::vector<Handle>>(federation.draw(false));
    std::vector<std::string> names;
    for (const Handle handle : asked) {
        const auto available = federation.available(handle);
        names.push_back(available[random.below(available.size())]->getName());
    }
    const auto &queries = keep<NameQueries>(names);
    compare(workload,
            Contender{"ours",
                      [&](std::size_t i) {
                          return number(
                              federation.database.getAttributeHandle(queries.mixed[i], RtiObjectClassHandle(asked[i])));
                      }},
            Contender{"flat_hash_map", [&](std::size_t i) {
                          for (Handle handle = asked[i]; handle != 0; handle = classes[handle].parent) {
                              const auto &attributes = classes[handle].attributes;
                              const auto found = attributes.find(key(queries.exact[i]));
                              if (found != attributes.end())
                                  return found->second;
                          }
                          return Handle(0);
                      }});
}

void records(const std::string &workload, const Federation &federation) {
    const auto &asked = keep<std::vector<Handle>>(federation.draw(false));
    auto &vector = keep<std::vector<const RtiFedObjectClass *>>(1, nullptr);
    auto &hashed = keep<absl::flat_hash_map<Handle, const RtiFedObjectClass *>>();
    hashed.reserve(federation.numClasses);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle) {
        vector.push_back(&federation.record(handle));
        hashed.emplace(handle, &federation.record(handle));
    }
    // The answer is a field of the record, so that a chain goes through it.
    compare(
        workload,
        Contender{"ours",
                  [&](std::size_t i) {
                      return federation.database.find(RtiObjectClassHandle(asked[i]))->getHandle()._value;
                  }},
        Contender{"vector",
                  [&](std::size_t i) { return asked[i] < vector.size() ? vector[asked[i]]->getHandle()._value : 0; }},
        Contender{"flat_hash_map", [&](std::size_t i) { return hashed.find(asked[i])->second->getHandle()._value; }});
}

void declaringClasses(const std::string &workload, const Federation &federation) {
    auto &declaredIn = keep<std::vector<Handle>>(federation.numAttributes + 1);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle) {
        const RtiFedObjectClass &node = federation.record(handle);
        for (unsigned long i = 0; i < node.getNumberOfAttributes(); ++i)
            declaredIn[node.getAttribute(i)->getHandle()._value] = handle;
    }
    Random random(federation.numClasses);
    const auto &classes = keep<std::vector<Handle>>(federation.draw(false));
    auto &attributes = keep<std::vector<Handle>>();
    for (const Handle handle : classes) {
        const auto available = federation.available(handle);
        attributes.push_back(number(available[random.below(available.size())]->getHandle()));
    }
    compare(workload,
            Contender{"ours",
                      [&](std::size_t i) {
                          return number(federation.database.getRealObjectClassHandle(
                              RtiObjectClassHandle(classes[i]), RtiAttributeHandle(attributes[i])));
                      }},
            Contender{"vector", [&](std::size_t i) {
                          return attributes[i] < declaredIn.size() ? declaredIn[attributes[i]] : Handle(0);
                      }});
}

/// In half of the queries, the second class is an ancestor of the first.
void derivation(const std::string &workload, const Federation &federation) {
    auto &derived = keep<BitTable>(federation.numClasses + 1, federation.numClasses + 1);
    for (Handle handle = 1; handle <= federation.numClasses; ++handle)
        for (auto *above = federation.record(handle).getParentClass(); above; above = above->getParentClass())
            derived.set(above->getHandle()._value, handle);
    Random random(federation.numClasses);
    const auto &asked = keep<std::vector<Handle>>(federation.draw(false));
    auto &bases = keep<std::vector<Handle>>();
    auto &baseRecords = keep<std::vector<const RtiFedObjectClass *>>();
    for (const Handle handle : asked) {
        std::vector<Handle> above;
        for (auto *node = federation.record(handle).getParentClass(); node; node = node->getParentClass())
            above.push_back(number(node->getHandle()));
        const bool yes = !above.empty() && random.below(2) == 0;
        bases.push_back(yes ? above[random.below(above.size())] : federation.anyClass(random));
        baseRecords.push_back(&federation.record(bases.back()));
    }
    compare(workload,
            Contender{"ours",
                      [&](std::size_t i) {
                          return baseRecords[i]->hasDerrivedClass(RtiObjectClassHandle(asked[i])) == RTI_true;
                      }},
            Contender{"bits", [&](std::size_t i) {
                          return asked[i] <= federation.numClasses && derived.test(bases[i], asked[i]);
                      }});
}

/// Sets of `size` attributes of a class that has at least as many; every fifth set contains one that the class does not
/// have.
template <std::size_t size>
void availability(const std::string &workload, const Federation &federation) {
    using Set = std::array<Handle, size>;
    auto &available = keep<BitTable>(federation.numClasses + 1, federation.numAttributes + 1);
    std::vector<Handle> classes;
    for (Handle handle = 1; handle <= federation.numClasses; ++handle) {
        const auto attributes = federation.available(handle);
        for (const RtiFedAttribute *attribute : attributes)
            available.set(handle, attribute->getHandle()._value);
        if (attributes.size() >= size)
            classes.push_back(handle);
    }
    if (classes.empty())
        throw std::runtime_error(workload + ": no class has " + std::to_string(size) + " attributes");
    Random random(federation.numClasses);
    auto &asked = keep<std::vector<Handle>>();
    auto &ours = keep<std::vector<RtiAttributeHandleSet>>();
    auto &theirs = keep<std::vector<Set>>();
    while (asked.size() < kQueries) {
        const Handle handle = classes[random.below(classes.size())];
        auto attributes = federation.available(handle);
        Set set;
        for (std::size_t i = 0; i < size; ++i) {
            std::swap(attributes[i], attributes[random.between(i, attributes.size() - 1)]);
            set[i] = number(attributes[i]->getHandle());
        }
        if (random.below(5) == 0) {
            Handle &other = set[random.below(size)];
            do
                other = static_cast<Handle>(random.between(1, federation.numAttributes));
            while (available.test(handle, other));
        }
        asked.push_back(handle);
        theirs.push_back(set);
        RtiAttributeHandleSet &added = ours.emplace_back(size);
        for (const Handle attribute : set)
            added.add(attribute);
    }
    const auto allAvailable = [&](Handle handle, const Set &set) {
        for (const Handle attribute : set)
            if (attribute > federation.numAttributes || !available.test(handle, attribute))
                return false;
        return true;
    };
    compare(workload,
            Contender{"ours",
                      [&](std::size_t i) {
                          return federation.database.verifyAvailableAttributes(RtiObjectClassHandle(asked[i]),
                                                                               ours[i]) == RTI_true;
                      }},
            Contender{"bits", [&, allAvailable](std::size_t i) { return allAvailable(asked[i], theirs[i]); }});
}

using Workload = std::function<void(const std::string &, const Federation &)>;

const std::map<std::string, Workload> kWorkloads = {
    {"class", [](const auto &name, const auto &federation) { classNames(name, federation, false); }},
    {"class-skewed", [](const auto &name, const auto &federation) { classNames(name, federation, true); }},
    {"short-class", shortClassNames},
    {"attribute", attributeNames},
    {"record", records},
    {"declaring-class", declaringClasses},
    {"derivation", derivation},
    {"availability-4", availability<4>},
    {"availability-32", availability<32>}};

} // namespace

int main(int argc, char **argv) {
    return runProgram([&] {
        benchmark::Initialize(&argc, argv);
        if (argc < 3)
            throw std::runtime_error("usage: rtifed-bench-lookup DIRECTORY WORKLOAD/SIZE...");
        std::map<std::string, const Federation *> federations;
        for (int i = 2; i < argc; ++i) {
            const std::string name = argv[i], workload = name.substr(0, name.find('/'));
            const std::string stem = argv[1] + name.substr(workload.size());
            const Federation *&federation = federations[stem];
            if (!federation)
                federation = &keep<Federation>(stem + ".fed");
            kWorkloads.at(workload)(name, *federation);
        }
        benchmark::RunSpecifiedBenchmarks();
    });
}
