#include "tool/console/Xml.hh"

#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Text.hh"

#include <algorithm>

namespace {

std::string xmlCharacter(std::string_view character, bool isPrintable) {
    switch (character.front()) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;"; // which ends a section if it follows "]]"
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    default:
        break;
    }
    const bool isNoncharacter = character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF"; // U+FFFE and U+FFFF
    if (isPrintable && !isNoncharacter)
        return std::string(character);
    std::string escaped;
    for (const char byte : character)
        escaped += "\\x" + hexDigits(static_cast<unsigned char>(byte));
    return escaped;
}

} // namespace

std::string xml(std::string_view text, std::string_view lineEnd) {
    std::string escaped;
    while (!text.empty()) {
        const std::size_t printable = RtiFedParser::printableSize(text);
        const std::size_t size = std::max<std::size_t>(printable, 1);
        escaped += text.front() == '\n' ? std::string(lineEnd) : xmlCharacter(text.substr(0, size), printable > 0);
        text.remove_prefix(size);
    }
    return escaped;
}
