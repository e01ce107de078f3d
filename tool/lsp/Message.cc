#include "tool/lsp/Message.hh"

#include "tool/console/Utf8.hh"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kMaxNesting = 64, kMaxValues = 2000000;

/// U+10FF00 and those after it are the bytes that are not UTF-8. No editor has a use for this end of the private
/// ranges.
constexpr std::string_view kPrivate = "\xF4\x8F\xBC"; // before the last byte of U+10FF00 to U+10FF3F
constexpr std::size_t kPrivateSize = 4;

std::string privateCharacter(unsigned char byte) {
    std::string character(kPrivate);
    character[2] = static_cast<char>(0xBC + (byte >> 6U));
    return character + static_cast<char>(0x80U | (byte & 0x3FU));
}

/// Replaces each byte that is not UTF-8.
std::string asUtf8(const std::string &text) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = findInvalidUtf8(text); at != std::string::npos; at = findInvalidUtf8(text, at + 1)) {
        result.append(text, done, at - done);
        result += privateCharacter(static_cast<unsigned char>(text[at]));
        done = at + 1;
    }
    return result.append(text, done);
}

/// Refuses a message whose values would take memory out of proportion, before any of them is allocated: a "[" is one
/// byte, and a value takes many. Also a deep one, since a value is copied and written by recursion.
void checkSize(const std::string &body) {
    std::size_t depth = 0, values = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < body.size(); ++i) { // equivalent: a zero byte ends the string
        const char c = body[i];
        if (c == '"')
            quoted = !quoted;
        else if (quoted)
            i += c == '\\' ? 1 : 0;
        else if (c == '[' || c == '{')
            ++depth;
        else if ((c == ']' || c == '}') && depth > 0)
            --depth;
        values += !quoted && (c == ',' || c == '[' || c == '{') ? 1 : 0;
        if (depth > kMaxNesting || values > kMaxValues)
            throw ProtocolError(ErrorCode::parseError,
                                depth > kMaxNesting
                                    ? "expected at most " + std::to_string(kMaxNesting) + " levels of JSON, found more"
                                    : "expected at most " + std::to_string(kMaxValues) + " JSON values, found more");
    }
}

} // namespace

Received parseMessage(const std::string &body) {
    checkSize(body);
    try {
        return Received::parse(findInvalidUtf8(body) == std::string::npos ? body : asUtf8(body));
    } catch (const Received::parse_error &error) {
        const std::string text = error.what(); // such as `[json.exception.parse_error.101] parse error at line 1, ...`
        throw ProtocolError(ErrorCode::parseError, "the message is no JSON: " + text.substr(text.find("] ") + 2));
    } catch (const Received::out_of_range &) { // JSON has no limit of numbers, but a double has
        throw ProtocolError(ErrorCode::parseError, "the message has a number that is too large to be read");
    }
}

/// The text is UTF-8, so that three bytes follow each F4.
std::string withOriginalBytes(const std::string &text) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = text.find('\xF4'); at != std::string::npos; at = text.find('\xF4', at + 1)) {
        // equivalent: no byte below 0x40 has been replaced
        if (text[at + 1] != kPrivate[1] || static_cast<unsigned char>(text[at + 2]) < 0xBC)
            continue;
        // equivalent: the lowest two bits are the same
        const auto high = static_cast<unsigned char>(text[at + 2]) - 0xBCU;
        const auto low = static_cast<unsigned char>(text[at + 3]) & 0x3FU;
        result.append(text, done, at - done);
        result += static_cast<char>(high << 6U | low);
        done = at + kPrivateSize;
    }
    return done == 0 ? text : result.append(text, done);
}

std::string textOfMessage(const Json &message) {
    // equivalent: the same value, written in another way
    return message.dump(-1, ' ', false, Json::error_handler_t::replace);
}
