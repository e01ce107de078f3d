#pragma once

#include "fed/storage/RtiFedName.hh"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

/// A look-up from names to values in any letter case, without a copy of the name that is looked for. `Value` is a small
/// plain type, and `Value()` means that there is none.
///
/// A hash table. Its buckets are one cache line each, and hold for up to seven entries a part of the hash and the place
/// of the entry. The entries, each its value, then its name in upper case, follow one another in one block; none moves
/// or goes. So a look-up reads one line of the buckets and the entry, and nothing else.
/// Threads: const members on any number of threads at once.
template <class Value>
class RtiFedNameMap {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    /// The value of a name, or Value().
    Value find(const RtiFedName &name) const {
        const Word *entry = entryOf(name);
        return entry ? valueAt(entry) : Value();
    }

    /// Adds an entry and returns true; a name that is taken keeps its value, and false is returned. If memory runs out,
    /// nothing has changed.
    bool insert(const RtiFedName &name, Value value) {
        if (entryOf(name))
            return false;
        if (_size + 1 > _buckets.size() * kFill)
            grow(_buckets.empty() ? 1 : _buckets.size() * 2);
        const std::uint32_t place = append(name.text(), value);
        enter(static_cast<std::uint32_t>(name.hash()), tagOf(name), place);
        ++_size;
        return true;
    }

    /// Gives a name that is there another value.
    void replace(const RtiFedName &name, Value value) {
        std::memcpy(&_block[static_cast<std::size_t>(entryOf(name) - _block.data())], &value, kValueSize);
    }

    /// Takes the memory for so many names, but not for their letters.
    void reserve(std::size_t size) {
        std::size_t buckets = _buckets.empty() ? 1 : _buckets.size();
        while (size > buckets * kFill)
            buckets *= 2;
        if (buckets > _buckets.size())
            grow(buckets);
    }

    void clear() { *this = RtiFedNameMap(); }

    std::size_t size() const { return _size; }

    /// Pairs of each name in upper case and its value, in the order of the names, byte by byte. The names are part of
    /// the map.
    std::vector<std::pair<std::string_view, Value>> sorted() const {
        std::vector<std::pair<std::string_view, Value>> all;
        all.reserve(_size);
        for (const Word *entry = _block.data(); entry != _block.data() + _block.size();) {
            const std::string_view name = textAt(entry);
            all.emplace_back(name, valueAt(entry));
            entry += wordsOf(name.size());
        }
        std::sort(all.begin(), all.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        return all;
    }

private:
    // An entry is the value, the size of the name, and the name, padded to whole words.
    using Word = std::uint32_t;
    static constexpr std::size_t kValueSize = sizeof(Value); // NOLINT(bugprone-sizeof-expression): it may be a pointer
    static constexpr std::size_t kValueWords = (kValueSize + sizeof(Word) - 1) / sizeof(Word);
    static constexpr std::size_t kHeadWords = kValueWords + 1;
    static constexpr std::size_t kSlots = 7; // of a bucket
    static constexpr std::size_t kFill = 5;  // of these, on average, before the table grows
    static constexpr std::uint64_t kOnes = 0x0101010101010101U;

    struct Slot {
        std::uint32_t hash;
        std::uint32_t place; // of the entry in the block
    };
    struct alignas(64) Bucket {
        /// A byte for each slot, 0 if it is free; the lowest byte is 1 if an entry went on to the next bucket.
        std::uint64_t tags = 0;
        Slot slots[kSlots];
    };
    static_assert(sizeof(Bucket) == 64);

    static constexpr std::uint64_t kWentOn = 1;

    static std::uint64_t tagOf(const RtiFedName &name) { return name.hash() >> 56 | 0x80; }
    static std::size_t wordsOf(std::size_t size) { return kHeadWords + (size + sizeof(Word) - 1) / sizeof(Word); }

    static Value valueAt(const Word *entry) {
        Value value;
        std::memcpy(static_cast<void *>(&value), entry, kValueSize);
        return value;
    }
    static std::string_view textAt(const Word *entry) {
        return {reinterpret_cast<const char *>(entry + kHeadWords), entry[kValueWords]};
    }

    // Inlined, so that the parts of a name that was just hashed need not be read back.
    [[gnu::always_inline]] const Word *entryOf(const RtiFedName &name) const {
        const auto hash = static_cast<std::uint32_t>(name.hash());
        const std::uint64_t wanted = tagOf(name) * kOnes;
        const std::size_t mask = _buckets.size() - 1;
        for (std::size_t i = 0; i < _buckets.size(); ++i) {
            const Bucket &bucket = _buckets[(hash + i) & mask];
            const std::uint64_t differ = bucket.tags ^ wanted;
            // The bytes that are equal; and perhaps some that are not, which the comparison sorts out.
            for (std::uint64_t found = (differ - kOnes) & ~differ & 0x8080808080808000U; found; found &= found - 1) {
                const Slot &slot = bucket.slots[lowestByte(found) - 1];
                if (slot.hash != hash)
                    continue;
                const Word *entry = &_block[slot.place];
                if (RtiFedName::equalUpper(name.text(), textAt(entry)))
                    return entry;
            }
            if (!(bucket.tags & kWentOn))
                return nullptr;
        }
        return nullptr;
    }

    static int lowestByte(std::uint64_t word) { return __builtin_ctzll(word) / 8; }

    /// Appends an entry to the block and returns its place.
    std::uint32_t append(std::string_view name, Value value) {
        const std::size_t place = _block.size();
        const std::size_t end = place + wordsOf(name.size());
        if (name.size() > UINT32_MAX || end > UINT32_MAX)
            throw std::length_error("a name takes more than 4 GiB, or all names of one look-up more than 16 GiB");
        if (end > _block.capacity())
            _block.reserve(std::max(end, _block.capacity() + _block.capacity() / 2));
        _block.resize(end);
        std::memcpy(&_block[place], &value, kValueSize);
        _block[place + kValueWords] = static_cast<std::uint32_t>(name.size());
        RtiFedName::putUpper(name, reinterpret_cast<char *>(&_block[place] + kHeadWords));
        return static_cast<std::uint32_t>(place);
    }

    /// Enters a place into the first bucket with a free slot, from that of the hash.
    void enter(std::uint32_t hash, std::uint64_t tag, std::uint32_t place) {
        const std::size_t mask = _buckets.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            Bucket &bucket = _buckets[at];
            for (std::size_t i = 0; i < kSlots; ++i) {
                const std::size_t shift = 8 * (i + 1);
                if ((bucket.tags >> shift & 0xFF) == 0) {
                    bucket.tags |= tag << shift;
                    bucket.slots[i] = {hash, place};
                    return;
                }
            }
            bucket.tags |= kWentOn;
        }
    }

    void grow(std::size_t numBuckets) {
        std::vector<Bucket> old(numBuckets);
        old.swap(_buckets);
        for (const Bucket &bucket : old)
            for (std::size_t i = 0; i < kSlots; ++i)
                if (const std::uint64_t tag = bucket.tags >> 8 * (i + 1) & 0xFF)
                    enter(bucket.slots[i].hash, tag, bucket.slots[i].place);
    }

    std::vector<Bucket> _buckets; // a power of two, or none
    std::vector<Word> _block;
    std::size_t _size = 0;
};
