#include "tool/console/JsonWriter.hh"

#include <nlohmann/json.hpp>

#include <string>

namespace {

std::string textOf(const nlohmann::json &value) {
    return value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

} // namespace

JsonWriter &JsonWriter::key(std::string_view name) {
    beginElement();
    _os << textOf(name) << ": ";
    _afterKey = true;
    return *this;
}

void JsonWriter::value(const nlohmann::json &value) {
    beginElement();
    _os << textOf(value);
}

void JsonWriter::member(std::string_view name, const nlohmann::json &value) {
    key(name).value(value);
}

void JsonWriter::begin(char bracket) {
    beginElement();
    _os << bracket;
    _hasElements.push_back(false);
}

void JsonWriter::end(char bracket) {
    const bool empty = !_hasElements.back();
    _hasElements.pop_back();
    if (!empty)
        newLine();
    _os << bracket;
    if (_hasElements.empty())
        _os << '\n';
}

/// Writes what stands between this element and the one before it, unless a key does.
void JsonWriter::beginElement() {
    if (!_afterKey && !_hasElements.empty()) {
        if (_hasElements.back())
            _os << ',';
        _hasElements.back() = true;
        newLine();
    }
    _afterKey = false;
}

void JsonWriter::newLine() {
    _os << '\n' << std::string(2 * _hasElements.size(), ' ');
}
