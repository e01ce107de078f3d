#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Messages of more bytes are skipped: a whole FED text of a million declarations has some 60 MB.
inline constexpr std::size_t kMaxMessage = std::size_t(256) << 20;

/// Cuts a stream of bytes into messages: each is a header with a line `Content-Length: N`, an empty line, and N bytes.
///
/// Any bytes may come. A header without a length leaves no way to know where the message ends, so what follows is
/// skipped up to the next `Content-Length:`; that is one fault, however long it is. A message that is too long is
/// skipped without being stored. At most one header and one message are in memory, and not before their bytes came.
class MessageReader {
public:
    struct Message {
        std::string body;
        std::string fault = {}; ///< Why there is no message; empty if there is one.
    };

    void add(std::string_view bytes) { _bytes += bytes; }

    /// Returns the next message or fault; nothing before more bytes are added.
    std::optional<Message> next();

private:
    bool skipToHeader();
    std::string readLength(std::string_view header);
    Message fault(std::string text);
    std::string_view left() const { return std::string_view(_bytes).substr(_at); }
    void drop(std::size_t count);

    std::string _bytes;               // that were added
    std::size_t _at = 0;              // those before are done with
    std::size_t _searched = 0;        // bytes from _at on that have no end of a header
    std::optional<std::size_t> _size; // of the message, once its header was read
    std::size_t _skip = 0;            // bytes to come of a message that is too long
    bool _lost = false;               // until the next Content-Length
};

/// Returns a message with its header.
std::string framed(std::string_view body);
