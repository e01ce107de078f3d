#pragma once

#include <nlohmann/json.hpp>

#include <charconv>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// A JSON value whose keys keep their order.
using Json = nlohmann::ordered_json;

/// Writes a JSON document piece by piece, so that the memory it takes does not grow with the document. Bytes that are
/// not UTF-8 are written as the replacement character.
///
/// The text is collected and handed to the stream in large pieces, the last when the outermost object or array ends.
class JsonWriter {
public:
    enum class Layout {
        indented, ///< Each key and element on a line of its own, indented by two blanks a level.
        compact   ///< No blanks, and only the line breaks that the caller asks for.
    };

    JsonWriter(std::ostream &os, Layout layout) : _os(os), _layout(layout) {}

    JsonWriter &beginObject() { return begin('{'); }
    JsonWriter &endObject() { return end('}'); }
    JsonWriter &beginArray() { return begin('['); }
    JsonWriter &endArray() { return end(']'); }
    /// Writes the key of the next value, object or array. The name is one of ours, which need no escapes.
    JsonWriter &key(std::string_view name);
    JsonWriter &value(const Json &value);
    /// Writes a string, a truth value or a whole number without making a Json of it: a model has a million of them.
    template <class Value>
    JsonWriter &value(const Value &value);
    template <class Value>
    JsonWriter &value(const std::optional<Value> &valueOrNull) {
        return valueOrNull ? value(*valueOrNull) : null();
    }
    JsonWriter &null();
    JsonWriter &member(std::string_view name, const Json &value) { return key(name).value(value); }
    template <class Value>
    JsonWriter &member(std::string_view name, const Value &value) {
        return key(name).value(value);
    }
    /// Puts the next key, element or closing bracket on a new line.
    JsonWriter &breakLine();

private:
    JsonWriter &begin(char bracket);
    JsonWriter &end(char bracket);
    void beginElement();
    void newLine();
    void append(std::string_view text);
    void appendString(std::string_view text);
    /// Adds `size` bytes to the piece that is not yet written, and returns where the caller has to put them.
    char *extend(std::size_t size) {
        if (size > _piece.size() - _size)
            makeRoom(size);
        _size += size;
        return _piece.data() + _size - size;
    }
    void makeRoom(std::size_t size);
    void flush();

    std::ostream &_os;
    Layout _layout;
    std::vector<char> _piece; // its first _size bytes are not yet written
    std::size_t _size = 0;
    std::string _separator = ",\n"; // of elements of the innermost object or array, with the indentation
    std::size_t _depth = 0;         // the number of open objects and arrays
    bool _isEmpty = true;           // the innermost of them has no element yet; those that enclose it have one
    bool _afterKey = false;
    bool _breakPending = false;
};

template <class Value>
JsonWriter &JsonWriter::value(const Value &value) {
    if constexpr (std::is_convertible_v<const Value &, std::string_view>) {
        beginElement();
        appendString(value);
    } else if constexpr (std::is_same_v<Value, bool>) {
        beginElement();
        append(value ? "true" : "false");
    } else if constexpr (std::is_integral_v<Value>) {
        char digits[24];
        const auto written = std::to_chars(digits, digits + sizeof digits, value);
        beginElement();
        append({digits, static_cast<std::size_t>(written.ptr - digits)});
    } else {
        this->value(Json(value));
    }
    return *this;
}
