#include "tool/console/Text.hh"

#include "infrastructure/RtiStringUtility.hh"

#include <sstream>

std::string shown(std::string_view name, std::size_t limit) {
    return RtiFedParser::printable(name, limit);
}

std::string inQuotes(std::string_view name, std::size_t limit) {
    return '"' + shown(name, limit) + '"';
}

std::string reasonOf(const RTI::Exception &exception) {
    return shown(exception._reason, kTextLimit);
}

std::string plural(std::size_t count, const std::string &noun) {
    return noun + (count == 1 ? "" : noun.back() == 's' ? "es" : "s");
}

std::string counted(std::size_t count, const std::string &noun) {
    return std::to_string(count) + ' ' + plural(count, noun);
}

std::string joined(const std::vector<std::string> &words, std::string_view separator) {
    std::string line;
    for (const std::string &word : words) {
        if (&word != &words.front())
            line += separator;
        line += word;
    }
    return line;
}

std::vector<std::string> split(const std::string &text, char separator) {
    std::vector<std::string> parts;
    std::istringstream rest(text);
    for (std::string part; std::getline(rest, part, separator);)
        parts.push_back(part);
    return parts;
}

std::string hexDigits(unsigned char byte) {
    constexpr char kDigits[] = "0123456789abcdef";
    return {kDigits[byte >> 4], kDigits[byte & 15]};
}

std::string percentEncoded(char byte) {
    return '%' + RtiStringUtility::toupper(hexDigits(static_cast<unsigned char>(byte)));
}

std::string pathInUri(std::string_view path) {
    std::string encoded;
    for (const char c : path) {
        const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
        if (isLetter || std::string_view("/-._~").find(c) != std::string_view::npos)
            encoded += c;
        else
            encoded += percentEncoded(c);
    }
    return encoded;
}

std::string textOf(RtiFedPosition place) {
    return std::to_string(place.line) + ':' + std::to_string(place.column);
}

std::string textOf(const std::string &fileName, const std::optional<RtiFedPosition> &place) {
    return place ? fileName + ':' + textOf(*place) : fileName;
}
