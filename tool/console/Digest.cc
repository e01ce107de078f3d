#include "tool/console/Digest.hh"

#include "tool/console/Text.hh"

#include <openssl/evp.h>
#include <stdexcept>

std::string sha256(std::string_view bytes) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned digestSize = 0;
    if (EVP_Digest(bytes.data(), bytes.size(), digest, &digestSize, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("SHA-256 cannot be computed");
    std::string digits;
    for (unsigned i = 0; i < digestSize; ++i)
        digits += hexDigits(digest[i]);
    return digits;
}
