#pragma once

#include "fed/RtiFedExport.hh"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// A name prepared for lookups in any letter case: its text and a hash of its upper case. It does not own the text.
///
/// The hash is computed once for any number of lookups. It depends on the address at which the library was loaded,
/// which differs between processes, so nobody can write a file whose names all collide. Names are hashed and compared
/// in blocks of sixteen bytes, each with a to z replaced by A to Z. The last block of a longer name overlaps the one
/// before it, so the same name gives the same blocks wherever it is stored, and no byte outside of it is read.
class RTIFED_EXPORT RtiFedName {
public:
    RtiFedName(std::string_view text) : _text(text), _hash(hashOf(text)) {}
    RtiFedName(const std::string &text) : RtiFedName(std::string_view(text)) {}
    /// Makes a name whose hash is known.
    RtiFedName(std::string_view text, std::uint64_t hash) : _text(text), _hash(hash) {}

    std::string_view text() const { return _text; }
    std::uint64_t hash() const { return _hash; }

    /// Whether two names have the same upper case.
    static bool equal(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equalBlocks<true>(a.data(), b.data(), a.size());
    }
    /// The same for a `b` that is in upper case already.
    static bool equalUpper(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equalBlocks<false>(a.data(), b.data(), a.size());
    }

    /// Whether a name begins with a prefix of up to sixteen bytes that is given in upper case.
    static bool beginsWith(std::string_view name, std::string_view prefix) {
        return name.size() >= prefix.size() && equalBlocks<false>(name.data(), prefix.data(), prefix.size());
    }

    /// Returns the upper case of a byte. Only a to z change, in every locale and with every host, so
    /// that every process matches names alike.
    static constexpr char upper(char byte) {
        return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
    }
    static std::string upper(std::string_view name) {
        std::string text(name.size(), '\0');
        putUpper(name, text.data());
        return text;
    }
    /// Writes the upper case of a name.
    static void putUpper(std::string_view name, char *to) {
        std::size_t at = 0;
        for (Block block; at + sizeof block <= name.size(); at += sizeof block) {
            load(&name[at], block);
            toUpper(block);
            std::memcpy(to + at, &block, sizeof block);
        }
        for (; at < name.size(); ++at)
            to[at] = upper(name[at]);
    }

private:
    using Word = std::uint64_t;
    // Sixteen bytes, or the same as two words, for vector instructions. They are passed by reference, since the calling
    // convention for such values depends on compiler options.
    using Block = unsigned char __attribute__((vector_size(16)));
    using Words = Word __attribute__((vector_size(16)));

    static void load(const char *bytes, Block &block) { std::memcpy(&block, bytes, sizeof block); }
    /// Loads a name of up to sixteen bytes and no byte after it.
    static void loadShort(const char *bytes, std::size_t size, Block &block) {
        Word first = 0, last = 0;
        if (size >= 8) {
            std::memcpy(&first, bytes, 8);
            std::memcpy(&last, bytes + size - 8, 8);
        } else if (size >= 4) {
            std::memcpy(&first, bytes, 4);
            std::memcpy(&last, bytes + size - 4, 4);
        } else {
            for (std::size_t i = 0; i < size; ++i)
                first = first << 8 | static_cast<unsigned char>(bytes[i]);
        }
        block = reinterpret_cast<Block>(Words{first, last});
    }

    /// Applies upper to each byte.
    static void toUpper(Block &block) { block ^= (block - 'a' < 26) & 0x20; }

    template <bool foldB>
    static bool equalBlocks(const char *a, const char *b, std::size_t size) {
        Block x, y;
        if (size <= 16) {
            loadShort(a, size, x);
            loadShort(b, size, y);
            return same<foldB>(x, y);
        }
        for (std::size_t at = 0; at + 16 < size; at += 16) {
            load(a + at, x);
            load(b + at, y);
            if (!same<foldB>(x, y))
                return false;
        }
        load(a + size - 16, x);
        load(b + size - 16, y);
        return same<foldB>(x, y);
    }
    template <bool foldB>
    static bool same(Block &x, Block &y) {
        toUpper(x);
        if (foldB)
            toUpper(y);
        const Words differ = reinterpret_cast<Words>(x ^ y);
        return (differ[0] | differ[1]) == 0;
    }

    /// Mixes each block with its own keys, so that the multiplications do not wait for each other.
    static Word hashOf(std::string_view name) {
        constexpr Word kStep = 0x9E3779B97F4A7C15U, kOther = 0xD6E8FEB86659FD93U;
        const char *bytes = name.data();
        const std::size_t size = name.size();
        // Two secrets derived from the address: without them nobody can construct colliding names.
        Word key = reinterpret_cast<std::uintptr_t>(&_anchor) * kStep;
        const Word other = (key ^ key >> 32) * kOther;
        Word hash = 0;
        Block block;
        if (size <= 16) {
            loadShort(bytes, size, block);
        } else {
            for (std::size_t at = 0; at + 16 < size; at += 16, key += kStep) {
                load(bytes + at, block);
                hash ^= mix(block, other, key);
            }
            load(bytes + size - 16, block);
        }
        return hash ^ mix(block, other, key + size);
    }

    /// Multiplies both words of a block, in upper case and each combined with a key.
    static Word mix(Block &block, Word first, Word second) {
        toUpper(block);
        Words words{first, second};
        words ^= reinterpret_cast<Words>(block);
        return multiply(words[0], words[1]);
    }

    /// Returns the XOR of both halves of the 128-bit product.
    static Word multiply(Word a, Word b) {
#ifdef __SIZEOF_INT128__
        __extension__ using Wide = unsigned __int128;
        const Wide product = static_cast<Wide>(a) * b;
        return static_cast<Word>(product) ^ static_cast<Word>(product >> 64);
#else
        constexpr Word kHalf = 0xFFFFFFFFU;
        const Word low = (a & kHalf) * (b & kHalf), cross = (a >> 32) * (b & kHalf), other = (a & kHalf) * (b >> 32);
        const Word middle = (low >> 32) + (cross & kHalf) + (other & kHalf);
        const Word high = (a >> 32) * (b >> 32) + (cross >> 32) + (other >> 32) + (middle >> 32);
        return high ^ (middle << 32 | (low & kHalf));
#endif
    }

    static const char _anchor; // its address differs between processes

    std::string_view _text;
    Word _hash;
};
