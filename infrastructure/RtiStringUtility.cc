#include "infrastructure/RtiStringUtility.hh"

#include "infrastructure/RtiBuffer.hh"

#include <algorithm>

void RtiStringUtility::putString(const std::string &text, RtiBuffer &buffer) {
    buffer.put(static_cast<unsigned long>(text.size()));
    buffer.putBytes(text.data(), text.size());
}

std::string RtiStringUtility::getString(RtiBuffer &buffer) {
    const unsigned long size = buffer.getUnsignedLong();
    if (size > buffer.remaining())
        throw RtiBufferUnderflow(("byte " + std::to_string(buffer.size() - buffer.remaining()) + ": a string of " +
                                  std::to_string(size) + " bytes, " + std::to_string(buffer.remaining()) + " left")
                                     .c_str());
    std::string text(size, '\0');
    buffer.getBytes(text.data(), size);
    return text;
}

std::string RtiStringUtility::toupper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return static_cast<char>(toupper(c)); });
    return upper;
}
