#pragma once

#include <string>

/// Throws an exception whose message is the pieces joined. A message that begins with a source position keeps that
/// position whatever this source looks like, since callers compare whole messages.
template <class Exception, class... Pieces>
[[noreturn]] void rtiFedRaise(const Pieces &...pieces) {
    std::string message;
    (message.append(pieces), ...);
    throw Exception(message.c_str());
}
