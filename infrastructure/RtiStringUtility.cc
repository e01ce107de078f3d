#include "infrastructure/RtiStringUtility.hh"

#include "infrastructure/RtiBuffer.hh"

#include <algorithm>
#include <typeinfo>

namespace {
constexpr std::size_t kChunk = 65536; // bytes
}

void RtiStringUtility::putString(const std::string &text, RtiBuffer &buffer) {
    buffer.put(static_cast<unsigned long>(text.size()));
    buffer.putBytes(text.data(), text.size());
}

std::string RtiStringUtility::getString(RtiBuffer &buffer) {
    const unsigned long size = buffer.getUnsignedLong();
    if (typeid(buffer) == typeid(RtiBuffer) && size > buffer.remaining())
        throw RtiBufferUnderflow(("byte " + std::to_string(buffer.size() - buffer.remaining()) + ": a string of " +
                                  std::to_string(size) + " bytes, " + std::to_string(buffer.remaining()) + " left")
                                     .c_str());
    // A class derived from RtiBuffer may store its bytes elsewhere: no more is allocated than it really has.
    std::string text(std::min<std::size_t>(size, kChunk), '\0');
    buffer.getBytes(text.data(), text.size());
    while (text.size() < size) {
        const std::size_t begin = text.size();
        text.resize(std::min<std::size_t>(size, 2 * begin)); // equivalent: how much more at once is a matter of speed
        buffer.getBytes(&text[begin], text.size() - begin);
    }
    return text;
}

std::string RtiStringUtility::toupper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), [](char c) { return static_cast<char>(toupper(c)); });
    return upper;
}
