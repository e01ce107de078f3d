#include "tool/console/Text.hh"

#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>

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

bool beginsWith(std::string_view text, std::string_view beginning) {
    return text.substr(0, beginning.size()) == beginning;
}

std::vector<std::string> split(const std::string &text, char separator) {
    std::vector<std::string> parts;
    for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end + 1) {
        end = std::min(text.find(separator, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
    }
    return parts;
}

std::vector<std::string> wordsOf(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    std::vector<std::string> words;
    std::size_t begin = text.find_first_not_of(kBlanks);
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(kBlanks, begin), text.size());
        words.emplace_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(kBlanks, end);
    }
    return words;
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
