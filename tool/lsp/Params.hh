#pragma once

#include "tool/lsp/Message.hh"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A part of the parameters of a message, which may be anything. Each access checks what is there, and throws
/// ProtocolError with the path of what is wrong, such as `params.position.line: expected a number, found a string`.
class Params {
public:
    explicit Params(const Received &value, std::string path = "params") : _value(&value), _path(std::move(path)) {}

    Params operator[](const char *key) const;
    /// Nothing if it is absent or null.
    std::optional<Params> find(const char *key) const;
    bool isNull(const char *key) const;
    std::vector<Params> items() const;

    /// With the bytes that the client sent.
    std::string string() const;
    std::uint32_t number() const;
    bool boolean() const;

    /// The values of members that may be absent.
    std::string stringOf(const char *key, const char *otherwise = "") const;
    bool flag(const char *key, bool otherwise = false) const;

    const Received &value() const { return *_value; }

private:
    [[noreturn]] void refuse(const char *expected) const;

    const Received *_value;
    std::string _path;
};
