#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

/// Takes the first character from a text that is not empty. Returns its code point and true; or its first byte and
/// false, if the bytes are not UTF-8.
std::pair<char32_t, bool> takeCharacter(std::string_view &text);

/// Calls `visit` with each character of a text, as takeCharacter returns it.
template <class Visit>
void forEachCharacter(std::string_view text, Visit visit) {
    while (!text.empty()) {
        const auto [character, isText] = takeCharacter(text);
        visit(character, isText);
    }
}

/// Returns a number with this many hexadecimal digits.
std::string hexadecimal(char32_t number, std::size_t numDigits);
