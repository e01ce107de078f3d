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

/// A map from names in any letter case to values. A lookup copies and allocates nothing. `Value` is a small trivial
/// type, and `Value()` means no value.
///
/// An open-addressing hash table that nearly always answers with two cache misses. A bucket is one cache line with up
/// to seven slots, each with 32 bits of the hash and the offset of an entry, and a word of tags: seven bits of the hash
/// for each slot. One comparison of the word finds the slots whose tag matches. An entry that finds its bucket full is
/// put into the next one. The entries (value, length, upper-case name) follow each other in one block; none is moved or
/// removed. The table doubles at five entries per bucket on average, so long runs of full buckets are rare; hostile
/// names cannot cause them, since RtiFedName's hash has a secret key.
/// Threads: const members on any number of threads at once.
template <class Value>
class RtiFedNameMap {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    /// Returns the value of a name, or Value().
    Value find(const RtiFedName &name) const {
        const Word *entry = entryOf(name);
        return entry ? valueAt(entry) : Value();
    }

    /// Adds an entry and returns true. If the name is in use, it keeps its value, and false is returned. Throws
    /// std::bad_alloc, or std::length_error beyond 16 GiB of names, leaving the map unchanged.
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

    /// Replaces the value of a name, which must be in the map.
    void replace(const RtiFedName &name, Value value) {
        std::memcpy(&_block[static_cast<std::size_t>(entryOf(name) - _block.data())], &value, kValueSize);
    }

    /// Allocates the buckets for `size` names, but not the entries.
    void reserve(std::size_t size) {
        std::size_t buckets = _buckets.empty() ? 1 : _buckets.size();
        while (size > buckets * kFill)
            buckets *= 2;
        if (buckets > _buckets.size())
            grow(buckets);
    }

    void clear() { *this = RtiFedNameMap(); }

    std::size_t size() const { return _size; }

    /// Returns each name in upper case with its value, sorted by bytes. The names are owned by the map.
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
    static constexpr std::size_t kSlots = 7; // in a bucket
    static constexpr std::size_t kFill = 5;  // used slots per bucket, on average, at which the table grows
    static constexpr std::uint64_t kOnes = 0x0101010101010101U;

    struct Slot {
        std::uint32_t hash;
        std::uint32_t place; // the offset of the entry in the block
    };
    struct alignas(64) Bucket {
        /// One byte for each slot, 0 if it is free; the lowest byte is kOverflowed if an entry of this bucket is in the
        /// next one.
        std::uint64_t tags = 0;
        Slot slots[kSlots];
    };
    static_assert(sizeof(Bucket) == 64);

    static constexpr std::uint64_t kOverflowed = 1;

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

    // Inlined, so that a name that was just hashed stays in registers.
    [[gnu::always_inline]] const Word *entryOf(const RtiFedName &name) const {
        const auto hash = static_cast<std::uint32_t>(name.hash());
        const std::uint64_t wanted = tagOf(name) * kOnes;
        const std::size_t mask = _buckets.size() - 1;
        for (std::size_t i = 0; i < _buckets.size(); ++i) {
            const Bucket &bucket = _buckets[(hash + i) & mask];
            const std::uint64_t differ = bucket.tags ^ wanted;
            // Every equal byte has its high bit set; a byte above an equal one may have it too, which the comparison of
            // the hashes sorts out.
            for (std::uint64_t found = (differ - kOnes) & ~differ & 0x8080808080808000U; found; found &= found - 1) {
                const Slot &slot = bucket.slots[lowestByte(found) - 1];
                if (slot.hash != hash)
                    continue;
                const Word *entry = &_block[slot.place];
                if (RtiFedName::equalUpper(name.text(), textAt(entry)))
                    return entry;
            }
            if (!(bucket.tags & kOverflowed))
                return nullptr;
        }
        return nullptr;
    }

    static int lowestByte(std::uint64_t word) { return __builtin_ctzll(word) / 8; }

    /// Appends an entry to the block and returns its offset.
    std::uint32_t append(std::string_view name, Value value) {
        const std::size_t place = _block.size();
        const std::size_t end = place + wordsOf(name.size());
        if (name.size() > UINT32_MAX || end > UINT32_MAX)
            throw std::length_error(
                "a name is longer than 4 GiB, or all names of one map together are longer than 16 GiB");
        if (end > _block.capacity())
            _block.reserve(std::max(end, _block.capacity() + _block.capacity() / 2));
        _block.resize(end);
        std::memcpy(&_block[place], &value, kValueSize);
        _block[place + kValueWords] = static_cast<std::uint32_t>(name.size());
        RtiFedName::putUpper(name, reinterpret_cast<char *>(&_block[place] + kHeadWords));
        return static_cast<std::uint32_t>(place);
    }

    /// Enters an entry into the first bucket with a free slot, starting with the bucket of the hash.
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
            bucket.tags |= kOverflowed;
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

    std::vector<Bucket> _buckets; // their number is a power of two or 0
    std::vector<Word> _block;
    std::size_t _size = 0;
};
