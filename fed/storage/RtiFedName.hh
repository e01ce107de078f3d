#pragma once

#include "fed/RtiFedExport.hh"

#include <algorithm>
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
    RtiFedName(std::string_view text) : RtiFedName(text, Blocks(text)) {}
    RtiFedName(const std::string &text) : RtiFedName(std::string_view(text)) {}
    /// Makes a name whose hash is known.
    RtiFedName(std::string_view text, std::uint64_t hash) : _text(text), _hash(hash) {}

    std::string_view text() const { return _text; }
    std::uint64_t hash() const { return _hash; }

    /// Whether a name in upper case is the upper case of this one.
    bool equalsUpper(std::string_view upperCase) const { return equalUpper(_text, upperCase); }

    /// Whether two names have the same upper case.
    static bool equal(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equalBlocks<true>(a, Blocks(a), b.data());
    }
    /// The same for a `b` that is in upper case already.
    static bool equalUpper(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equalBlocks<false>(a, Blocks(a), b.data());
    }

    /// Whether a name begins with a prefix of eight to sixteen bytes that is given in upper case.
    [[gnu::always_inline]] static bool beginsWith(std::string_view name, std::string_view prefix) {
        if (name.size() < prefix.size())
            return false;
        Block begin, wanted;
        loadPrefix(name.data(), prefix.size(), begin);
        loadPrefix(prefix.data(), prefix.size(), wanted);
        // A letter is equal to one in upper case if they differ in no other bit than that of the case.
        const Block differ = (begin ^ wanted) & ~((wanted - 'A' < 26) & kCaseBit);
        return isZero(reinterpret_cast<const Words &>(differ));
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
        const auto put = [&name, to](std::size_t at) {
            Block block;
            loadUpper(name.data() + at, block);
            std::memcpy(to + at, &block, sizeof block);
        };
        if (name.size() < sizeof(Block)) { // equivalent: only speed
            for (std::size_t at = 0; at < name.size(); ++at)
                to[at] = upper(name[at]);
            return;
        }
        for (std::size_t at = 0; at < lastOf(name); at += sizeof(Block)) // equivalent: the last block may be put twice
            put(at);
        put(lastOf(name)); // overlaps the one before it
    }

private:
    friend class RtiFedFoldedName;

    using Word = std::uint64_t;
    // Sixteen bytes, or the same as two words, for vector instructions. They are passed by reference, since the calling
    // convention for such values depends on compiler options.
    using Block = unsigned char __attribute__((vector_size(16)));
    using Words = Word __attribute__((vector_size(16)));
    using Quarter = std::uint32_t;
    using Quarters = Quarter __attribute__((vector_size(16)));
    static constexpr unsigned char kCaseBit = 0x20;

    [[gnu::always_inline]] static void load(const char *bytes, Block &block) {
        std::memcpy(&block, bytes, sizeof block);
    }
    /// Loads eight to sixteen bytes and no byte after them.
    [[gnu::always_inline]] static void loadPrefix(const char *bytes, std::size_t size, Block &block) {
        Word first = 0, last = 0; // equivalent: both are set next
        std::memcpy(&first, bytes, sizeof first);
        std::memcpy(&last, bytes + size - sizeof last, sizeof last);
        block = reinterpret_cast<Block>(Words{first, last});
    }
    /// Loads a name of up to sixteen bytes and no byte after it. Four quarters that overlap hold all bytes of a name of
    /// four or more, without a branch: many names have about eight bytes, so that one there would be mispredicted.
    [[gnu::always_inline]] static void loadShort(const char *bytes, std::size_t size, Block &block) {
        Quarters quarters{};
        if (size >= sizeof(Quarter)) { // equivalent: only speed: blocks of the same size are made alike
            const std::size_t last = size - sizeof(Quarter), second = std::min(last, sizeof(Quarter));
            quarters = Quarters{quarterAt(bytes), quarterAt(bytes + second), quarterAt(bytes + last - second),
                                quarterAt(bytes + last)};
        } else {
            for (std::size_t i = 0; i < size; ++i)
                quarters[0] = quarters[0] << 8 | static_cast<unsigned char>(bytes[i]);
        }
        block = reinterpret_cast<Block>(quarters);
    }
    [[gnu::always_inline]] static Quarter quarterAt(const char *bytes) {
        Quarter quarter = 0; // equivalent: it is set next
        std::memcpy(&quarter, bytes, sizeof quarter);
        return quarter;
    }

    /// Applies upper to each byte.
    [[gnu::always_inline]] static void toUpper(Block &block) { block ^= (block - 'a' < 26) & kCaseBit; }

    /// Blocks of a name in upper case: the first, the second and the last, which overlap in a name of less than 48
    /// bytes; of a name of up to sixteen bytes, only the first.
    ///
    /// Three blocks are taken even if two would do: a processor predicts badly how often a loop runs that depends on
    /// the length of a name. Only longer names have blocks in between.
    struct Blocks {
        Block first, second, last;

        [[gnu::always_inline]] explicit Blocks(std::string_view name) : first(), second(), last() {
            if (isShort(name)) {
                loadShort(name.data(), name.size(), first);
                toUpper(first);
            } else {
                loadUpper(name.data(), first);
                loadUpper(name.data() + secondOf(name), second);
                loadUpper(name.data() + lastOf(name), last);
            }
        }
    };
    // equivalent: only speed: names of the same size are read alike
    [[gnu::always_inline]] static bool isShort(std::string_view name) { return name.size() <= sizeof(Block); }
    [[gnu::always_inline]] static std::size_t lastOf(std::string_view name) { return name.size() - sizeof(Block); }
    [[gnu::always_inline]] static std::size_t secondOf(std::string_view name) {
        return std::min(lastOf(name), sizeof(Block));
    }
    [[gnu::always_inline]] static void loadUpper(const char *bytes, Block &block) {
        load(bytes, block);
        toUpper(block);
    }
    /// Calls `visit` with the offset of each block between the second and the last.
    template <class Visit>
    [[gnu::always_inline]] static void forEachInner(std::string_view name, Visit visit) {
        // equivalent: the last block may be visited twice
        for (std::size_t at = 2 * sizeof(Block); at < lastOf(name); at += sizeof(Block))
            visit(at);
    }

    template <bool foldB>
    [[gnu::always_inline]] static bool equalBlocks(std::string_view a, const Blocks &blocksOfA, const char *b) {
        Words differ{};
        Block block;
        if (isShort(a)) {
            loadShort(b, a.size(), block);
            addDifference<foldB>(blocksOfA.first, block, differ);
            return isZero(differ);
        }
        load(b, block);
        addDifference<foldB>(blocksOfA.first, block, differ);
        load(b + secondOf(a), block);
        addDifference<foldB>(blocksOfA.second, block, differ);
        load(b + lastOf(a), block);
        addDifference<foldB>(blocksOfA.last, block, differ);
        forEachInner(a, [&](std::size_t at) {
            Block blockOfA;
            loadUpper(a.data() + at, blockOfA);
            load(b + at, block);
            addDifference<foldB>(blockOfA, block, differ);
        });
        return isZero(differ);
    }
    template <bool foldB>
    [[gnu::always_inline]] static void addDifference(const Block &a, Block &b, Words &differ) {
        if (foldB)
            toUpper(b);
        differ |= reinterpret_cast<Words>(a ^ b);
    }
    [[gnu::always_inline]] static bool isZero(const Words &words) { return (words[0] | words[1]) == 0; }

    /// Mixes each block with its own keys, so that the multiplications do not wait for each other.
    // equivalent in this function: only speed, since names with the same hash are compared
    [[gnu::always_inline]] static Word hashOf(std::string_view name, const Blocks &blocks) {
        constexpr Word kStep = 0x9E3779B97F4A7C15U, kOther = 0xD6E8FEB86659FD93U;
        // Two secrets derived from the address: without them nobody can construct colliding names.
        Word key = reinterpret_cast<std::uintptr_t>(&_anchor) * kStep;
        const Word other = (key ^ key >> 32) * kOther;
        Word hash = mix(blocks.first, other, key + name.size());
        if (isShort(name))
            return hash;
        hash ^= mix(blocks.second, other, key += kStep);
        hash ^= mix(blocks.last, other, key += kStep);
        forEachInner(name, [&](std::size_t at) {
            Block block;
            loadUpper(name.data() + at, block);
            hash ^= mix(block, other, key += kStep);
        });
        return hash;
    }

    /// Multiplies both words of a block, each combined with a key.
    // equivalent in this function: likewise
    [[gnu::always_inline]] static Word mix(const Block &block, Word first, Word second) {
        Words words{first, second};
        words ^= reinterpret_cast<Words>(block);
        return multiply(words[0], words[1]);
    }

    /// Returns the XOR of both halves of the 128-bit product.
    // equivalent in this function: likewise
    [[gnu::always_inline]] static Word multiply(Word a, Word b) {
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

    [[gnu::always_inline]] RtiFedName(std::string_view text, const Blocks &blocks)
        : _text(text), _hash(hashOf(text, blocks)) {}

    static const char _anchor; // its address differs between processes

    std::string_view _text;
    Word _hash;
};

/// A name for one lookup, with the upper case that its hash was made of: comparing it does not fold the name again.
class RtiFedFoldedName {
public:
    [[gnu::always_inline]] explicit RtiFedFoldedName(std::string_view text) : _blocks(text), _name(text, _blocks) {}

    std::string_view text() const { return _name.text(); }
    std::uint64_t hash() const { return _name.hash(); }
    [[gnu::always_inline]] bool equalsUpper(std::string_view upperCase) const {
        return upperCase.size() == text().size() && RtiFedName::equalBlocks<false>(text(), _blocks, upperCase.data());
    }

private:
    RtiFedName::Blocks _blocks;
    RtiFedName _name;
};
