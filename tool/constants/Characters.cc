#include "tool/constants/Characters.hh"

namespace {

/// The number of bytes that the first byte of a character announces; 0 if it is none.
std::size_t sizeOf(unsigned char first) {
    return first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
}

constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000}; // by the number of bytes

} // namespace

std::pair<char32_t, bool> takeCharacter(std::string_view &text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t size = sizeOf(first);
    char32_t character = size > 1 ? first & (0x7FU >> size) : first;
    bool isText = size > 0 && size <= text.size();
    for (std::size_t i = 1; i < size && isText; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        isText = (byte & 0xC0U) == 0x80;
        character = character << 6U | (byte & 0x3FU);
    }
    isText = isText && character >= kLeast[size] && character <= 0x10FFFF && (character < 0xD800 || character > 0xDFFF);
    text.remove_prefix(isText ? size : 1);
    return {isText ? character : first, isText};
}

std::string hexadecimal(char32_t number, std::size_t numDigits) {
    std::string digits(numDigits, '0');
    for (std::size_t i = numDigits; i-- > 0; number >>= 4U)
        digits[i] = "0123456789abcdef"[number & 15U];
    return digits;
}
