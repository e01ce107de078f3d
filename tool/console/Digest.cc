#include "tool/console/Digest.hh"

#include "tool/console/Text.hh"

#include <array>
#include <cstdint>
#include <nettle/base64.h>
#include <nettle/sha2.h>

namespace {

using Digest = std::array<std::uint8_t, SHA256_DIGEST_SIZE>;

Digest digestOf(std::string_view bytes) {
    sha256_ctx state{};
    sha256_init(&state);
    sha256_update(&state, bytes.size(), reinterpret_cast<const std::uint8_t *>(bytes.data()));
    Digest digest{};
    sha256_digest(&state, digest.size(), digest.data());
    return digest;
}

} // namespace

std::string sha256(std::string_view bytes) {
    std::string digits;
    for (const std::uint8_t byte : digestOf(bytes))
        digits += hexDigits(byte);
    return digits;
}

std::string sha256InBase64(std::string_view bytes) {
    const Digest digest = digestOf(bytes);
    std::string text(BASE64_ENCODE_RAW_LENGTH(SHA256_DIGEST_SIZE), '\0');
    base64_encode_raw(text.data(), digest.size(), digest.data());
    return text;
}
