#include "tool/model/Fingerprint.hh"

#include "infrastructure/RtiBuffer.hh"
#include "tool/console/Text.hh"

#include <openssl/evp.h>

#include <stdexcept>

std::string checksumText(const RtiFedDatabase &database) {
    const unsigned long checksum = database.getChecksum();
    std::string digits;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        digits += hexDigits(static_cast<unsigned char>(checksum >> shift & 0xFF));
    return digits;
}

std::string fingerprint(const RtiFedDatabase &database) {
    RtiBuffer image;
    database.save(image);
    const std::size_t lengthSize = 4; // before the bytes of a string
    const std::size_t size = image.size() - lengthSize - database.getFileName().size();
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned digestSize = 0;
    if (EVP_Digest(image.data(), size, digest, &digestSize, EVP_sha256(), nullptr) != 1)
        throw std::runtime_error("SHA-256 cannot be computed");
    std::string digits;
    for (unsigned i = 0; i < digestSize; ++i)
        digits += hexDigits(digest[i]);
    return digits;
}
