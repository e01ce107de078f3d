#include "tool/check/Fix.hh"

#include "tool/console/Text.hh"

#include <algorithm>

namespace {

constexpr std::string_view kBlanks = " \t\r\n\v\f";

std::string trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    return begin == std::string_view::npos
               ? std::string(text)
               : std::string(text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin));
}

} // namespace

/// The words between two edits belong to the description, as in `replace "receive reliable" with "reliable receive"`.
std::string Fix::description(std::string_view source) const {
    if (!text.empty() || edits.empty())
        return text;
    const RtiFedSpan first = edits.front().span, last = edits.back().span;
    const std::size_t begin = first.begin, end = last.begin + last.length;
    std::string after;
    std::size_t at = begin;
    for (const Replacement &edit : edits) {
        after += std::string(source.substr(at, edit.span.begin - at)) + edit.text;
        at = edit.span.begin + edit.span.length;
    }
    const std::string before = trimmed(source.substr(begin, end - begin));
    if (after.empty())
        return "remove " + inQuotes(before);
    return before.empty() ? "insert " + inQuotes(trimmed(after))
                          : "replace " + inQuotes(before) + " with " + inQuotes(trimmed(after));
}
