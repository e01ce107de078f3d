#include "tool/constants/Characters.hh"

#include "tool/console/Utf8.hh"

std::pair<char32_t, bool> takeCharacter(std::string_view &text) {
    const std::size_t size = characterSize(text);
    const char32_t character = size > 0 ? codeOf(text.substr(0, size)) : static_cast<unsigned char>(text[0]);
    text.remove_prefix(size > 0 ? size : 1);
    return {character, size > 0};
}

std::string hexadecimal(char32_t number, std::size_t numDigits) {
    std::string digits(numDigits, '0');
    for (std::size_t i = numDigits; i-- > 0; number >>= 4U)
        digits[i] = "0123456789abcdef"[number & 15U];
    return digits;
}
