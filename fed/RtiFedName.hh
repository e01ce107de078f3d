#pragma once

#include "infrastructure/RtiExport.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// A name to look for, in any letter case: its text and a hash of its upper case. The hash is computed once, however
/// many look-ups are asked. It is another one in each process, so that no file can be made to fill one place of a table.
///
/// Names are taken sixteen bytes at a time, each lower-case letter as its upper case. The last block may overlap the one
/// before it, so that a name is cut into the same blocks wherever it is stored.
class RTI_EXPORT RtiFedName {
public:
    RtiFedName(std::string_view text) : _text(text), _hash(hashOf(text)) {}
    RtiFedName(const std::string &text) : RtiFedName(std::string_view(text)) {}
    /// A name whose hash is known.
    RtiFedName(std::string_view text, std::uint64_t hash) : _text(text), _hash(hash) {}

    std::string_view text() const { return _text; }
    std::uint64_t hash() const { return _hash; }

    /// Whether two names are the same in upper case.
    static bool equal(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equal(a, b.data(), [](Block block) { return upper(block); });
    }
    /// The same for a name of the same length at `b` that is in upper case already.
    static bool equalUpper(std::string_view a, const char *b) {
        return equal(a, b, [](Block block) { return block; });
    }

    /// Writes the upper case of a name.
    static void putUpper(std::string_view name, char *to) {
        for (const char c : name)
            *to++ = static_cast<char>(RtiStringUtility::toupper(c));
    }

private:
    using Word = std::uint64_t;
    using Block = unsigned char __attribute__((vector_size(16))); // which the compiler works on as a whole

    static Block load(const char *bytes) {
        Block block;
        std::memcpy(&block, bytes, sizeof block);
        return block;
    }
    /// Of a name of up to sixteen bytes: all of them, whatever stands behind them.
    static Block loadShort(const char *bytes, std::size_t size) {
        Word words[2] = {0, 0};
        if (size >= 8) {
            std::memcpy(&words[0], bytes, 8);
            std::memcpy(&words[1], bytes + size - 8, 8);
        } else if (size >= 4) {
            std::memcpy(&words[0], bytes, 4);
            std::memcpy(&words[1], bytes + size - 4, 4);
        } else {
            for (std::size_t i = 0; i < size; ++i)
                words[0] = words[0] << 8 | static_cast<unsigned char>(bytes[i]);
        }
        Block block;
        std::memcpy(&block, words, sizeof block);
        return block;
    }

    /// a to z become A to Z, as by RtiStringUtility::toupper.
    static Block upper(Block block) { return block ^ ((block - 'a' < 26) & 0x20); }

    template <class Fold>
    static bool equal(std::string_view a, const char *b, Fold foldB) {
        const std::size_t size = a.size();
        if (size <= 16)
            return same(upper(loadShort(a.data(), size)), foldB(loadShort(b, size)));
        for (std::size_t at = 0; at + 16 < size; at += 16)
            if (!same(upper(load(a.data() + at)), foldB(load(b + at))))
                return false;
        return same(upper(load(a.data() + size - 16)), foldB(load(b + size - 16)));
    }

    static bool same(Block a, Block b) {
        Word words[2];
        const Block differ = a ^ b;
        std::memcpy(words, &differ, sizeof words);
        return (words[0] | words[1]) == 0;
    }

    /// Mixes a block into a hash, so that each bit of the result depends on all of both.
    static Word mix(Word hash, Block block) {
        // Never equal to the first word, since no upper case has an "a": that would cancel all the rest.
        constexpr Word kOther = 0xA0617361646F6261U;
        Word words[2];
        std::memcpy(words, &block, sizeof words);
        words[0] ^= kOther;
        words[1] ^= hash;
#ifdef __SIZEOF_INT128__
        __extension__ using Wide = unsigned __int128;
        const Wide product = static_cast<Wide>(words[0]) * words[1];
        return static_cast<Word>(product) ^ static_cast<Word>(product >> 64);
#else
        const Word product = (words[0] ^ (words[1] << 32 | words[1] >> 32)) * 0x9FB21C651E98DF25U;
        return (product ^ product >> 29) * 0xD6E8FEB86659FD93U ^ words[1];
#endif
    }

    static Word hashOf(std::string_view name) {
        const char *bytes = name.data();
        const std::size_t size = name.size();
        Word hash = reinterpret_cast<std::uintptr_t>(&_anchor) + size;
        if (size <= 16)
            return mix(hash, upper(loadShort(bytes, size)));
        for (std::size_t at = 0; at + 16 < size; at += 16)
            hash = mix(hash, upper(load(bytes + at)));
        return mix(hash, upper(load(bytes + size - 16)));
    }

    static const char _anchor; // stands at another address in each process

    std::string_view _text;
    Word _hash;
};
