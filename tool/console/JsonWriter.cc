#include "tool/console/JsonWriter.hh"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t kPieceSize = 16384; // equivalent: only speed
constexpr std::size_t kIndentation = 2;   // blanks a level

std::string serialized(const Json &value) {
    // equivalent: any negative number means no line ends
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

using Word = std::uint64_t;

/// A word whose eight bytes are all `byte`.
constexpr Word allBytes(Word byte) {
    return 0x0101010101010101U * byte;
}

/// Whether a byte of a word is zero. If none is, the subtraction borrows nothing and sets no high bit of a byte that
/// had none.
constexpr bool hasZero(Word word) {
    return ((word - allBytes(1)) & ~word & allBytes(0x80)) != 0;
}

/// Whether a JSON string contains these eight bytes unescaped, whatever other bytes it has: they are from ' ' to '~',
/// without '"' and '\\'. In a byte below 0x80, ' ' and all above it have bit 5 or 6.
constexpr bool isPlain(Word bytes) {
    const bool isAscii = (bytes & allBytes(0x80)) == 0;
    return isAscii && !hasZero(bytes & allBytes(0x60)) && !hasZero(bytes ^ allBytes('"')) &&
           !hasZero(bytes ^ allBytes('\\')) && !hasZero(bytes ^ allBytes(0x7F));
}

/// The same of a text. The last word overlaps the one before it; a short text is filled up with letters.
bool isPlain(std::string_view text) {
    Word word = allBytes('a');
    if (text.empty())
        return true;
    if (text.size() < sizeof word) {
        std::memcpy(&word, text.data(), text.size());
        return isPlain(word);
    }
    bool plain = true;
    for (std::size_t at = 0; at + sizeof word < text.size(); at += sizeof word) {
        std::memcpy(&word, &text[at], sizeof word);
        plain = isPlain(word) && plain;
    }
    std::memcpy(&word, &text[text.size() - sizeof word], sizeof word);
    return isPlain(word) && plain;
}

} // namespace

JsonWriter &JsonWriter::key(std::string_view name) {
    beginElement();
    const std::string_view end = _layout == Layout::indented ? "\": " : "\":";
    char *out = extend(1 + name.size() + end.size());
    *out++ = '"';
    out = std::copy(name.begin(), name.end(), out);
    std::copy(end.begin(), end.end(), out);
    _afterKey = true;
    return *this;
}

JsonWriter &JsonWriter::value(const Json &value) {
    const std::string text = serialized(value);
    beginElement();
    append(text);
    return *this;
}

JsonWriter &JsonWriter::null() {
    beginElement();
    append("null");
    return *this;
}

JsonWriter &JsonWriter::breakLine() {
    _breakPending = true;
    return *this;
}

JsonWriter &JsonWriter::begin(char bracket) {
    beginElement();
    *extend(1) = bracket;
    ++_depth;
    _isEmpty = true;
    if (_layout == Layout::indented)
        _separator.append(kIndentation, ' ');
    return *this;
}

JsonWriter &JsonWriter::end(char bracket) {
    --_depth;
    if (_layout == Layout::indented)
        _separator.resize(_separator.size() - kIndentation);
    if (_breakPending || (_layout == Layout::indented && !_isEmpty))
        newLine();
    *extend(1) = bracket;
    _isEmpty = false;
    if (_depth == 0) {
        *extend(1) = '\n';
        flush();
    }
    return *this;
}

/// Writes the comma and the line break before a key, or before an element that has no key.
void JsonWriter::beginElement() {
    if (!_afterKey && _depth > 0) {
        const bool breaks = _breakPending || _layout == Layout::indented;
        const std::string_view separator = breaks ? std::string_view(_separator) : ",";
        append(separator.substr(_isEmpty ? 1 : 0));
        _isEmpty = _breakPending = false;
    }
    _afterKey = false;
}

void JsonWriter::newLine() {
    append(std::string_view(_separator).substr(1));
    _breakPending = false;
}

/// Nearly all names are plain. The library knows what to do with the others.
void JsonWriter::appendString(std::string_view text) {
    if (!isPlain(text))
        return append(serialized(text));
    char *out = extend(text.size() + 2);
    *out++ = '"';
    out = std::copy(text.begin(), text.end(), out);
    *out = '"';
}

void JsonWriter::append(std::string_view text) {
    std::copy(text.begin(), text.end(), extend(text.size()));
}

/// Writes the piece to the stream, and makes it large enough for `size` bytes.
void JsonWriter::makeRoom(std::size_t size) {
    flush();
    if (size > _piece.size()) // equivalent: only speed
        _piece.resize(std::max(size, kPieceSize));
}

void JsonWriter::flush() {
    _os.write(_piece.data(), static_cast<std::streamsize>(_size));
    _size = 0;
}
