#pragma once

#include <string>
#include <string_view>

/// Returns the SHA-256 digest of some bytes as 64 hexadecimal digits in lower case.
std::string sha256(std::string_view bytes);
