#include "tool/console/Digest.hh"

#include "tool/console/Text.hh"

#include <cstdint>
#include <nettle/sha2.h>

std::string sha256(std::string_view bytes) {
    sha256_ctx state;
    sha256_init(&state);
    sha256_update(&state, bytes.size(), reinterpret_cast<const std::uint8_t *>(bytes.data()));
    std::uint8_t digest[SHA256_DIGEST_SIZE];
    sha256_digest(&state, sizeof digest, digest);
    std::string digits;
    for (const std::uint8_t byte : digest)
        digits += hexDigits(byte);
    return digits;
}
