#pragma once

#include <string>

/// Throws an exception whose message is the pieces joined. A message begins with the place where it is raised, a fixed
/// text: it does not follow the line numbers of this source, since callers compare whole messages.
template <class Exception, class... Pieces>
[[noreturn]] void rtiFedRaise(const Pieces &...pieces) {
    std::string message;
    (message.append(pieces), ...);
    throw Exception(message.c_str());
}
