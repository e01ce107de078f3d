#include "tool/lsp/Uri.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <charconv>
#include <string_view>

std::optional<std::string> pathOfUri(const std::string &uri) {
    constexpr std::string_view kScheme = "FILE:";
    if (RtiStringUtility::toupper(uri.substr(0, kScheme.size())) != kScheme)
        return {};
    std::string_view encoded = std::string_view(uri).substr(kScheme.size());
    if (beginsWith(encoded, "//")) // the host, which is this one
        encoded.remove_prefix(std::min(encoded.find('/', 2), encoded.size()));
    std::string path;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        unsigned char byte = 0; // equivalent: not used before it is read
        const char *const digits = encoded.data() + i + 1;
        // equivalent: the zero byte at the end is no digit
        const bool isEncoded = encoded[i] == '%' && encoded.size() - i > 2 &&
                               std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        path += isEncoded ? static_cast<char>(byte) : encoded[i];
        i += isEncoded ? 2 : 0;
    }
    if (path.empty() || path.front() != '/' || path.find('\0') != std::string::npos)
        return {};
    return path;
}

std::string uriOfPath(const std::string &path) {
    return "file://" + pathInUri(path);
}
