#include "tool/console/JsonWriter.hh"

namespace {

constexpr std::size_t kPieceSize = 16384;

std::string serialized(const Json &value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// Whether a JSON string contains a byte unescaped, whatever other bytes it has.
bool isPlain(char byte) {
    return byte >= ' ' && byte < '\x7f' && byte != '"' && byte != '\\';
}

} // namespace

JsonWriter &JsonWriter::key(std::string_view name) {
    beginElement();
    appendString(name);
    append(_layout == Layout::indented ? ": " : ":");
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
    bool plain = true;
    for (const char byte : text) // to the end, which the compiler does faster than up to the first other byte
        plain = isPlain(byte) && plain;
    if (!plain) {
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
