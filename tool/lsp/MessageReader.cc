#include "tool/lsp/MessageReader.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::size_t kMaxHeader = 4096;
constexpr std::string_view kLength = "CONTENT-LENGTH:";

/// Returns where an empty line ends, from which position on the message is; npos if there is none.
std::size_t endOfHeader(std::string_view bytes, std::size_t from) {
    for (std::size_t at = bytes.find('\n', from); at != std::string_view::npos; at = bytes.find('\n', at + 1)) {
        const std::string_view line = bytes.substr(0, at);
        if (line.empty() || line == "\r" || line.back() == '\n' ||
            // equivalent: an empty first line has ended the header before
            (line.size() > 1 && line.substr(line.size() - 2) == "\n\r"))
            return at + 1;
    }
    return std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t\r");
    return begin == std::string_view::npos ? std::string_view()
                                           : text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

} // namespace

std::optional<MessageReader::Message> MessageReader::next() {
    for (;;) {
        const std::size_t skipped = std::min(_skip, left().size());
        drop(skipped);
        _skip -= skipped;
        if (_skip > 0 || (_lost && !skipToHeader())) // equivalent: nothing is left of which a byte is to be skipped
            return {};
        if (_size) {
            if (left().size() < *_size)
                return {};
            Message message{std::string(left().substr(0, *_size))};
            drop(*_size);
            _size.reset();
            return message;
        }
        const std::size_t end = endOfHeader(left(), _searched);
        if (end == std::string_view::npos && left().size() <= kMaxHeader) {
            _searched = left().size(); // equivalent: only speed, since it would be searched again
            return {};
        }
        if (end > kMaxHeader)
            return fault("expected a header with Content-Length, found " + inQuotes(left().substr(0, kMaxHeader)));
        const std::string header(left().substr(0, end));
        const std::string problem = readLength(header);
        if (!problem.empty())
            return fault(problem);
        drop(end);
        if (*_size <= kMaxMessage)
            continue;
        _skip = *_size;
        _size.reset();
        return Message{"", "expected at most " + std::to_string(kMaxMessage) + " bytes, found a message of " +
                               std::to_string(_skip)};
    }
}

/// Sets the size of the message to what its header says. Returns what is wrong with the header, or nothing.
std::string MessageReader::readLength(std::string_view header) {
    std::optional<std::size_t> size;
    for (const std::string &line : split(std::string(header), '\n')) {
        if (RtiStringUtility::toupper(line.substr(0, kLength.size())) != kLength)
            continue;
        const std::string_view digits = trimmed(std::string_view(line).substr(kLength.size()));
        std::size_t value = 0; // equivalent: not used before it is read
        // equivalent: but for sanitizers, since no digit follows
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
        if (error != std::errc() || end != digits.data() + digits.size())
            return "expected Content-Length with a number of bytes, found " + inQuotes(digits);
        size = value;
    }
    if (!size)
        return "expected a header with Content-Length, found " + inQuotes(trimmed(header));
    _size = size;
    return "";
}

/// Drops the bytes before the next `Content-Length:`, of which the last bytes may be the beginning. Returns whether
/// there is one.
bool MessageReader::skipToHeader() {
    const std::string upper = RtiStringUtility::toupper(left());
    const std::size_t found = upper.find(kLength);
    // equivalent: to keep more is no fault
    drop(std::min(found, upper.size() - std::min(upper.size(), kLength.size() - 1)));
    _lost = found == std::string::npos;
    return !_lost;
}

/// Reports a header that cannot be understood. One byte of it is dropped, so that the next header is another one.
MessageReader::Message MessageReader::fault(std::string text) {
    drop(1);
    _lost = true;
    return {"", std::move(text)};
}

/// Bytes are removed only once they are more than those that are left, so that each is moved a bounded number of times.
void MessageReader::drop(std::size_t count) {
    _searched = 0;
    _at += count;
    if (_at == _bytes.size() || _at > _bytes.size() / 2) { // equivalent: only when the bytes are moved
        _bytes.erase(0, _at);
        _at = 0;
        if (_bytes.capacity() > std::size_t(1) << 20 && _bytes.empty()) // equivalent: only memory
            _bytes.shrink_to_fit();                                     // equivalent: only memory
    }
}

std::string framed(std::string_view body) {
    std::string message = "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n";
    message += body;
    return message;
}
