#include "tool/console/JsonWriter.hh"

#include <string>

namespace {

std::string serialized(const Json &value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

JsonWriter &JsonWriter::key(std::string_view name) {
    const std::string text = serialized(name);
    beginElement();
    _os << text << (_layout == Layout::indented ? ": " : ":");
    _afterKey = true;
    return *this;
}

JsonWriter &JsonWriter::value(const Json &value) {
    const std::string text = serialized(value);
    beginElement();
    _os << text;
    return *this;
}

JsonWriter &JsonWriter::breakLine() {
    _breakPending = true;
    return *this;
}

JsonWriter &JsonWriter::begin(char bracket) {
    beginElement();
    _os << bracket;
    _hasElements.push_back(false);
    return *this;
}

JsonWriter &JsonWriter::end(char bracket) {
    const bool empty = !_hasElements.back();
    _hasElements.pop_back();
    if (_breakPending || (_layout == Layout::indented && !empty))
        newLine();
    _os << bracket;
    if (_hasElements.empty())
        _os << '\n';
    return *this;
}

/// Writes the comma and the line break before a key, or before an element that has no key.
void JsonWriter::beginElement() {
    if (!_afterKey && !_hasElements.empty()) {
        if (_hasElements.back())
            _os << ',';
        _hasElements.back() = true;
        if (_breakPending || _layout == Layout::indented)
            newLine();
    }
    _afterKey = false;
}

void JsonWriter::newLine() {
    _os << '\n';
    if (_layout == Layout::indented)
        _os << std::string(2 * _hasElements.size(), ' ');
    _breakPending = false;
}
