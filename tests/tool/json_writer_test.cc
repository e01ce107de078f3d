#include "tool/console/JsonWriter.hh"

#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace {

/// Writes a random value piece by piece, and returns it: an object, an array, or a string that may need escapes and be
/// longer than the pieces of the output.
Json writeRandom(JsonWriter &json, std::mt19937 &random, int depth) {
    const auto any = [&random](std::size_t count) { return random() % count; };
    if (depth == 0) {
        Json text = std::string(any(50) == 0 ? any(70000) : any(30), 'a') + (any(5) == 0   ? "\"\\\n\u00e9"
                                                                             : any(9) == 0 ? "\x7F"
                                                                                           : "");
        json.value(text.get_ref<const std::string &>());
        return text;
    }
    Json value = any(2) == 0 ? Json::array() : Json::object();
    value.is_array() ? json.beginArray() : json.beginObject();
    for (std::size_t i = any(6); i > 0; --i)
        if (value.is_array())
            value.push_back(writeRandom(json, random, depth - 1));
        else
            value[std::string(i, 'k')] = writeRandom(json.key(std::string(i, 'k')), random, depth - 1);
    value.is_array() ? json.endArray() : json.endObject();
    return value;
}

TEST(JsonWriter, WritesDocumentsAsTheLibraryDoes) {
    std::mt19937 random(1); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same documents in each run
    for (int i = 0; i < 300; ++i) {
        std::ostringstream os;
        JsonWriter json(os, i % 2 == 0 ? JsonWriter::Layout::indented : JsonWriter::Layout::compact);
        const Json document = writeRandom(json, random, 1 + i % 5);
        EXPECT_EQ(os.str(), document.dump(i % 2 == 0 ? 2 : -1) + '\n');
    }
}

} // namespace
