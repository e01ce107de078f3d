#pragma once

#include <nlohmann/json.hpp>

#include <string>

/// JSON whose keys keep their order.
using Json = nlohmann::ordered_json;

/// On one line. Bytes that are no UTF-8 become replacement characters.
inline std::string toLine(const Json &json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}
