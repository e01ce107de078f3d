#include "tool/fom/import/XmlText.hh"

#include "tool/console/Text.hh"
#include "tool/console/Utf8.hh"
#include "tool/fom/import/XmlNesting.hh"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kCheckpoint = 4096; // equivalent: any distance
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF", kBlanks = " \t\r\n";

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// Returns the encoding that the XML declaration names, in lower case; empty if it names none.
std::string encodingOf(std::string_view text) {
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark)
        text.remove_prefix(kByteOrderMark.size());
    // equivalent: no declaration is nearly as long
    const std::string_view declaration = text.substr(0, std::min(text.find("?>"), std::size_t(200)));
    if (declaration.substr(0, 5) != "<?xml")
        return {};
    const std::size_t open = declaration.find_first_of("\"'", declaration.find("encoding"));
    if (open == std::string_view::npos)
        return {};
    const std::size_t close = std::min(declaration.find(declaration[open], open + 1), declaration.size());
    std::string name(declaration.substr(open + 1, close - open - 1));
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

bool isWindowsLatin(std::string_view encoding) {
    return encoding == "windows-1252" || encoding == "cp1252";
}

bool isLatin1(std::string_view encoding) {
    return encoding == "iso-8859-1" || encoding == "iso_8859-1" || encoding == "latin1" || encoding == "latin-1";
}

bool isUtf8(std::string_view encoding) {
    return encoding.empty() || encoding == "utf-8" || encoding == "utf8" || encoding == "us-ascii" ||
           encoding == "ascii";
}

/// The characters 80 to 9F of windows-1252, which has letters and quotes where ISO 8859-1 has control characters.
constexpr unsigned kWindowsLatin[] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                      0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

std::string fromLatin1(std::string_view text, bool isWindows) {
    std::string utf8;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const unsigned code = isWindows && byte >= 0x80 && byte < 0xA0 ? kWindowsLatin[byte - 0x80] : byte;
        utf8 += utf8Of(code);
    }
    return utf8;
}

std::optional<std::string> whyUnreadable(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(std::string(kByteOrderMark) + std::string(kBlanks));
    if (begin == std::string_view::npos)
        return "expected an object model in XML, found an empty file";
    if (contains(text, std::string_view("\0", 1)) || beginsWith(text, "\xFF\xFE") || beginsWith(text, "\xFE\xFF"))
        return "expected XML in UTF-8, found another encoding, such as UTF-16: save the file as UTF-8";
    if (const std::string encoding = encodingOf(text);
        !isUtf8(encoding) && !isLatin1(encoding) && !isWindowsLatin(encoding))
        return "expected XML in UTF-8, ISO 8859-1 or windows-1252, found the encoding " + inQuotes(encoding) +
               ": save the file as UTF-8";
    if (text[begin] != '<')
        return "expected an object model in XML, found " +
               inQuotes(text.substr(begin, std::min<std::size_t>(text.find_first_of(kBlanks, begin) - begin, 20)));
    const auto numTags =
        static_cast<std::size_t>(std::count(text.begin(), text.end(), '<') + std::count(text.begin(), text.end(), '='));
    if (numTags > kMaxXmlTags)
        return "expected at most " + std::to_string(kMaxXmlTags) + " tags and attributes, found " +
               std::to_string(numTags);
    return {};
}

/// Says what the XML parser expected where it gave up.
const char *expectationOf(pugi::xml_parse_status status) {
    switch (status) {
    case pugi::status_bad_pi:
        return "an instruction that ends in \"?>\", and only one XML declaration";
    case pugi::status_bad_comment:
        return "a comment that ends in \"-->\"";
    case pugi::status_bad_cdata:
        return "CDATA that ends in \"]]>\"";
    case pugi::status_bad_doctype:
        return "a complete DOCTYPE";
    case pugi::status_bad_attribute:
        return "an attribute of the form NAME=\"VALUE\"";
    case pugi::status_bad_end_element:
        return "an end tag of the form </NAME>";
    case pugi::status_no_document_element:
        return "an element";
    default:
        return "a tag of the form <NAME>";
    }
}

} // namespace

XmlText::XmlText(std::string text) : _text(std::move(text)) {
    if (const std::string encoding = encodingOf(_text); isLatin1(encoding) || isWindowsLatin(encoding))
        _text = fromLatin1(_text, isWindowsLatin(encoding));
    if (const auto reason = whyUnreadable(_text))
        _fault = Finding{&ruleOf(RuleId::notWellFormed), RtiFedSpan{0, 0}, *reason};
    else if (const std::size_t bad = findInvalidUtf8(_text); bad != std::string::npos)
        _fault = Finding{&ruleOf(RuleId::notWellFormed), RtiFedSpan{static_cast<std::uint32_t>(bad), 1},
                         "expected UTF-8, found a byte that is not: save the file as UTF-8, or declare its encoding"};
    else
        parse();
}

void XmlText::parse() {
    const unsigned options = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_wconv_attribute |
                             pugi::parse_trim_pcdata;
    const pugi::xml_parse_result result =
        _document.load_buffer(_text.data(), _text.size(), options, pugi::encoding_utf8);
    if (!result)
        explain(result);
}

void XmlText::explain(const pugi::xml_parse_result &failure) {
    _document.reset();
    if (failure.status == pugi::status_out_of_memory) // unreached: memory runs out
        throw std::bad_alloc();
    const auto mismatch = firstMismatch(_text);
    const auto offset = static_cast<std::uint32_t>(
        // equivalent: no parse fails before the first "<"
        std::min<std::size_t>(static_cast<std::size_t>(std::max<std::ptrdiff_t>(failure.offset, 0)), _text.size()));
    const bool isNesting =
        // equivalent: the parser fails at the first wrong end tag, wherever that is
        failure.status == pugi::status_end_element_mismatch || (mismatch && !mismatch->close && offset == _text.size());
    if (!mismatch || !isNesting) {
        // equivalent: no parse fails before the first "<"
        const std::uint32_t begin = offset > 0 && _text[offset - 1] == '<' ? offset - 1 : offset;
        _fault = Finding{&ruleOf(RuleId::notWellFormed), RtiFedSpan{begin, begin < _text.size() ? 1U : 0U},
                         std::string("expected ") + expectationOf(failure.status)};
        return;
    }
    const auto nameAt = [&](RtiFedSpan span) { return std::string_view(_text).substr(span.begin, span.length); };
    const RtiFedSpan close =
        mismatch->close.value_or(RtiFedSpan{static_cast<std::uint32_t>(_text.find_last_not_of(kBlanks) + 1), 0});
    const std::string open = shown(nameAt(mismatch->open), kNameLimit);
    _fault = Finding{&ruleOf(RuleId::notWellFormed), close,
                     "expected \"</" + open + ">\" for the element of " + textOf(positionAt(mismatch->open.begin)) +
                         ", found " +
                         (mismatch->close ? "\"</" + shown(nameAt(close), kNameLimit) + ">\"" : "the end of the file")};
    _fault->notes.push_back({mismatch->open, "the element begins here"});
}

/// A line ends in LF, CR LF or CR.
void XmlText::step(Line &line, std::uint32_t offset) const {
    // equivalent: a NUL follows the text
    if (_text[offset] == '\n' || (_text[offset] == '\r' && (offset + 1 == _text.size() || _text[offset + 1] != '\n')))
        line = {line.number + 1, offset + 1};
}

RtiFedPosition XmlText::positionAt(std::uint32_t offset) const {
    const std::uint32_t begin = beginsWith(_text, kByteOrderMark) ? 3 : 0;
    if (_checkpoints.empty()) {
        Line line{1, begin};
        for (std::uint32_t at = 0; at < _text.size(); ++at) { // equivalent: the NUL after the text ends no line
            if (at % kCheckpoint == 0)
                _checkpoints.push_back(line);
            step(line, at);
        }
        _checkpoints.push_back(line);
    }
    Line line = _checkpoints[offset / kCheckpoint];
    for (std::uint32_t at = offset / kCheckpoint * kCheckpoint; at < offset; ++at)
        step(line, at);
    return {line.number, std::max(offset, line.begin) - line.begin + 1};
}

RtiFedSpan XmlText::nameOf(pugi::xml_node element) const {
    return {static_cast<std::uint32_t>(element.offset_debug()),
            static_cast<std::uint32_t>(std::string_view(element.name()).size())};
}

std::string XmlText::contentOf(pugi::xml_node element) const {
    std::string content;
    for (const pugi::xml_node child : element.children())
        // equivalent: elements, the only other children, have no value
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata)
            content += child.value();
    const std::size_t begin = std::min(content.find_first_not_of(kBlanks), content.size());
    return content.substr(begin, content.find_last_not_of(kBlanks) + 1 - begin);
}

/// The length is that of the source, in which characters may be written as entities: up to the next tag.
RtiFedSpan XmlText::contentSpan(pugi::xml_node element) const {
    const pugi::xml_node text = element.text().data();
    if (!text)
        return nameOf(element);
    const auto begin = static_cast<std::size_t>(text.offset_debug());
    const std::size_t end = std::min(_text.find('<', begin), _text.size());
    const std::size_t length = std::string_view(_text).substr(begin, end - begin).find_last_not_of(kBlanks) + 1;
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(length)};
}

std::string_view localName(pugi::xml_node element) {
    const std::string_view name = element.name();
    return name.substr(name.rfind(':') + 1);
}
