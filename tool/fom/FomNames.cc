#include "tool/fom/FomNames.hh"

#include "fed/storage/RtiFedName.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Utf8.hh"

#include <algorithm>
#include <cstdint>

namespace {

/// The letters above ASCII that are legal everywhere in names by all editions of XML 1.0: those of the alphabets in use
/// that the fourth edition lists in long ranges. Validators still differ about the others.
constexpr std::pair<std::uint32_t, std::uint32_t> kLetters[] = {
    {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x131},    {0x134, 0x13E},   {0x141, 0x148},
    {0x14A, 0x17E},   {0x388, 0x38A},   {0x38E, 0x3A1},   {0x3A3, 0x3CE},   {0x401, 0x40C},
    {0x40E, 0x44F},   {0x451, 0x45C},   {0x45E, 0x481},   {0x5D0, 0x5EA},   {0x621, 0x63A},
    {0x641, 0x64A},   {0x905, 0x939},   {0xE01, 0xE2E},   {0x10D0, 0x10F6}, {0x1E00, 0x1E9B},
    {0x1EA0, 0x1EF9}, {0x3041, 0x3094}, {0x30A1, 0x30FA}, {0x4E00, 0x9FA5}, {0xAC00, 0xD7A3}};

constexpr std::uint32_t kByte = 0xDC00; // added to a byte that is not UTF-8, as no character has such a code point
constexpr std::string_view kEmptyName = "_x0000_"; // no name has this character

struct Character {
    std::uint32_t code;
    std::size_t size; // in bytes
};

Character characterAt(std::string_view text, std::size_t at) {
    const auto byte = static_cast<unsigned char>(text[at]);
    if (byte < 0x80)
        return {byte, 1};
    const std::size_t size = RtiFedParser::printableSize(text.substr(at));
    if (size < 2)
        return {kByte + byte, 1};
    return {codeOf(text.substr(at, size)), size};
}

std::string utf8(std::uint32_t code) {
    if (code >= kByte && code <= kByte + 0xFF)    // equivalent: a name with the byte 0 does not fit FED
        return {static_cast<char>(code - kByte)}; // equivalent: the low byte of kByte is 0
    return utf8Of(code);
}

bool isLetter(std::uint32_t code) {
    if (code < 0x80) // equivalent: U+0080 is not printable, so its bytes are escaped
        return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') || code == '_';
    return std::any_of(std::begin(kLetters), std::end(kLetters),
                       [code](const auto &range) { return code >= range.first && code <= range.second; });
}

enum class Dots : bool { legal, escaped };

bool isLegal(std::uint32_t code, bool isFirst, Dots dots) {
    if (isLetter(code))
        return true;
    return !isFirst && ((code >= '0' && code <= '9') || code == '-' || (code == '.' && dots == Dots::legal));
}

bool isDigit(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F');
}

/// The length of `_xHHHH` or `_xHHHHHH` at a place of a text, 0 if there is none. What follows decides whether it is an
/// escape.
std::size_t escapeWithoutEnd(std::string_view text, std::size_t at, std::size_t digits) {
    const std::string_view part = text.substr(at, 2 + digits);
    const bool isEscape =
        part.size() == 2 + digits && part.substr(0, 2) == "_x" && std::all_of(part.begin() + 2, part.end(), isDigit);
    return isEscape ? part.size() : 0;
}

/// Whether the underscore at this place would be read as the beginning of an escape: by the underscore after the
/// digits, or by that of an escaped character there.
bool looksEscaped(std::string_view text, std::size_t at, Dots dots) {
    for (const std::size_t digits : {4U, 6U}) {
        const std::size_t end = at + escapeWithoutEnd(text, at, digits);
        if (end > at && end < text.size() && (text[end] == '_' || !isLegal(characterAt(text, end).code, false, dots)))
            return true;
    }
    return false;
}

std::string escaped(std::uint32_t code) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text = "_x";
    for (unsigned shift = code > 0xFFFF ? 24 : 16; shift > 0; shift -= 4) // equivalent: shift is a multiple of 4
        text += kDigits[code >> (shift - 4) & 0xF];
    return text + '_';
}

std::string encoded(std::string_view name, bool isFirst, Dots dots) {
    if (name.empty())
        return std::string(kEmptyName);
    std::string text;
    for (std::size_t at = 0; at < name.size();) {
        const auto [code, size] = characterAt(name, at);
        if (isLegal(code, isFirst && at == 0, dots) && !(code == '_' && looksEscaped(name, at, dots)))
            text += name.substr(at, size);
        else
            text += escaped(code);
        at += size;
    }
    return text;
}

std::string decoded(std::string_view name) {
    if (name == kEmptyName)
        return {};
    std::string text;
    for (std::size_t at = 0; at < name.size();) {
        std::size_t size = 0;
        for (const std::size_t digits : {4U, 6U})
            if (const std::size_t length = escapeWithoutEnd(name, at, digits);
                length > 0 && name.substr(at + length, 1) == "_") // equivalent: it is 0, or at least 6
                size = length;
        if (size > 0) // equivalent: it is 0, or at least 6
            text +=
                // equivalent: the digits end with the underscore
                utf8(static_cast<std::uint32_t>(std::stoul(std::string(name.substr(at + 2, size - 2)), nullptr, 16)));
        else
            text += name[at];
        at += size + 1;
    }
    return text;
}

} // namespace

const char *fomWord(const FomWords &words, std::string_view fed) {
    for (const FomWord &word : words)
        if (RtiFedName::equal(word.fed, fed))
            return word.fom;
    return nullptr;
}

const char *fedWord(const FomWords &words, std::string_view fom) {
    for (const FomWord &word : words)
        if (word.fom == fom)
            return word.fed;
    return nullptr;
}

std::string fomName(std::string_view fed) {
    return encoded(fed, true, Dots::legal);
}

std::string fedName(std::string_view fom) {
    std::string fed = decoded(fom);
    return fitsFed(fed) && fomName(fed) == fom ? fed : std::string(fom);
}

bool fitsFed(std::string_view name) {
    // equivalent: the literal ends in another NUL
    return name.find_first_of(std::string_view("\"\r\n\0", 4)) == std::string_view::npos;
}

std::string fomDimension(std::string_view space, std::string_view dimension) {
    return fomEmptySpace(space) + '.' + encoded(dimension, false, Dots::escaped);
}

std::string fomEmptySpace(std::string_view space) {
    return encoded(space, true, Dots::escaped);
}

std::optional<std::pair<std::string, std::string>> fedDimension(std::string_view fom) {
    const std::size_t dot = fom.find('.');
    if (dot == std::string_view::npos)
        return {};
    std::pair names(decoded(fom.substr(0, dot)), decoded(fom.substr(dot + 1)));
    if (!fitsFed(names.first) || !fitsFed(names.second) || fomDimension(names.first, names.second) != fom)
        return {};
    return names;
}

std::optional<std::string> fedEmptySpace(std::string_view fom) {
    std::string space = decoded(fom);
    return fitsFed(space) && fomEmptySpace(space) == fom ? std::optional(std::move(space)) : std::nullopt;
}
