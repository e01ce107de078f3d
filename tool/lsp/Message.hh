#pragma once

#include "tool/console/JsonWriter.hh"

#include <stdexcept>
#include <string>
#include <string_view>

/// A value that came from the client. Its objects are maps, so that one with very many keys is no slower to read than
/// others; Json, whose objects are lists, is for what is sent.
using Received = nlohmann::json;

/// The error codes of JSON-RPC and of the protocol.
enum class ErrorCode : int {
    parseError = -32700,
    invalidRequest = -32600,
    methodNotFound = -32601,
    invalidParams = -32602,
    internalError = -32603,
    serverNotInitialized = -32002,
    requestFailed = -32803,
    requestCancelled = -32800
};

/// Why a request is answered with an error.
class ProtocolError : public std::runtime_error {
public:
    ProtocolError(ErrorCode code, const std::string &text) : std::runtime_error(text), _code(code) {}

    ErrorCode code() const { return _code; }

private:
    ErrorCode _code;
};

/// Returns the value of a message. Throws ProtocolError for one that is not JSON, or nests deeper or has more values
/// than any message of an editor.
///
/// JSON is UTF-8, but some editors send the bytes of a text as they are. So a byte that is not UTF-8 is read as a
/// character of a private range; withOriginalBytes() makes it that byte again.
Received parseMessage(const std::string &body);

/// Returns a string of a message with the bytes that the client sent.
std::string withOriginalBytes(const std::string &text);

/// Returns a message as text. Bytes that are not UTF-8 are written as the replacement character.
std::string textOfMessage(const Json &message);
