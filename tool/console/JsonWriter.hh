#pragma once

#include <nlohmann/json_fwd.hpp>

#include <ostream>
#include <string_view>
#include <vector>

/// Writes JSON as it goes, with an indentation of two blanks: a document of any size takes no memory. Bytes that are no
/// UTF-8 are written as the replacement character.
class JsonWriter {
public:
    explicit JsonWriter(std::ostream &os) : _os(os) {}

    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }
    /// The key of what is written next.
    JsonWriter &key(std::string_view name);
    void value(const nlohmann::json &value);
    void member(std::string_view name, const nlohmann::json &value);

private:
    void begin(char bracket);
    void end(char bracket);
    void beginElement();
    void newLine();

    std::ostream &_os;
    std::vector<bool> _hasElements; // of each object and array around
    bool _afterKey = false;
};
