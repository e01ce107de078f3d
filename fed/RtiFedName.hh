#pragma once

#include "infrastructure/RtiStringUtility.hh"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// A name to look for, in any letter case: its text and a hash of its upper case. The hash is computed once, however
/// many look-ups are asked. It is another one in each process, so that no file can be made to fill one place of a
/// table.
///
/// Names are taken eight bytes at a time, each lower-case letter as its upper case. The last eight bytes may overlap
/// those before them, so that a name is cut into the same words wherever it is stored.
class RtiFedName {
public:
    RtiFedName(std::string_view text) : _text(text), _hash(hashOf(text)) {}
    RtiFedName(const std::string &text) : RtiFedName(std::string_view(text)) {}
    /// A name whose hash is known.
    RtiFedName(std::string_view text, std::uint64_t hash) : _text(text), _hash(hash) {}

    std::string_view text() const { return _text; }
    std::uint64_t hash() const { return _hash; }

    /// Whether two names of the same length are the same in upper case.
    static bool equal(const char *a, const char *b, std::size_t size) {
        if (size < 8)
            return upper(loadShort(a, size)) == upper(loadShort(b, size));
        for (std::size_t i = 0; i + 8 < size; i += 8)
            if (upper(load(a + i)) != upper(load(b + i)))
                return false;
        return upper(load(a + size - 8)) == upper(load(b + size - 8));
    }
    static bool equal(std::string_view a, std::string_view b) {
        return a.size() == b.size() && equal(a.data(), b.data(), a.size());
    }

    /// The same for a name `b` that is in upper case already.
    static bool equalUpper(const char *a, const char *b, std::size_t size) {
        if (size < 8)
            return upper(loadShort(a, size)) == loadShort(b, size);
        for (std::size_t i = 0; i + 8 < size; i += 8)
            if (upper(load(a + i)) != load(b + i))
                return false;
        return upper(load(a + size - 8)) == load(b + size - 8);
    }

    /// Writes the upper case of a name.
    static void putUpper(std::string_view name, char *to) {
        for (const char c : name)
            *to++ = static_cast<char>(RtiStringUtility::toupper(c));
    }

private:
    static constexpr std::uint64_t kOnes = 0x0101010101010101U;

    static std::uint64_t load(const char *bytes) {
        std::uint64_t word;
        std::memcpy(&word, bytes, sizeof word);
        return word;
    }
    /// Of fewer than eight bytes.
    static std::uint64_t loadShort(const char *bytes, std::size_t size) {
        if (size >= 4) {
            std::uint32_t first, last;
            std::memcpy(&first, bytes, sizeof first);
            std::memcpy(&last, bytes + size - 4, sizeof last);
            return static_cast<std::uint64_t>(last) << 32 | first;
        }
        if (size == 0)
            return 0;
        const auto at = [bytes](std::size_t i) {
            return static_cast<std::uint64_t>(static_cast<unsigned char>(bytes[i]));
        };
        return at(0) << 16 | at(size / 2) << 8 | at(size - 1);
    }

    /// a to z become A to Z in each byte of the word; bytes beyond ASCII stay, as in RtiStringUtility::toupper.
    static std::uint64_t upper(std::uint64_t word) {
        const std::uint64_t low = word & 0x7F * kOnes; // so that no sum carries into the next byte
        const std::uint64_t fromA = low + (0x80 - 'a') * kOnes, beyondZ = low + (0x7F - 'z') * kOnes;
        return word ^ ((fromA ^ beyondZ) & ~word & 0x80 * kOnes) >> 2;
    }

    /// Mixes two words so that each bit of the result depends on all of theirs.
    static std::uint64_t mix(std::uint64_t a, std::uint64_t b) {
#ifdef __SIZEOF_INT128__
        __extension__ using Wide = unsigned __int128;
        const Wide product = static_cast<Wide>(a) * b;
        return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
#else
        const std::uint64_t product = (a ^ (b << 32 | b >> 32)) * 0x9FB21C651E98DF25U;
        return (product ^ product >> 29) * 0xD6E8FEB86659FD93U ^ b;
#endif
    }

    static std::uint64_t hashOf(std::string_view name) {
        static const char anchor = 0; // stands at another address in each process
        constexpr std::uint64_t kFirst = 0xA0761D6478BD642FU, kSecond = 0xE7037ED1A0B428DBU;
        const char *bytes = name.data();
        const std::size_t size = name.size();
        std::uint64_t hash = reinterpret_cast<std::uintptr_t>(&anchor) * kFirst ^ size;
        if (size < 8)
            return mix(mix(upper(loadShort(bytes, size)) ^ kFirst, hash), kSecond);
        std::size_t at = 0;
        for (; at + 16 < size; at += 16)
            hash = mix(upper(load(bytes + at)) ^ kFirst, upper(load(bytes + at + 8)) ^ hash);
        const std::size_t last = size - 8, before = at + 8 < size ? at : last;
        return mix(mix(upper(load(bytes + before)) ^ kFirst, upper(load(bytes + last)) ^ hash), kSecond);
    }

    std::string_view _text;
    std::uint64_t _hash;
};
