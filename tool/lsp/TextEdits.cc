#include "tool/lsp/TextEdits.hh"

#include "tool/console/LineDiff.hh"
#include "tool/console/Utf8.hh"

#include <algorithm>
#include <iterator>

namespace {

bool continues(std::string_view text, std::size_t at) {
    // equivalent: but for sanitizers, or the edit gets longer
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80;
}

/// Returns the equal bytes at the beginning of two texts, up to where both may be divided.
std::size_t commonBeginning(std::string_view a, std::string_view b) {
    const auto most = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
    auto size = static_cast<std::size_t>(std::mismatch(a.begin(), a.begin() + most, b.begin()).first - a.begin());
    while (size > 0 && (continues(a, size) || continues(b, size) || a[size - 1] == '\r'))
        --size;
    return size;
}

std::size_t commonEnd(std::string_view a, std::string_view b) {
    const auto most = static_cast<std::ptrdiff_t>(std::min(a.size(), b.size()));
    auto size = static_cast<std::size_t>(std::mismatch(a.rbegin(), a.rbegin() + most, b.rbegin()).first - a.rbegin());
    const auto isDivided = [&](std::string_view text) { // a CR LF
        // equivalent: but for sanitizers, since no CR comes before the text
        return text.size() > size && text[text.size() - size] == '\n' && text[text.size() - size - 1] == '\r';
    };
    // equivalent: but for sanitizers, since nothing is divided at the end
    while (size > 0 && (continues(a, a.size() - size) || isDivided(a) || isDivided(b)))
        --size;
    return size;
}

/// Adds what changes in a part of the text, without what is equal at both of its ends.
void addTrimmed(std::string_view before, std::string_view after, std::size_t offset, std::vector<Replacement> &found) {
    const std::size_t begin = commonBeginning(before, after);
    before.remove_prefix(begin);
    after.remove_prefix(begin);
    const std::size_t end = commonEnd(before, after);
    before.remove_suffix(end);
    after.remove_suffix(end);
    if (!before.empty() || !after.empty())
        found.push_back({{static_cast<std::uint32_t>(offset + begin), static_cast<std::uint32_t>(before.size())},
                         std::string(after)});
}

constexpr std::string_view kBlanks = " \t\r\n";

/// Returns the length of the blanks that a text begins with, or of the other characters.
std::size_t runSize(std::string_view text, bool ofBlanks) {
    const std::size_t size = ofBlanks ? text.find_first_not_of(kBlanks) : text.find_first_of(kBlanks);
    return std::min(size, text.size());
}

/// Adds what changes in a line. If only blanks do, as when a line is formatted, each run of them is a replacement of
/// its own, so that no word is replaced.
void addLine(std::string_view before, std::string_view after, std::size_t offset, std::vector<Replacement> &found) {
    std::vector<Replacement> gaps;
    std::string_view a = before, b = after;
    for (bool blanks = true; !a.empty() || !b.empty(); blanks = !blanks) {
        const std::size_t sizeA = runSize(a, blanks), sizeB = runSize(b, blanks);
        if (blanks)
            addTrimmed(a.substr(0, sizeA), b.substr(0, sizeB), offset + before.size() - a.size(), gaps);
        else if (a.substr(0, sizeA) != b.substr(0, sizeB))
            return addTrimmed(before, after, offset, found);
        a.remove_prefix(sizeA);
        b.remove_prefix(sizeB);
    }
    std::move(gaps.begin(), gaps.end(), std::back_inserter(found));
}

/// Returns lines that follow each other as one text.
std::string_view joinedLines(const Lines &lines, std::size_t begin, std::size_t end) {
    if (begin == end)
        return {};
    return {lines[begin].data(),
            static_cast<std::size_t>(lines[end - 1].data() - lines[begin].data()) + lines[end - 1].size()};
}

} // namespace

std::vector<Replacement> differences(std::string_view before, std::string_view after) {
    const Lines a = linesOf(before), b = linesOf(after);
    const auto offsetOf = [&](std::size_t line) {
        return line == a.size() ? before.size() : static_cast<std::size_t>(a[line].data() - before.data());
    };
    std::vector<Replacement> found;
    for (const LineChange &change : changedLines(a, b)) {
        if (change.endA - change.beginA != change.endB - change.beginB) {
            addTrimmed(joinedLines(a, change.beginA, change.endA), joinedLines(b, change.beginB, change.endB),
                       offsetOf(change.beginA), found);
            continue;
        }
        for (std::size_t i = 0; i < change.endA - change.beginA; ++i)
            addLine(a[change.beginA + i], b[change.beginB + i], offsetOf(change.beginA + i), found);
    }
    return found;
}

Json textEdits(const OpenDocument &document, const std::vector<Replacement> &replacements) {
    Json edits = Json::array();
    for (const Replacement &replacement : replacements) {
        if (findInvalidUtf8(replacement.text) != std::string_view::npos)
            throw ProtocolError(ErrorCode::requestFailed, "the new text has bytes that are not UTF-8");
        edits.push_back({{"range", document.range(replacement.span)}, {"newText", replacement.text}});
    }
    return edits;
}

Json workspaceEdit(const Client &client, const OpenDocument &document, const std::vector<Replacement> &replacements) {
    Json edits = textEdits(document, replacements);
    if (!client.versionedEdits)
        return {{"changes", {{document.uri(), std::move(edits)}}}};
    // equivalent: what an editor has opened has a version
    const Json named = {{"uri", document.uri()}, {"version", document.version.value_or(0)}};
    return {{"documentChanges", Json::array({{{"textDocument", named}, {"edits", std::move(edits)}}})}};
}
