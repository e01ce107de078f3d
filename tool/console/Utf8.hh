#pragma once

#include <cstddef>
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
