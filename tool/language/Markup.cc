#include "tool/language/Markup.hh"

#include "tool/console/Text.hh"

#include <algorithm>

namespace {

std::size_t longestRunOf(char wanted, std::string_view text) {
    std::size_t longest = 0, run = 0;
    for (const char c : text) {
        run = c == wanted ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    return longest;
}

bool isLetterOrDigit(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether a character of a line is markup: anywhere, as an underscore at the edge of a word, or as the mark of a
/// heading or of an item of a list at the beginning of the line.
bool isMarkup(std::string_view line, std::size_t at) {
    const auto isInWord = [&] {
        // equivalent: but for sanitizers, since no letter is around the line in memory
        return at > 0 && at + 1 < line.size() && isLetterOrDigit(line[at - 1]) && isLetterOrDigit(line[at + 1]);
    };
    constexpr std::string_view kAnywhere = "\\`*[]<>|~&", kAtBeginning = "#-+=", kAfterNumber = ".)";
    const std::size_t numDigits = std::min(line.find_first_not_of("0123456789"), line.size());
    return kAnywhere.find(line[at]) != std::string_view::npos || (line[at] == '_' && !isInWord()) ||
           (at == 0 && kAtBeginning.find(line[at]) != std::string_view::npos) ||
           (at > 0 && at == numDigits && kAfterNumber.find(line[at]) != std::string_view::npos);
}

void appendEscaped(std::string_view line, std::string &text) {
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (isMarkup(line, at))
            text += '\\';
        text += line[at];
    }
}

} // namespace

std::string strong(Markup markup, std::string_view word) {
    const char *const mark = markup == Markup::markdown ? "**" : "";
    return mark + std::string(word) + mark;
}

/// A code span is enclosed in more backticks than the name has in a row; a blank at both ends is not part of it.
std::string code(Markup markup, std::string_view name) {
    std::string text = shown(name, kTextLimit);
    if (markup == Markup::none)
        return text;
    const std::string fence(longestRunOf('`', text) + 1, '`');
    const bool needsBlanks = text.empty() || text.front() == '`' || text.back() == '`' || text.front() == ' ';
    const char *const blank = needsBlanks ? " " : "";
    return fence + blank + text + blank + fence;
}

/// Only what is markup at its place gets a backslash, since some editors show Markdown as it is.
std::string plainText(Markup markup, std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t size = std::min(text.find('\n'), text.size());
        const std::string line = shown(text.substr(0, size));
        if (markup == Markup::markdown)
            appendEscaped(line, result);
        else
            result += line;
        text.remove_prefix(std::min(size + 1, text.size()));
        if (!text.empty())
            result += size == 0 || text.front() == '\n' ? "\n" : lineEnd(markup);
    }
    return result;
}

/// Two blanks at the end of a line keep its line break.
const char *lineEnd(Markup markup) {
    return markup == Markup::markdown ? "  \n" : "\n";
}

const char *separator(Markup markup) {
    return markup == Markup::markdown ? "\n\n---\n\n" : "\n\n";
}
