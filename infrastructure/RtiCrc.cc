#include "infrastructure/RtiCrc.hh"

#include <array>
#include <cstdint>

namespace {

// unreached in this function: the compiler runs it
constexpr std::array<std::uint32_t, 256> makeTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ ((remainder & 1) ? 0xEDB88320U : 0U);
        table[byte] = remainder;
    }
    return table;
}

constexpr auto kTable = makeTable();

} // namespace

unsigned long RtiCrc::computeCrc(const void *data, long length) {
    const auto *bytes = static_cast<const unsigned char *>(data);
    std::uint32_t crc = 0xFFFFFFFFU;
    for (long i = 0; i < length; ++i)
        crc = (crc >> 8) ^ kTable[(crc ^ bytes[i]) & 0xFF];
    return crc ^ 0xFFFFFFFFU;
}
