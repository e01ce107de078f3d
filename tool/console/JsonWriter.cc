#include "tool/console/JsonWriter.hh"

#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t kPieceSize = 16384;

std::string serialized(const Json &value) {
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
    _text += '"';
    _text += name;
    append(_layout == Layout::indented ? "\": " : "\":");
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
    _text += bracket;
    _hasElements.push_back(false);
    return *this;
}

JsonWriter &JsonWriter::end(char bracket) {
    const bool empty = !_hasElements.back();
    _hasElements.pop_back();
    if (_breakPending || (_layout == Layout::indented && !empty))
        newLine();
    _text += bracket;
    if (_hasElements.empty()) {
        _text += '\n';
        flush();
    }
    return *this;
}

/// Writes the comma and the line break before a key, or before an element that has no key.
void JsonWriter::beginElement() {
    if (!_afterKey && !_hasElements.empty()) {
        if (_hasElements.back())
            _text += ',';
        _hasElements.back() = true;
        if (_breakPending || _layout == Layout::indented)
            newLine();
    }
    _afterKey = false;
}

void JsonWriter::newLine() {
    _text += '\n';
    if (_layout == Layout::indented)
        _text.append(2 * _hasElements.size(), ' ');
    _breakPending = false;
}

/// Nearly all names are plain. The library knows what to do with the others.
void JsonWriter::appendString(std::string_view text) {
    if (!isPlain(text)) {
        append(serialized(text));
        return;
    }
    _text += '"';
    _text += text;
    append("\"");
}

void JsonWriter::append(std::string_view text) {
    _text += text;
    if (_text.size() >= kPieceSize)
        flush();
}

void JsonWriter::flush() {
    _os.write(_text.data(), static_cast<std::streamsize>(_text.size()));
    _text.clear();
}
