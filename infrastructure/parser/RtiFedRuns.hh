#pragma once

#include "infrastructure/parser/RtiFedText.hh"

#include <cstdint>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

/// Finds where words and runs of blanks end in a text.
///
/// The text is classified in blocks of 64 bytes: one bit for each byte that ends a word, and one for each that is not a
/// blank. Classifying takes no branch, and serves all words and blanks of the block, some ten; each end is then found
/// with a shift and a count of zeros. Reading on in the same or the next block is fast; going back is not.
class RtiFedRuns {
public:
    /// The bytes after the text, which are NUL, complete its last block.
    explicit RtiFedRuns(const RtiFedText &text) : _bytes(text.bytes().data()) {}

    /// The offset of the first byte from `at` on that no word may have: a blank, parenthesis, quote, ";" or NUL.
    RtiFedOffset endOfWord(RtiFedOffset at) { return end(at, _wordEnds); }
    /// The offset of the first byte from `at` on that is not a blank.
    RtiFedOffset endOfBlanks(RtiFedOffset at) { return end(at, _nonBlanks); }

private:
    static constexpr RtiFedOffset kBlock = 64; // bytes, one for each bit of a mask
    static_assert(RtiFedText::kPadding >= kBlock);
    static constexpr RtiFedOffset kNone = 0 - kBlock; // no block begins there, and no offset is in it

    using Vector = unsigned char __attribute__((vector_size(16)));
    using Words = std::uint64_t __attribute__((vector_size(16)));

    RtiFedOffset end(RtiFedOffset at, const std::uint64_t &ends) {
        for (;; at = _block + kBlock) {
            if (at - _block >= kBlock) // before the first block, too
                classify(at / kBlock * kBlock);
            if (const std::uint64_t rest = ends >> (at - _block))
                return at + static_cast<RtiFedOffset>(__builtin_ctzll(rest));
        }
    }

    void classify(RtiFedOffset block) {
        _block = block;
        _wordEnds = _nonBlanks = 0;
        for (RtiFedOffset at = 0; at < kBlock; at += sizeof(Vector)) {
            Vector b;
            std::memcpy(&b, _bytes + block + at, sizeof b);
            const auto blanks = (b == ' ') | (b - '\t' <= '\r' - '\t');
            const auto parentheses = (b & 0xFE) == '(';
            const auto wordEnds = blanks | parentheses | (b == '"') | (b == ';') | (b == '\0');
            _wordEnds |= bitsOf(reinterpret_cast<Vector>(wordEnds)) << at;
            _nonBlanks |= bitsOf(reinterpret_cast<Vector>(~blanks)) << at;
        }
    }

    /// One bit for each byte, which is 0 or 0xFF; the lowest for the first.
    static std::uint64_t bitsOf(const Vector &bytes) {
#ifdef __SSE2__
        return static_cast<std::uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
#else
        const auto words = reinterpret_cast<Words>(bytes);
        return bitsOf(words[0]) | bitsOf(words[1]) << 8;
#endif
    }
    // unreached in this function: for machines without such an instruction
    static std::uint64_t bitsOf(std::uint64_t word) {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
        word = __builtin_bswap64(word);
#endif
        // Moves the lowest bit of byte i to bit 56 + i; no other sum of two bits gets there.
        return (word & 0x0101010101010101U) * 0x0102040810204080U >> 56;
    }

    const char *_bytes;
    RtiFedOffset _block = kNone; // where the classified block begins
    std::uint64_t _wordEnds = 0;
    std::uint64_t _nonBlanks = 0;
};
