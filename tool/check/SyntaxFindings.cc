#include "tool/check/SyntaxFindings.hh"

#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/DeliveryWords.hh"

#include <algorithm>
#include <initializer_list>
#include <utility>

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

/// A place in a text, from which plain words and parentheses are read.
class Scanner {
public:
    Scanner(std::string_view text, std::size_t at) : _text(text), _at(at) {}

    std::size_t at() const { return _at; }

    void skipBlanks() { _at = std::min(_text.find_first_not_of(kBlanks, _at), _text.size()); }

    bool skip(char byte) {
        skipBlanks();
        if (_at == _text.size() || _text[_at] != byte)
            return false;
        ++_at;
        return true;
    }

    /// The next word with its quotes, if it has any; empty if there is none.
    std::string_view word() {
        skipBlanks();
        const std::size_t begin = _at;
        if (begin < _text.size() && _text[begin] == '"')
            _at = std::min(_text.find_first_of("\"\r\n", begin + 1), _text.size() - 1) + 1;
        else
            _at = std::min(_text.find_first_of(" \t\r\n\v\f()\";", begin), _text.size());
        return _text.substr(begin, _at - begin);
    }

private:
    std::string_view _text;
    std::size_t _at;
};

bool isSame(std::string_view a, std::string_view b) {
    return RtiStringUtility::toupper(a) == RtiStringUtility::toupper(b);
}

/// The transportation or ordering that a word is, as it is usually written; empty if it is none.
std::string deliveryWord(std::string_view word) {
    for (const DeliveryWords &words : {kTransportations, kOrderings})
        for (const std::string &form : allForms(words))
            if (isSame(word, form))
                return form;
    return {};
}

bool isDeliveryWord(std::string_view word) {
    return !deliveryWord(word).empty();
}

RtiFedSpan spanOf(std::size_t begin, std::size_t end) {
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin)};
}

/// An object class has no transportation. The word is directly after its name, as further words can be in no other
/// clause that may contain others.
void explainClassWithDelivery(Finding &finding, std::string_view text) {
    // unreached: the note is at the clause, which began before
    if (finding.notes.empty() || !isDeliveryWord(text.substr(finding.span->begin, finding.span->length)))
        return;
    Scanner scanner(text, finding.notes.front().span.begin);
    if (!scanner.skip('(') || !isSame(scanner.word(), "class") || scanner.word().empty())
        return;
    const std::size_t nameEnd = scanner.at();
    scanner.skipBlanks();
    if (scanner.at() != finding.span->begin)
        return;
    std::size_t end = scanner.at();
    while (isDeliveryWord(scanner.word()))
        end = scanner.at();
    finding.text += "; only interaction classes have a transportation and an ordering";
    finding.fix.edits.push_back({spanOf(nameEnd, end), ""});
}

bool containsAny(std::string_view text, std::initializer_list<std::string_view> parts) {
    return std::any_of(parts.begin(), parts.end(),
                       [text](std::string_view part) { return text.find(part) != std::string_view::npos; });
}

/// A clause has a word too many: a name with blanks, a word in two parts, or parentheses of another kind.
///
/// The idea: the words that may follow a name are known, so the words before the first of them are the name. In a
/// clause that has a name only, all words are.
void explainSurplusWord(Finding &finding, std::string_view text) {
    const std::string_view stray = text.substr(finding.span->begin, finding.span->length);
    // unreached: the finding is at a word or parenthesis
    if (!stray.empty() && (stray[0] == '[' || stray[0] == '{')) {
        finding.text += "; a clause is put in \"(\" and \")\"";
        return;
    }
    // unreached: the note is at the clause, which began before; the finding is at a word or parenthesis
    if (finding.notes.empty() || stray.empty() || stray[0] == '(' || !finding.fix.empty())
        return;
    Scanner scanner(text, finding.notes.front().span.begin);
    if (!scanner.skip('('))
        return;
    const bool isSpace = isSame(scanner.word(), "space");
    scanner.skipBlanks();
    const std::size_t begin = scanner.at();
    std::size_t end = begin, numWords = 0;
    std::string_view last;
    for (std::string_view word = scanner.word(); !word.empty(); word = scanner.word()) {
        if (const std::string meant = joinedDeliveryWord(last, word); !meant.empty()) {
            const RtiFedSpan span = spanOf(static_cast<std::size_t>(last.data() - text.data()), scanner.at());
            finding.text =
                inQuotes(text.substr(span.begin, span.length)) + " is written as one word" + didYouMean(meant);
            finding.span = span;
            finding.fix = {{{span, meant}}, true};
            return;
        }
        if (isDeliveryWord(word))
            break;
        last = word;
        end = scanner.at();
        ++numWords;
    }
    const std::string_view name = text.substr(begin, end - begin);
    if (numWords < 2 || end == text.size() || name.size() > kNameLimit || containsAny(name, {"\"", "\n", "\r"}) ||
        (stray[0] >= '0' && stray[0] <= '9') || name.find('=') != std::string_view::npos)
        return;
    std::string meant;
    for (std::size_t at = 0; at < name.size();) { // typographic and single quotes
        const std::string_view rest = name.substr(at);
        const bool typographic = containsAny(rest.substr(0, 3), {"\u201C", "\u201D", "\u201E"});
        if (!typographic && rest[0] != '\'')
            meant += rest[0];
        at += typographic ? 3 : 1;
    }
    if (isSpace) {
        finding.text += "; each dimension is a clause: (dimension " + shown(stray, kNameLimit) + ")";
        return;
    }
    if (finding.span->begin >= end) { // a later word, which is the first that the grammar does not allow
        finding.span = spanOf(begin, end);
        finding.text = "expected a name, found " + counted(numWords, "word");
    }
    finding.text += "; if the name has blanks, put it in quotes: " + inQuotes(meant);
    finding.fix.edits.push_back({spanOf(begin, end), '"' + meant + '"'});
}

/// Returns the whole line if nothing is left on it without the span.
RtiFedSpan withEmptyLine(RtiFedSpan span, std::string_view text) {
    constexpr const char *kInLine = " \t\v\f";
    const std::string_view before = text.substr(0, span.begin);
    const std::size_t begin = before.find_last_not_of(kInLine) + 1;
    const std::size_t end = std::min(text.find_first_not_of(kInLine, span.begin + span.length), text.size());
    // unreached: FED begins before
    const bool beginsLine = begin == 0 || before[begin - 1] == '\n' || before[begin - 1] == '\r';
    if (span.length == 0 || !beginsLine || end == text.size() || (text[end] != '\n' && text[end] != '\r'))
        return span;
    return spanOf(begin, end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
}

/// `(space Sea)` in place of `Sea`.
void fixSpaceClause(Finding &finding, std::string_view text) {
    std::size_t begin = finding.span->begin;
    if (text[begin] != '(')
        begin = text.find_last_not_of(kBlanks, begin - 1); // the finding is at the keyword
    Scanner scanner(text, begin);
    if (!scanner.skip('(') || !isSame(scanner.word(), "space"))
        return;
    const std::string name(scanner.word());
    if (scanner.skip(')') && finding.text.find("to name the space, write") != std::string::npos)
        finding.fix = {{{spanOf(begin, scanner.at()), name}}, true};
}

} // namespace

std::string joinedDeliveryWord(std::string_view first, std::string_view second) {
    const std::string a(first), b(second);
    const std::string meant = first.empty() || second.empty() ? std::string() : deliveryWord(a + '_' + b);
    return meant.empty() && !first.empty() && !second.empty() ? deliveryWord(a + b) : meant;
}

Finding findingOf(RtiFedParser::Error error, std::string_view text) {
    Finding finding{&ruleOf(error.problem), error.span, std::move(error.text), {}, std::move(error.notes)};
    if (error.correction)
        finding.fix = {{{withEmptyLine(error.correction->span, text), std::move(error.correction->text)}}};
    switch (error.problem) {
    case RtiFedParser::expectedClose:
        explainClassWithDelivery(finding, text);
        fixSpaceClause(finding, text);
        explainSurplusWord(finding, text);
        break; // equivalent: what follows would be the same again
    case RtiFedParser::expectedClause:
        fixSpaceClause(finding, text);
        break; // equivalent: no comment begins where a clause does
    case RtiFedParser::foreignComment:
        if (const std::string_view mark = text.substr(error.span.begin, error.span.length); mark == "//" || mark == "#")
            finding.fix = {{{error.span, ";"}}, true};
        break;
    case RtiFedParser::foreignBlank:
        finding.fix = {{{error.span, finding.text.find("a blank") == std::string::npos ? "" : " "}}, true};
        break; // equivalent: nothing follows
    default:
        break; // equivalent: likewise
    }
    return finding;
}
