#pragma once

#include "infrastructure/parser/RtiFedBalance.hh"

#include <optional>

/// Limits the repairs of parentheses: says whether one more is allowed, and counts those that were made. The reader and
/// RtiFedNesting make them.
///
/// A missing or superfluous parenthesis moves all later clauses to another level; read literally, nearly every one of
/// them would be an error. So the reader repairs: where the grammar does not allow the next token, it continues as if a
/// parenthesis were inserted or dropped there. This class says which repairs are left. If the text as a whole has too
/// few ")", inserting a ")" and dropping a "(" bring it closer to balance; if it has too many, dropping a ")" and
/// inserting a "(" do. Once the repairs have balanced the text, the rest is read literally.
///
/// This is safe because a repair is made only where an error is reported, so a correct text is never changed; and
/// because there are never more repairs than the whole text needs, so one mistake cannot cause an unlimited number of
/// them. It gives up on mistakes that cancel out, such as a missing ")" and later a superfluous one, since such a text
/// is balanced. And the grammar may notice a mistake much later than where it was made; the indentation, which
/// RtiFedBalance compares with the parentheses, then shows the likely place in the message.
class RtiFedRepair {
public:
    explicit RtiFedRepair(const RtiFedText &text) : _text(text) {}

    bool mayInsertClose(std::size_t count = 1) { return remainingCloses() >= static_cast<long>(count); }
    bool mayDropOpen() { return remainingCloses() > 0; }
    bool mayDropClose() { return remainingCloses() < 0; }
    bool mayInsertOpen() { return remainingCloses() < 0; }

    void insertClose(std::size_t count = 1) { _netCloses += static_cast<long>(count); }
    void dropOpen() { ++_netCloses; }
    void dropClose() { --_netCloses; }
    void insertOpen() { --_netCloses; }

    bool hasSuspect() { return _nextSuspect < balance().suspects.size(); }
    /// Returns the next place where the indentation contradicts the parentheses, if it is before `end` and can be
    /// trusted. Each is returned once. Where ")" are missing, each suspect explains one of them. Where there are too
    /// many, the indentation is trusted only if it shows exactly that many: with more or fewer places it does not
    /// follow the nesting.
    std::optional<RtiFedBalance::Suspect> takeSuspect(RtiFedOffset end) {
        const long total = balance().missingCloses;
        const bool trusted =
            total > 0 ? remainingCloses() > 0 : balance().suspects.size() == static_cast<std::size_t>(-total);
        if (!trusted || !hasSuspect() || balance().suspects[_nextSuspect].at >= end)
            return std::nullopt;
        return balance().suspects[_nextSuspect++];
    }

private:
    /// Made at the first error, since it reads the whole text.
    const RtiFedBalance &balance() { return _balance ? *_balance : _balance.emplace(_text); }
    /// Closing parentheses still missing after the repairs so far; negative if there are too many.
    long remainingCloses() { return balance().missingCloses - _netCloses; }

    const RtiFedText &_text;
    std::optional<RtiFedBalance> _balance;
    std::size_t _nextSuspect = 0;
    long _netCloses = 0; // what the repairs added: ")" inserted and "(" dropped, minus ")" dropped and "(" inserted
};
