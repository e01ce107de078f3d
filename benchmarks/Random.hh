#pragma once

#include <cstddef>
#include <cstdint>

/// Generates the same numbers on every machine, unlike the distributions of the standard library.
class Random {
public:
    explicit Random(std::uint64_t seed) : _state(seed) {}

    /// A number from 0 to `bound` - 1.
    std::size_t below(std::size_t bound) {
        std::uint64_t z = _state += 0x9E3779B97F4A7C15u;
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9u;
        z = (z ^ z >> 27) * 0x94D049BB133111EBu;
        return static_cast<std::size_t>(((z ^ z >> 31) >> 32) * bound >> 32);
    }
    std::size_t between(std::size_t least, std::size_t most) { return least + below(most - least + 1); }

private:
    std::uint64_t _state;
};
