#pragma once

#include <string>

/// Throws an exception whose message is the concatenation of the pieces. The source position at the beginning of a
/// message is a fixed text, independent of the actual line: callers compare whole messages.
template <class Exception, class... Pieces>
[[noreturn]] void rtiFedRaise(const Pieces &...pieces) {
    std::string message;
    (message.append(pieces), ...);
    throw Exception(message.c_str());
}
