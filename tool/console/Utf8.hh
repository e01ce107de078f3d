#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Returns the size of the UTF-8 character that a text begins with; 0 if it begins with none. The text is not empty.
inline std::size_t characterSize(std::string_view text) {
    const auto byte = [&](std::size_t i) {
        return i < text.size() ? static_cast<unsigned char>(text[i]) : static_cast<unsigned char>(0);
    };
    const auto continues = [&](std::size_t from, std::size_t to) {
        for (std::size_t i = from; i < to; ++i)
            if ((byte(i) & 0xC0U) != 0x80)
                return false;
        return true;
    };
    const unsigned char first = byte(0), second = byte(1);
    if (first < 0x80)
        return 1;
    if (first >= 0xC2 && first <= 0xDF)
        return continues(1, 2) ? 2 : 0;
    if (first >= 0xE0 && first <= 0xEF) // without overlong forms and surrogates
        return continues(1, 3) && !(first == 0xE0 && second < 0xA0) && !(first == 0xED && second > 0x9F) ? 3 : 0;
    if (first >= 0xF0 && first <= 0xF4) // without overlong forms, up to U+10FFFF
        return continues(1, 4) && !(first == 0xF0 && second < 0x90) && !(first == 0xF4 && second > 0x8F) ? 4 : 0;
    return 0;
}

/// Returns the number of a character, given its bytes.
inline char32_t codeOf(std::string_view character) {
    const auto first = static_cast<unsigned char>(character[0]);
    char32_t code = character.size() == 1 ? first : first & (0x7FU >> character.size());
    for (const char c : character.substr(1))
        code = code << 6U | (static_cast<unsigned char>(c) & 0x3FU);
    return code;
}

/// Returns the bytes of a character, given its number.
inline std::string utf8Of(char32_t code) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    const auto tail = [&](unsigned shift) { return byte(0x80U | (code >> shift & 0x3FU)); };
    if (code < 0x80)
        return {byte(code)};
    if (code < 0x800)
        return {byte(0xC0U | code >> 6U), tail(0)};
    if (code < 0x10000)
        return {byte(0xE0U | code >> 12U), tail(6), tail(0)};
    return {byte(0xF0U | (code >> 18U & 7U)), tail(12), tail(6), tail(0)};
}

/// Returns the offset of the first byte from `from` on that is not part of a UTF-8 character; npos if there is none.
/// A character begins at `from`.
inline std::size_t findInvalidUtf8(std::string_view text, std::size_t from = 0) {
    while (from < text.size()) {
        const std::size_t size = characterSize(text.substr(from));
        if (size == 0)
            return from;
        from += size;
    }
    return std::string_view::npos;
}
