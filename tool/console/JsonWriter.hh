#pragma once

#include <nlohmann/json.hpp>

#include <ostream>
#include <string_view>
#include <vector>

/// A JSON value whose keys keep their order.
using Json = nlohmann::ordered_json;

/// Writes a JSON document piece by piece, so that the memory it takes does not grow with the document. Bytes that are
/// not UTF-8 are written as the replacement character.
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
    /// Writes the key of the next value, object or array.
    JsonWriter &key(std::string_view name);
    /// Writes a value. If memory runs out, nothing of it is written.
    JsonWriter &value(const Json &value);
    JsonWriter &member(std::string_view name, const Json &value) { return key(name).value(value); }
    /// Puts the next key, element or closing bracket on a new line.
    JsonWriter &breakLine();

private:
    JsonWriter &begin(char bracket);
    JsonWriter &end(char bracket);
    void beginElement();
    void newLine();

    std::ostream &_os;
    Layout _layout;
    std::vector<bool> _hasElements; // for each open object and array, the outermost first
    bool _afterKey = false;
    bool _breakPending = false;
};
