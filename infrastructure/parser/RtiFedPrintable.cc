#include "infrastructure/parser/RtiFedPrintable.hh"

#include <algorithm>

std::size_t printableSize(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
    const unsigned first = at(0);
    if (first < 0x80)
        return first >= 0x20 && first != 0x7F ? 1 : 0;
    const std::size_t size = first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 0;
    for (std::size_t i = 1; i < size; ++i)
        if ((at(i) & 0xC0) != 0x80)
            return 0;
    const unsigned two = first << 8 | at(1);
    const bool overlong = two < 0xE0A0 && first == 0xE0, surrogate = two >= 0xEDA0 && first == 0xED;
    const bool outside = (first == 0xF0 && at(1) < 0x90) || (first == 0xF4 && at(1) > 0x8F);
    const bool control = two < 0xC2A0, mark = two == 0xEFBB && at(2) == 0xBF;
    // Characters that reverse the direction of writing could make a text look like another.
    const bool reverses =
        (two == 0xE280 && at(2) >= 0xAA && at(2) <= 0xAE) || (two == 0xE281 && at(2) >= 0xA6 && at(2) <= 0xA9);
    return overlong || surrogate || outside || (size == 2 && control) || mark || reverses ? 0 : size;
}

std::string printable(std::string_view bytes, std::size_t limit) {
    constexpr char kDigits[] = "0123456789abcdef";
    if (bytes.size() <= limit &&
        std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte >= ' ' && byte < '\x7F'; }))
        return std::string(bytes); // as most names are
    std::string shown;
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t size = printableSize(bytes.substr(at));
        if (shown.size() + (size ? size : 4) > limit)
            return shown + "...";
        const auto byte = static_cast<unsigned char>(bytes[at]);
        if (size)
            shown += bytes.substr(at, size);
        else
            shown += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
        at += size ? size : 1;
    }
    return shown;
}
