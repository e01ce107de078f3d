#include "tool/picture/TextWidth.hh"

namespace {

/// The width of the character that begins with this byte, in hundredths of the font size. Bytes within a character have
/// none. Characters outside ASCII are told apart only by their length in bytes: letters of alphabets, wide ones such as
/// Chinese, and symbols such as emoji.
int widthOf(char first) {
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0x80)
        return byte < 0xC0 ? 0 : byte < 0xE0 ? 122 : byte < 0xF0 ? 105 : 140;
    const auto isOneOf = [first](std::string_view some) { return some.find(first) != std::string_view::npos; };
    if (isOneOf(" !',.:;|ijlI"))
        return 41;
    if (isOneOf("\"()-[]\\/`frt"))
        return 50;
    if (isOneOf("mwMW%@"))
        return 103;
    const bool isLowerOrDigit = (first >= 'a' && first <= 'z') || (first >= '0' && first <= '9');
    return isLowerOrDigit ? 65 : 85;
}

} // namespace

int textWidth(std::string_view text, int fontSize, bool isBold) {
    int hundredths = 0;
    for (const char byte : text)
        hundredths += widthOf(byte);
    const int width = (hundredths * fontSize + 99) / 100;
    return isBold ? width + width / 8 : width;
}
