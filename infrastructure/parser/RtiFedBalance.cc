#include "infrastructure/parser/RtiFedBalance.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/parser/RtiFedLexer.hh"

#include <algorithm>
#include <optional>
#include <utility>

namespace {

using Suspect = RtiFedBalance::Suspect;
using Indentation = std::optional<std::string_view>; // if a token begins its line

struct Open {
    RtiFedOffset offset;
    Indentation indentation;
};

/// The blanks in front of the byte at `offset`, if nothing else stands before it on its line.
Indentation indentationOf(std::string_view bytes, RtiFedOffset offset) {
    RtiFedOffset begin = offset;
    while (begin > 0 && (bytes[begin - 1] == ' ' || bytes[begin - 1] == '\t'))
        --begin;
    if (begin > 0 && bytes[begin - 1] != '\n' && bytes[begin - 1] != '\r')
        return std::nullopt;
    return bytes.substr(begin, offset - begin);
}

bool isRightOf(const Indentation &a, const Indentation &b) {
    return a && b && a->size() > b->size() && a->substr(0, b->size()) == b;
}

/// Walks over the parentheses of a text. Clauses nested deeper than any sound text has are only counted.
class Walk {
public:
    explicit Walk(const RtiFedText &text) : _text(text) {}

    /// Calls `onOpen` and `onClose` with each parenthesis, before it is entered and after it was left.
    template <class OnOpen, class OnClose>
    void run(OnOpen onOpen, OnClose onClose) {
        RtiFedLexer lexer(_text, _text.begin());
        for (RtiFedToken token = lexer.next();
             token.kind != RtiFedToken::Kind::end && token.kind != RtiFedToken::Kind::nul; token = lexer.next()) {
            if (token.kind == RtiFedToken::Kind::open) {
                const Open open{token.begin, indentationOf(_text.bytes(), token.begin)};
                onOpen(open);
                if (opens.size() < kDeepest)
                    opens.push_back(open);
                else
                    ++_deeper;
            } else if (token.kind == RtiFedToken::Kind::close) {
                if (_deeper > 0) {
                    --_deeper;
                } else if (!opens.empty()) {
                    const Open closed = opens.back();
                    opens.pop_back();
                    onClose(closed, token.begin);
                } else {
                    ++_surplus;
                }
            } else {
                onOpen({token.begin, std::nullopt});
            }
        }
    }

    /// Leaves the innermost clause that begins its line with this indentation, and those in it; null if there is
    /// none. The outermost one is left only if `orFed`.
    std::optional<Open> leave(const Indentation &indentation, bool orFed) {
        const auto outer =
            std::find_if(opens.rbegin(), opens.rend(), [&](const Open &o) { return o.indentation == indentation; });
        if (!indentation || outer == opens.rend() || (!orFed && outer + 1 == opens.rend()))
            return std::nullopt;
        const Open left = *outer;
        opens.erase(outer.base() - 1, opens.end());
        return left;
    }

    /// How many clauses are open, less the ")" that closed none.
    long missing() const { return static_cast<long>(opens.size() + _deeper) - _surplus; }

    std::vector<Open> opens;

private:
    static constexpr std::size_t kDeepest = kMaxClassNesting + 4; // FED, a section, a member, its sec_level

    const RtiFedText &_text;
    std::size_t _deeper = 0;
    long _surplus = 0;
};

std::vector<Suspect> closesUnderOuter(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    walk.run([](const Open &) {},
             [&](const Open &closed, RtiFedOffset at) {
                 const Indentation indentation = indentationOf(text.bytes(), at);
                 if (!closed.indentation || !indentation || indentation == closed.indentation)
                     return;
                 if (const auto outer = walk.leave(indentation, true))
                     suspects.push_back({Suspect::closeUnderOuter, closed.offset, at, outer->offset});
             });
    return suspects;
}

std::vector<Suspect> opensUnderClause(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    walk.run(
        [&](const Open &open) {
            if (const auto left = walk.leave(open.indentation, false))
                suspects.push_back({Suspect::openUnderClause, left->offset, open.offset});
        },
        [](const Open &, RtiFedOffset) {});
    return suspects;
}

std::vector<Suspect> moreBehindCloses(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    std::optional<Open> lastClosed;
    RtiFedOffset lastClose = 0;
    const auto reopen = [&](const Open &closed, RtiFedOffset at) {
        suspects.push_back({Suspect::moreBehindClose, closed.offset, at});
        walk.opens.push_back(closed);
    };
    walk.run(
        [&](const Open &open) {
            if (lastClosed && isRightOf(open.indentation, lastClosed->indentation))
                reopen(*lastClosed, lastClose);
            lastClosed.reset();
        },
        [&](const Open &closed, RtiFedOffset at) {
            lastClosed.reset();
            if (isRightOf(indentationOf(text.bytes(), at), closed.indentation))
                return reopen(closed, at);
            lastClosed = closed;
            lastClose = at;
        });
    return suspects;
}

} // namespace

RtiFedBalance::RtiFedBalance(const RtiFedText &text) {
    Walk walk(text);
    walk.run([](const Open &) {}, [](const Open &, RtiFedOffset) {});
    missingCloses = walk.missing();
    if (missingCloses < 0) {
        suspects = moreBehindCloses(text);
    } else if (missingCloses > 0) {
        // The look that strikes first is nearest to the slip. In texts whose clauses all begin in one column the second
        // look strikes everywhere, and tells nothing.
        suspects = closesUnderOuter(text);
        std::vector<Suspect> opens = opensUnderClause(text);
        if (opens.size() == static_cast<std::size_t>(missingCloses) &&
            (suspects.empty() || opens.front().at < suspects.front().at))
            suspects = std::move(opens);
    }
}
