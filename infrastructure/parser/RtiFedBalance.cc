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

/// The blanks before the byte at `offset`, if nothing else precedes it on its line.
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

/// Walks over the parentheses of a text. Clauses nested deeper than in any correct text are only counted, so that a
/// text of nothing but "(" needs no memory for each.
class Walk {
public:
    explicit Walk(const RtiFedText &text) : _text(text) {}

    /// Calls `onOpen` with each token that is not a ")", before a "(" opens its clause; only a "(" has an indentation.
    /// Calls `onClose` after each ")", with the clause that it closed.
    template <class OnOpen, class OnClose>
    void run(OnOpen onOpen, OnClose onClose) {
        RtiFedLexer lexer(_text, _text.begin());
        for (RtiFedToken token = lexer.next();
             token.kind != RtiFedToken::Kind::end && token.kind != RtiFedToken::Kind::nul; token = lexer.next()) {
            if (token.kind == RtiFedToken::Kind::open) {
                const Open open{token.begin, indentationOf(_text.bytes(), token.begin)};
                onOpen(open);
                ++missingCloses;
                if (opens.size() < kDeepest)
                    opens.push_back(open);
                else
                    ++_deeper;
            } else if (token.kind == RtiFedToken::Kind::close) {
                --missingCloses;
                if (_deeper > 0) {
                    --_deeper;
                } else if (!opens.empty()) {
                    const Open closed = opens.back();
                    opens.pop_back();
                    onClose(closed, token.begin);
                }
            } else {
                onOpen({token.begin, std::nullopt});
            }
        }
    }

    /// Closes the innermost clause that begins its line with this indentation, and those in it. Returns nothing if
    /// there is none. The outermost one, FED, is closed only if `mayCloseFed`.
    std::optional<Open> closeAligned(const Indentation &indentation, bool mayCloseFed) {
        const auto outer =
            std::find_if(opens.rbegin(), opens.rend(), [&](const Open &o) { return o.indentation == indentation; });
        if (!indentation || outer == opens.rend() || (!mayCloseFed && outer + 1 == opens.rend()))
            return std::nullopt;
        const Open closed = *outer;
        opens.erase(outer.base() - 1, opens.end());
        return closed;
    }

    std::vector<Open> opens;
    long missingCloses = 0; // of the text as it is

private:
    static constexpr std::size_t kDeepest = kMaxClassNesting + 4; // FED, a section, a member, its sec_level

    const RtiFedText &_text;
    std::size_t _deeper = 0;
};

/// A ")" that begins a line is aligned with the clause that it is meant to close. If that is an enclosing one, the
/// innermost clause was left open.
std::vector<Suspect> closesUnderOuter(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    walk.run([](const Open &) {},
             [&](const Open &closed, RtiFedOffset at) {
                 const Indentation indentation = indentationOf(text.bytes(), at);
                 if (!closed.indentation || !indentation || indentation == closed.indentation)
                     return;
                 if (const auto outer = walk.closeAligned(indentation, true))
                     suspects.push_back({Suspect::closeUnderOuter, closed.offset, at, outer->offset});
             });
    return suspects;
}

/// A "(" that is aligned with an open clause is meant as its sibling: that clause was left open. Where all clauses
/// begin in one column this finds a contradiction nearly everywhere.
std::vector<Suspect> opensUnderClause(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    walk.run(
        [&](const Open &open) {
            if (const auto left = walk.closeAligned(open.indentation, false))
                suspects.push_back({Suspect::openUnderClause, left->offset, open.offset});
        },
        [](const Open &, RtiFedOffset) {});
    return suspects;
}

/// A line that begins to the right of a clause belongs to it. If the ")" of the clause precedes that line, it is
/// superfluous, and the clause is opened again.
std::vector<Suspect> textAfterCloses(const RtiFedText &text) {
    std::vector<Suspect> suspects;
    Walk walk(text);
    std::optional<Open> lastClosed;
    RtiFedOffset lastClose = 0;
    const auto reopen = [&](const Open &closed, RtiFedOffset at) {
        suspects.push_back({Suspect::textAfterClose, closed.offset, at});
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
    missingCloses = walk.missingCloses;
    if (missingCloses < 0) {
        suspects = textAfterCloses(text);
    } else if (missingCloses > 0) {
        // The check that fires first is closest to the mistake. The "(" are trusted only if they explain exactly the
        // ")" that are missing.
        suspects = closesUnderOuter(text);
        std::vector<Suspect> opens = opensUnderClause(text);
        if (opens.size() == static_cast<std::size_t>(missingCloses) &&
            (suspects.empty() || opens.front().at < suspects.front().at))
            suspects = std::move(opens);
    }
}
