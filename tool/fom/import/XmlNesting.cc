#include "tool/fom/import/XmlNesting.hh"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

constexpr std::size_t kNone = std::string_view::npos;

/// The offset after the next `mark`, or the end of the text.
std::size_t after(std::string_view text, std::size_t from, std::string_view mark) {
    const std::size_t at = text.find(mark, from);
    return at == kNone ? text.size() : at + mark.size();
}

/// The offset of the ">" that ends a tag or declaration, after quotes and the brackets of a DOCTYPE.
std::size_t endOfTag(std::string_view text, std::size_t at) {
    std::size_t brackets = 0;
    for (; at < text.size() && (text[at] != '>' || brackets > 0); ++at) {
        if (text[at] == '"' || text[at] == '\'')
            at = std::min(text.find(text[at], at + 1), text.size() - 1);
        else if (text[at] == '[')
            ++brackets;
        else if (text[at] == ']' && brackets > 0)
            --brackets;
    }
    return at;
}

RtiFedSpan nameAt(std::string_view text, std::size_t at) {
    const std::size_t end = std::min(text.find_first_of(" \t\r\n/><", at), text.size());
    return {static_cast<std::uint32_t>(at), static_cast<std::uint32_t>(end - at)};
}

} // namespace

std::optional<XmlMismatch> firstMismatch(std::string_view text) {
    const auto bytes = [text](RtiFedSpan span) { return text.substr(span.begin, span.length); };
    std::vector<RtiFedSpan> open;
    for (std::size_t at = text.find('<'); at != kNone; at = text.find('<', at)) {
        if (text.substr(at, 4) == "<!--") {
            at = after(text, at + 4, "-->");
        } else if (text.substr(at, 9) == "<![CDATA[") {
            at = after(text, at, "]]>");
        } else if (text.substr(at, 2) == "<?") {
            at = after(text, at, "?>");
        } else if (text.substr(at, 2) == "</") {
            const RtiFedSpan name = nameAt(text, at + 2);
            if (!open.empty() && bytes(open.back()) != bytes(name))
                return XmlMismatch{open.back(), name};
            if (!open.empty())
                open.pop_back();
            at = name.begin;
        } else {
            const std::size_t end = endOfTag(text, at + 1);
            const bool isDeclaration = text.substr(at + 1, 1) == "!",
                       isEmpty = end < text.size() && text[end - 1] == '/';
            if (!isDeclaration && !isEmpty)
                open.push_back(nameAt(text, at + 1));
            at = end;
        }
    }
    return open.empty() ? std::nullopt : std::optional(XmlMismatch{open.back(), {}});
}
