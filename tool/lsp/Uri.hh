#pragma once

#include <optional>
#include <string>

/// Returns the path of a `file:` URI; nothing for another URI.
std::optional<std::string> pathOfUri(const std::string &uri);

/// Returns the `file:` URI of an absolute path, encoded byte by byte.
std::string uriOfPath(const std::string &path);
