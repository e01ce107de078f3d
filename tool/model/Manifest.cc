#include "tool/model/Manifest.hh"

#include <algorithm>

namespace {

constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}};

std::string escaped(std::string_view name) {
    std::string text;
    for (const char byte : name) {
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                          [byte](const auto &candidate) { return candidate.first == byte; });
        if (escape == std::end(kEscapes))
            text += byte;
        else
            text += {'\\', escape->second};
    }
    return text;
}

std::optional<std::string> unescaped(std::string_view text) {
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            name += text[at];
            continue;
        }
        const char letter = ++at < text.size() ? text[at] : '\0';
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                          [letter](const auto &candidate) { return candidate.second == letter; });
        if (escape == std::end(kEscapes))
            return {};
        name += escape->first;
    }
    return name;
}

} // namespace

std::string manifestText(const ManifestLine &line) {
    const std::string name = escaped(line.fileName);
    return (name == line.fileName ? "" : "\\") + line.digits + "  " + name;
}

std::string manifestName(const std::string &fileName) {
    const std::string name = escaped(fileName);
    return (name == fileName ? "" : "\\") + name;
}

std::optional<ManifestLine> parseManifestLine(std::string_view text) {
    const bool isEscaped = !text.empty() && text.front() == '\\';
    if (isEscaped)
        text.remove_prefix(1);
    const std::size_t numDigits = std::min(text.find_first_not_of("0123456789abcdefABCDEF"), text.size());
    const std::string_view rest = text.substr(numDigits);
    if ((numDigits != 8 && numDigits != 64) || rest.size() < 3 || rest[0] != ' ' || (rest[1] != ' ' && rest[1] != '*'))
        return {};
    const std::string_view name = rest.substr(2);
    const auto fileName = isEscaped ? unescaped(name) : std::string(name);
    if (!fileName)
        return {};
    return ManifestLine{std::string(text.substr(0, numDigits)), *fileName};
}
