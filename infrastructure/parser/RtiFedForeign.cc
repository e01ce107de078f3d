#include "infrastructure/parser/RtiFedForeign.hh"

#include <algorithm>
#include <array>
#include <iterator>

using namespace std::string_view_literals;

namespace {

struct Mark {
    std::string_view begin, end; // without an end it ends with the line
};

// In the order of RtiFedCommentMark.
constexpr Mark kMarks[] = {{"//", ""}, {"/*", "*/"}, {"#", ""}, {"--", ""}, {"<!--", "-->"}};
static_assert(std::size(kMarks) == static_cast<std::size_t>(RtiFedCommentMark::none));

struct Blank {
    unsigned code = 0;
    const char *name = nullptr;
    bool invisible = false;
};

// Sorted by their codes.
constexpr Blank kBlanks[] = {{0x1A, "an end-of-file mark of DOS", true},
                             {0xA0, "a no-break space"},
                             {0x1680, "an Ogham space"},
                             {0x2000, "an en quad"},
                             {0x2001, "an em quad"},
                             {0x2002, "an en space"},
                             {0x2003, "an em space"},
                             {0x2004, "a three-per-em space"},
                             {0x2005, "a four-per-em space"},
                             {0x2006, "a six-per-em space"},
                             {0x2007, "a figure space"},
                             {0x2008, "a punctuation space"},
                             {0x2009, "a thin space"},
                             {0x200A, "a hair space"},
                             {0x200B, "a zero-width space", true},
                             {0x200C, "a zero-width non-joiner", true},
                             {0x200D, "a zero-width joiner", true},
                             {0x200E, "a left-to-right mark", true},
                             {0x200F, "a right-to-left mark", true},
                             {0x2028, "a line separator"},
                             {0x2029, "a paragraph separator"},
                             {0x202F, "a narrow no-break space"},
                             {0x205F, "a mathematical space"},
                             {0x2060, "a word joiner", true},
                             {0x3000, "an ideographic space"},
                             {0xFEFF, "a byte order mark", true}};

struct Character {
    unsigned code;
    std::size_t size;
};

/// The character that these bytes begin with, of those up to U+FFFF; a byte that is not UTF-8 is a character of that
/// code.
Character characterAt(std::string_view bytes) {
    const auto at = [bytes](std::size_t i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
    const auto continues = [&at](std::size_t i) { return (at(i) & 0xC0U) == 0x80; };
    if ((at(0) & 0xE0U) == 0xC0 && continues(1))
        return {(at(0) & 0x1FU) << 6 | (at(1) & 0x3FU), 2};
    if ((at(0) & 0xF0U) == 0xE0 && continues(1) && continues(2))
        return {(at(0) & 0x0FU) << 12 | (at(1) & 0x3FU) << 6 | (at(2) & 0x3FU), 3};
    if ((at(0) & 0xF8U) == 0xF0 && continues(1) && continues(2) && continues(3))
        return {0x10000, 4}; // equivalent: any code that is no blank
    return {at(0), 1};
}

const Blank *blankOf(unsigned code) {
    const Blank *const found = std::lower_bound(std::begin(kBlanks), std::end(kBlanks), code,
                                                [](const Blank &b, unsigned c) { return b.code < c; });
    return found != std::end(kBlanks) && found->code == code ? found : nullptr;
}

struct Format {
    std::string_view begin;
    const char *name;
};

// Longer beginnings before the shorter ones they begin with.
constexpr Format kFormats[] = {
    {"\xFF\xFE\0\0"sv, "UTF-32 text; save the file as UTF-8"},
    {"\xFF\xFE"sv, "UTF-16 text; save the file as UTF-8"},
    {"\xFE\xFF"sv, "UTF-16 text; save the file as UTF-8"},
    {"<!DOCTYPE html", "an HTML page"},
    {"<!doctype html", "an HTML page"},
    {"<html", "an HTML page"},
    {"\x1F\x8B"sv, "a file compressed by gzip; decompress it"},
    {"BZh", "a file compressed by bzip2; decompress it"},
    {"\xFD"
     "7zXZ"sv,
     "a file compressed by xz; decompress it"},
    {"(\xB5/\xFD"sv, "a file compressed by zstd; decompress it"},
    {"PK\x03\x04"sv, "a zip archive; unpack it"},
    {"7z\xBC\xAF"sv, "a 7z archive; unpack it"},
    {"\x89PNG"sv, "a PNG picture"},
    {"\xFF\xD8\xFF"sv, "a JPEG picture"},
    {"GIF8", "a GIF picture"},
    {"%PDF", "a PDF document"},
    {"{\\rtf", "an RTF document; save it as plain text"},
    {"\xD0\xCF\x11\xE0"sv, "an office document; save it as plain text"},
    {"\x7F"
     "ELF"sv,
     "a program"},
    {"MZ", "a program"},
    {"(OMDT", "an object model in OMT format, from which a FED can be generated"},
};

bool beginsWith(std::string_view bytes, std::string_view begin) {
    return bytes.substr(0, begin.size()) == begin;
}

} // namespace

RtiFedCommentMark commentMarkAt(std::string_view bytes) {
    const auto *mark = std::find_if(std::begin(kMarks), std::end(kMarks),
                                    [bytes](const Mark &m) { return beginsWith(bytes, m.begin); });
    return static_cast<RtiFedCommentMark>(mark - std::begin(kMarks));
}

std::string_view textOf(RtiFedCommentMark mark) {
    return kMarks[static_cast<std::size_t>(mark)].begin;
}

std::size_t closedCommentSize(RtiFedCommentMark mark, std::string_view bytes) {
    const std::string_view end = kMarks[static_cast<std::size_t>(mark)].end;
    const std::size_t closed = end.empty() ? std::string_view::npos : bytes.find(end);
    return closed == std::string_view::npos ? closed : closed + end.size();
}

std::size_t foreignBlankSize(std::string_view bytes) {
    const Character first = characterAt(bytes);
    return blankOf(first.code) ? first.size : 0;
}

std::size_t findForeignBlank(std::string_view bytes) {
    const auto mayBegin = [](char byte) { return static_cast<unsigned char>(byte) >= 0x80 || byte == '\x1A'; };
    const auto first = std::find_if(bytes.begin(), bytes.end(), mayBegin); // most names are plain
    for (auto at = static_cast<std::size_t>(first - bytes.begin()); at < bytes.size();
         at += characterAt(bytes.substr(at)).size)
        if (foreignBlankSize(bytes.substr(at)) > 0)
            return at;
    return std::string_view::npos;
}

bool isInvisible(std::string_view bytes) {
    const Blank *const blank = blankOf(characterAt(bytes).code);
    return blank && blank->invisible; // unreached: whoever asks has found a blank there
}

std::string nameOfForeignBlank(std::string_view bytes) {
    constexpr char kDigits[] = "0123456789ABCDEF";
    const unsigned code = characterAt(bytes).code;
    std::string name = std::string(blankOf(code)->name) + " (U+";
    for (const unsigned shift : {12U, 8U, 4U, 0U})
        name += kDigits[code >> shift & 0xFU];
    return name + ')';
}

const char *foreignFormatOf(std::string_view bytes) {
    const auto *format = std::find_if(std::begin(kFormats), std::end(kFormats),
                                      [bytes](const Format &f) { return beginsWith(bytes, f.begin); });
    if (format != std::end(kFormats))
        return format->name;
    const auto isNul = [bytes](std::size_t i) { return bytes[i] == '\0'; };
    if (bytes.size() >= 4 && isNul(0) != isNul(1) && isNul(0) == isNul(2) && isNul(1) == isNul(3))
        return "UTF-16 text; save the file as UTF-8";
    return beginsWith(bytes, "<") ? "an XML document" : nullptr;
}
