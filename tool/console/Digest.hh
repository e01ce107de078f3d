#pragma once

#include <string>
#include <string_view>

/// Returns the SHA-256 digest of some bytes as 64 hexadecimal digits in lower case.
std::string sha256(std::string_view bytes);

/// Returns the same digest in base64, as a content security policy names scripts and styles.
std::string sha256InBase64(std::string_view bytes);
