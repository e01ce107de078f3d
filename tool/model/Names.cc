#include "tool/model/Names.hh"

#include "fed/storage/RtiFedName.hh"

#include <algorithm>

std::string_view lastComponent(std::string_view path) {
    return path.substr(path.rfind('.') + 1);
}

namespace {

/// The length of the character at the beginning of a UTF-8 text that is not empty.
std::size_t characterSize(std::string_view text) {
    std::size_t size = 1;
    while (size < text.size() && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80)
        ++size;
    return size;
}

/// Whether a pattern matches a whole text.
///
/// The idea: match character by character; where that fails, let the last * so far take one character more and go on
/// after it. An earlier * need not be tried again: what it leaves, the last one can take. Only a dot ends what a * can
/// take, and a dot of the text must match one of the pattern, so that this is true in each component.
bool globMatches(std::string_view pattern, std::string_view text) {
    std::size_t at = 0, in = 0; // in the text and in the pattern
    // Where the last * ends, and where it stops in the text. equivalent: the latter counts only after a *
    std::size_t afterStar = std::string_view::npos, resume = 0;
    while (at < text.size() || in < pattern.size()) {
        const bool any = in < pattern.size() && pattern[in] == '*';
        const bool one = in < pattern.size() && pattern[in] == '?' && at < text.size() && text[at] != '.';
        if (any) {
            afterStar = ++in;
            resume = at;
        } else if (one || (in < pattern.size() && at < text.size() &&
                           RtiFedName::equal(pattern.substr(in, 1), text.substr(at, 1)))) {
            at += one ? characterSize(text.substr(at)) : 1;
            ++in;
        } else if (afterStar != std::string_view::npos && resume < text.size() && text[resume] != '.') {
            at = ++resume;
            in = afterStar;
        } else {
            return false;
        }
    }
    return true;
}

} // namespace

bool endsIn(std::string_view path, std::string_view name) {
    if (path.size() < name.size())
        return false;
    const std::size_t begin = path.size() - name.size();
    return (begin == 0 || path[begin - 1] == '.') && RtiFedName::equal(path.substr(begin), name);
}

std::string_view endLike(std::string_view path, std::string_view name) {
    std::size_t begin = path.size() + 1;
    for (auto dots = std::count(name.begin(), name.end(), '.'); dots >= 0 && begin > 1; --dots)
        begin = path.rfind('.', begin - 2) + 1; // after the dot; 0 if there is none
    return path.substr(std::min(begin, path.size()));
}

bool NamePattern::matches(std::string_view name) const {
    return _isGlob ? globMatches(_text, name) : RtiFedName::equal(_text, name);
}
