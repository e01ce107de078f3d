#include "tool/control/Pattern.hh"

#include <re2/re2.h>

namespace {

constexpr std::size_t kLongestPattern = 1000; // bytes of a pattern
constexpr std::int64_t kMaxMemory = 1 << 20;  // of a compiled pattern. equivalent: any few MB

/// Returns the expression for the set of bytes whose "[" is at `at`, and moves `at` to its "]". A set without "]" is
/// returned as it is, so that the expression is refused.
std::string setOf(const std::string &glob, std::size_t &at) {
    const bool negated = glob.compare(at + 1, 1, "!") == 0 || glob.compare(at + 1, 1, "^") == 0;
    const std::size_t begin = at + (negated ? 2 : 1);
    const std::size_t end = glob.find(']', begin + 1); // a "]" at the beginning belongs to the set
    if (end == std::string::npos)
        return "[";
    std::string set = negated ? "[^/" : "[";
    for (std::size_t i = begin; i < end; ++i)
        set +=
            (std::string_view("\\[]^").find(glob[i]) == std::string_view::npos ? "" : "\\") + std::string(1, glob[i]);
    at = end;
    return set + ']';
}

std::string expressionOf(std::string glob) {
    while (glob.size() > 1 && glob.back() == '/') // equivalent: neither "/" nor "" matches a path
        glob.pop_back();
    const bool anywhere = glob.find('/') == std::string::npos;
    std::string expression = anywhere ? "(?:.*/)?" : "";
    // equivalent: quoting what follows the glob adds nothing
    for (std::size_t at = glob[0] == '/' ? 1 : 0; at < glob.size(); ++at) {
        if (glob.compare(at, 3, "**/") == 0) {
            expression += "(?:.*/)?";
            at += 2;
        } else if (glob.compare(at, 2, "**") == 0) {
            expression += ".*";
            ++at;
        } else if (glob[at] == '*') {
            expression += "[^/]*";
        } else if (glob[at] == '?') {
            expression += "[^/]";
        } else if (glob[at] == '[') {
            expression += setOf(glob, at);
        } else {
            expression += re2::RE2::QuoteMeta(glob.substr(at, 1));
        }
    }
    return expression + "(?:/.*)?";
}

} // namespace

Pattern::Pattern(std::string text, const std::string &expression, bool isGlob)
    : _text(std::move(text)), _isGlob(isGlob) {
    if (_text.size() > kLongestPattern)
        return;
    re2::RE2::Options options;
    options.set_max_mem(kMaxMemory);
    options.set_log_errors(false);
    options.set_dot_nl(true);
    if (isGlob) // a path may have any
        options.set_encoding(re2::RE2::Options::EncodingLatin1);
    _expression = std::make_shared<const re2::RE2>(expression, options);
}

Pattern Pattern::ofPath(const std::string &glob) {
    return {glob, expressionOf(glob), true};
}

bool Pattern::matches(std::string_view text) const {
    return re2::RE2::FullMatch(re2::StringPiece(text.data(), text.size()), *_expression);
}

std::string Pattern::fault() const {
    if (!_expression)
        return "it is longer than " + std::to_string(kLongestPattern) + " bytes";
    if (_expression->ok())
        return "";
    return _isGlob ? "a set in [] is not closed, or is in the wrong order" : _expression->error();
}
