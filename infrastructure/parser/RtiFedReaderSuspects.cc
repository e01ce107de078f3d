// How RtiFedReader uses the suspects of RtiFedBalance.

#include "infrastructure/parser/RtiFedReader.hh"

#include <algorithm>
#include <cstdlib>

using Kind = RtiFedToken::Kind;

RtiFedReader RtiFedReader::read(const RtiFedText &text) {
    RtiFedReader first(text, RtiFedRepair(text));
    if (first.nesting.errors.empty())
        return first;
    // If the reader came to know foreign comments since then, they are not counted any more.
    RtiFedBalance balance = text.habits.any() ? RtiFedBalance(text) : *first.nesting.repair.balance();
    const auto isFound = [&](const RtiFedBalance::Suspect &suspect) { return first.findsByGrammar(suspect); };
    balance.suspects.erase(std::remove_if(balance.suspects.begin(), balance.suspects.end(), isFound),
                           balance.suspects.end());
    if (balance.suspects.empty()) {
        for (RtiFedSyntaxError &error : first.nesting.errors)
            error.isUnclear = balance.isUnclear &&
                              error.problem == (balance.missingCloses < 0 ? Problem::trailingText : Problem::leftOpen);
        return first;
    }
    // Without the suspects, one error may report several mistakes, but not mistakes that cancel out.
    const auto imbalance = static_cast<std::size_t>(std::abs(balance.missingCloses));
    const std::size_t more = balance.numMistakes == imbalance ? imbalance - 1 : 0;
    RtiFedReader second(text, RtiFedRepair(text, std::make_shared<const RtiFedBalance>(std::move(balance))));
    return second.nesting.errors.size() <= first.nesting.errors.size() + more ? std::move(second) : std::move(first);
}

/// Whether the grammar alone led to the place of a suspect: an error is at the superfluous parenthesis, or at the token
/// before which a clause that contains no clauses should be closed.
bool RtiFedReader::findsByGrammar(const RtiFedBalance::Suspect &suspect) const {
    const bool isMissing = suspect.change == RtiFedBalance::Suspect::missingClose;
    const RtiFedOffset at = isMissing ? RtiFedLexer(_text, suspect.at).next().begin : suspect.at;
    return std::any_of(nesting.errors.begin(), nesting.errors.end(), [&](const RtiFedSyntaxError &error) {
        return error.at == at &&
               (!isMissing || (isLeaf(error.clause.kind) && error.clause.kind != RtiFedClause::unknown));
    });
}

/// If a ")" is judged to be missing here, makes it the current token.
bool RtiFedReader::insertSuspectedClose() {
    const RtiFedOffset at = _lexer.at();
    const RtiFedToken next = peek();
    if (!nesting.insertSuspectedClose(at, next.begin))
        return false;
    if (next.kind == Kind::end) // one error reports all clauses that are left open there
        nesting.stopped = true;
    _token = {};
    _token.kind = Kind::close;
    _token.begin = at;
    _afterClose = false;
    return true;
}

/// Whether the current token is a parenthesis that is judged to be superfluous.
bool RtiFedReader::dropSuspected() {
    using Change = RtiFedRepair::Suspect::Change;
    if (_token.kind != Kind::open && _token.kind != Kind::close)
        return false;
    return nesting.dropSuspected(_token.kind == Kind::open ? Change::surplusOpen : Change::surplusClose, _token.begin);
}
