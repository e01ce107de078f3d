#include "tool/model/Fingerprint.hh"

#include "infrastructure/RtiBuffer.hh"

#include <openssl/evp.h>

#include <stdexcept>

namespace {

void putHex(unsigned byte, std::string &to) {
    constexpr char kDigits[] = "0123456789abcdef";
    to += {kDigits[byte >> 4], kDigits[byte & 15]};
}

} // namespace

std::string checksumText(const RtiFedDatabase &database) {
    const unsigned long checksum = database.getChecksum();
    std::string digits;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        putHex(static_cast<unsigned>(checksum >> shift & 0xFF), digits);
    return digits;
}

std::string fingerprint(const RtiFedDatabase &database) {
    RtiBuffer image;
    database.save(image);
    const std::size_t lengthSize = 4; // in front of the bytes of a string
    const std::size_t size = image.size() - lengthSize - database.getFileName().size();
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned digestSize = 0;
    if (EVP_Digest(image.data(), size, digest, &digestSize, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("SHA-256 cannot be computed");
    std::string digits;
    for (unsigned i = 0; i < digestSize; ++i)
        putHex(digest[i], digits);
    return digits;
}
