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
/// An open-addressing hash table. Its slots form buckets of eight. A bucket has a word of tags, one byte of the hash
/// for each slot, and the eight offsets of the entries. One comparison of the word finds the slots whose tag matches; a
/// name that finds its bucket full is put into the next one. The entries (value, hash, length, upper-case name) follow
/// each other in one block; none is moved or removed. Tags and offsets are two arrays, so that those of 100,000 names
/// still fit in a second-level cache and a lookup nearly always misses it for the entry only. The table doubles at 6.5
/// names per bucket on average, so long runs of full buckets are rare; hostile names cannot cause them, since
/// RtiFedName's hash has a secret key.
/// Threads: const members on any number of threads at once.
template <class Value>
class RtiFedNameMap {
    static_assert(std::is_trivially_copyable_v<Value>);

public:
    /// Returns the value of a name, or Value().
    Value find(const RtiFedName &name) const { return valueOf(name); }
    [[gnu::always_inline]] Value find(const RtiFedFoldedName &name) const { return valueOf(name); }

    /// Adds an entry and returns true. If the name is in use, it keeps its value, and false is returned. Throws
    /// std::bad_alloc, or std::length_error beyond 16 GiB of names, leaving the map unchanged.
    bool insert(const RtiFedName &name, Value value) {
        if (entryOf(name))
            return false;
        if (numBucketsFor(_size + 1) > _tags.size()) // equivalent: only speed
            grow(numBucketsFor(_size + 1));          // equivalent: only speed
        const auto hash = static_cast<std::uint32_t>(name.hash());
        enter(hash, append(name.text(), hash, value));
        ++_size;
        return true;
    }

    /// Replaces the value of a name, which must be in the map.
    void replace(const RtiFedName &name, Value value) {
        std::memcpy(&_block[static_cast<std::size_t>(entryOf(name) - _block.data())], &value, kValueSize);
    }

    /// Allocates the buckets for `size` names, but not the entries.
    void reserve(std::size_t size) {
        if (numBucketsFor(size) > _tags.size()) // equivalent: only speed
            grow(numBucketsFor(size));
    }
    /// Reserves memory for `size` names of `numLetters` letters in all. What pads them is estimated, so that the memory
    /// may still have to grow.
    void reserveEntries(std::size_t size, std::size_t numLetters) {
        const std::size_t padding = sizeof(Word) / 2; // of a name, on average; equivalent: an estimate
        // equivalent: only speed
        _block.reserve(size * kHeadWords + (numLetters + size * padding) / sizeof(Word));
    }

    void clear() { *this = RtiFedNameMap(); }

    std::size_t size() const { return _size; }

    /// Returns each name in upper case with its value, sorted by bytes. The names are owned by the map.
    std::vector<std::pair<std::string_view, Value>> sorted() const {
        std::vector<std::pair<std::string_view, Value>> all;
        all.reserve(_size); // equivalent: only speed
        for (const Word *entry = _block.data(); entry != _block.data() + _block.size();) {
            const std::string_view name = textAt(entry);
            all.emplace_back(name, valueAt(entry));
            entry += wordsOf(name.size());
        }
        std::sort(all.begin(), all.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        return all;
    }

private:
    // An entry is the value, the hash, the size of the name, and the name, padded to whole words.
    using Word = std::uint32_t;
    static constexpr std::size_t kValueSize = sizeof(Value); // NOLINT(bugprone-sizeof-expression): it may be a pointer
    // equivalent: more padding only takes memory
    static constexpr std::size_t kValueWords = (kValueSize + sizeof(Word) - 1) / sizeof(Word);
    static constexpr std::size_t kHeadWords = kValueWords + 2; // equivalent: likewise
    static constexpr std::size_t kSlots = 8;                   // in a bucket
    static constexpr std::uint64_t kOnes = 0x0101010101010101U, kHighBits = 0x8080808080808080U;

    struct alignas(32) Bucket {       // in one cache line
        std::uint32_t places[kSlots]; // the offsets of the entries in the block
    };

    /// The top byte of a hash, but not 0, which marks a free slot.
    static std::uint64_t tagOf(std::uint32_t hash) { return hash >> 24 != 0 ? hash >> 24 : 1; }
    // equivalent: more padding only takes memory
    static std::size_t wordsOf(std::size_t size) { return kHeadWords + (size + sizeof(Word) - 1) / sizeof(Word); }
    /// Finds the bytes that are 0. Sets the high bit of each and, if there is one, perhaps of bytes above it.
    static std::uint64_t zeroBytes(std::uint64_t word) { return (word - kOnes) & ~word & kHighBits; }
    static std::size_t lowestByte(std::uint64_t word) { return static_cast<unsigned>(__builtin_ctzll(word)) / 8; }

    std::size_t numBucketsFor(std::size_t size) const {
        std::size_t buckets = std::max<std::size_t>(_tags.size(), 1); // equivalent: only speed
        while (2 * size > 13 * buckets) // equivalent: only speed, as long as a slot remains free
            buckets *= 2;
        return buckets;
    }

    static Value valueAt(const Word *entry) {
        Value value;
        std::memcpy(static_cast<void *>(&value), entry, kValueSize);
        return value;
    }
    static std::string_view textAt(const Word *entry) {
        return {reinterpret_cast<const char *>(entry + kHeadWords), entry[kValueWords + 1]};
    }

    template <class Name>
    [[gnu::always_inline]] Value valueOf(const Name &name) const {
        const Word *entry = entryOf(name);
        return entry ? valueAt(entry) : Value();
    }
    // Inlined, so that a name that was just hashed stays in registers.
    template <class Name>
    [[gnu::always_inline]] const Word *entryOf(const Name &name) const {
        if (_size == 0)
            return nullptr;
        const auto hash = static_cast<std::uint32_t>(name.hash());
        const std::uint64_t wanted = tagOf(hash) * kOnes;
        const std::size_t mask = _tags.size() - 1;
        for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
            __builtin_prefetch(_buckets.data() + at); // while the tags are loaded; equivalent: only speed
            const std::uint64_t tags = _tags.data()[at];
            for (std::uint64_t found = zeroBytes(tags ^ wanted); found; found &= found - 1) {
                const Word *entry = _block.data() + _buckets.data()[at].places[lowestByte(found)];
                if (name.equalsUpper(textAt(entry)))
                    return entry;
            }
            if (zeroBytes(tags))
                return nullptr;
        }
    }

    /// Appends an entry to the block and returns its offset.
    std::uint32_t append(std::string_view name, std::uint32_t hash, Value value) {
        const std::size_t place = _block.size();
        const std::size_t end = place + wordsOf(name.size());
        // unreached: takes gigabytes
        if (name.size() > UINT32_MAX || end > UINT32_MAX)
            // unreached: takes gigabytes
            throw std::length_error(
                "a name is longer than 4 GiB, or all names of one map together are longer than 16 GiB");
        if (end > _block.capacity()) // equivalent: only speed
            // equivalent: only speed
            _block.reserve(std::max(end, _block.capacity() + _block.capacity() / 2));
        _block.resize(end);
        std::memcpy(&_block[place], &value, kValueSize);
        _block[place + kValueWords] = hash;
        _block[place + kValueWords + 1] = static_cast<std::uint32_t>(name.size());
        RtiFedName::putUpper(name, reinterpret_cast<char *>(&_block[place] + kHeadWords));
        return static_cast<std::uint32_t>(place);
    }

    /// Enters an entry into the first bucket with a free slot, starting with the bucket of the hash.
    void enter(std::uint32_t hash, std::uint32_t place) {
        const std::size_t mask = _tags.size() - 1;
        std::size_t at = hash & mask;
        while (zeroBytes(_tags[at]) == 0)
            at = (at + 1) & mask;
        const std::size_t slot = lowestByte(zeroBytes(_tags[at]));
        _tags[at] |= tagOf(hash) << 8 * slot;
        _buckets[at].places[slot] = place;
    }

    void grow(std::size_t numBuckets) {
        std::vector<std::uint64_t> tags(numBuckets);
        std::vector<Bucket> buckets(numBuckets);
        _tags.swap(tags);
        _buckets.swap(buckets);
        for (std::size_t place = 0; place < _block.size(); place += wordsOf(_block[place + kValueWords + 1]))
            enter(_block[place + kValueWords], static_cast<std::uint32_t>(place));
    }

    std::vector<std::uint64_t> _tags; // one word for each bucket, whose number is a power of two or 0
    std::vector<Bucket> _buckets;
    std::vector<Word> _block;
    std::size_t _size = 0;
};
