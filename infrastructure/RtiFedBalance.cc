#include "infrastructure/RtiFedBalance.hh"

#include "infrastructure/RtiFedLexer.hh"
#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

namespace {

constexpr std::size_t kMaxClauses = kMaxClassNesting + 4; // the classes, FED, a section, a member, its sec_level

struct Open {
    RtiFedOffset offset;
    std::optional<std::string_view> indentation; // if it begins its line
};

/// The blanks in front of the byte at `offset`, if nothing else stands before it on its line.
std::optional<std::string_view> indentationOf(std::string_view bytes, RtiFedOffset offset) {
    RtiFedOffset begin = offset;
    while (begin > 0 && (bytes[begin - 1] == ' ' || bytes[begin - 1] == '\t'))
        --begin;
    if (begin > 0 && bytes[begin - 1] != '\n' && bytes[begin - 1] != '\r')
        return std::nullopt;
    return bytes.substr(begin, offset - begin);
}

} // namespace

RtiFedBalance::RtiFedBalance(const RtiFedText &text) {
    std::vector<Open> opens;
    RtiFedLexer lexer(text, text.begin());
    for (RtiFedToken token = lexer.next(); token.kind != RtiFedToken::Kind::end && token.kind != RtiFedToken::Kind::nul;
         token = lexer.next()) {
        if (token.kind == RtiFedToken::Kind::open) {
            ++missing;
            opens.push_back({token.begin, indentationOf(text.bytes(), token.begin)});
        } else if (token.kind == RtiFedToken::Kind::close) {
            --missing;
            if (opens.empty())
                continue;
            const Open closed = opens.back();
            opens.pop_back();
            if (suspect || !closed.indentation)
                continue;
            const auto indentation = indentationOf(text.bytes(), token.begin);
            if (!indentation || indentation == closed.indentation)
                continue;
            // No clause of a sound text is farther out; without the bound, hostile nesting would cost its square.
            const auto outermost = opens.rbegin() + static_cast<std::ptrdiff_t>(std::min(opens.size(), kMaxClauses));
            const auto outer =
                std::find_if(opens.rbegin(), outermost, [&](const Open &o) { return o.indentation == indentation; });
            if (outer != outermost)
                suspect = Suspect{closed.offset, token.begin, outer->offset};
        }
    }
}
