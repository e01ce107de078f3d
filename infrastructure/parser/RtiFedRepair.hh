#pragma once

#include "infrastructure/parser/RtiFedBalance.hh"

#include <optional>

/// Decides which repairs of its parentheses a damaged text allows.
///
/// A parenthesis too few or too many moves all later clauses to another level, and read literally nearly each of them
/// would be an error. So the reader repairs: where the grammar does not allow the next token, it goes on as if one
/// parenthesis were inserted or dropped. This class says which of the four repairs are left. If the text as a whole has
/// more "(" than ")", inserting a ")" and dropping a "(" bring it closer to balance; if it has more ")", dropping a ")"
/// and inserting a "(" do. Once the text is balanced nothing more is repaired.
///
/// This is safe because a repair is made only after an error, which is reported, so a correct text is read literally;
/// and because the repairs together are never more than the whole text calls for, so the FED clause still ends where
/// the text does. It gives up on mistakes that cancel out, such as a missing ")" and later a superfluous one: the text
/// is balanced then. The grammar may also notice a mistake later than where it was made; the indentation, which
/// RtiFedBalance compares with the parentheses, then shows the likely place in the message.
class RtiFedRepair {
public:
    explicit RtiFedRepair(const RtiFedText &text) : _text(text) {}

    bool mayInsertClose(std::size_t count = 1) { return missingCloses() >= static_cast<long>(count); }
    bool mayDropOpen() { return missingCloses() > 0; }
    bool mayDropClose() { return missingCloses() < 0; }
    bool mayInsertOpen() { return missingCloses() < 0; }

    void insertClose(std::size_t count = 1) { _netCloses += static_cast<long>(count); }
    void dropOpen() { ++_netCloses; }
    void dropClose() { --_netCloses; }
    void insertOpen() { --_netCloses; }

    bool hasSuspect() { return _nextSuspect < balance().suspects.size(); }
    /// Returns the next place where the indentation contradicts the parentheses, if it is before `end` and can be
    /// trusted. Each is returned once.
    std::optional<RtiFedBalance::Suspect> takeSuspect(RtiFedOffset end);

private:
    /// Made at the first error, since it reads the whole text.
    const RtiFedBalance &balance() { return _balance ? *_balance : _balance.emplace(_text); }
    /// Closing parentheses still missing after the repairs so far; negative if there are too many.
    long missingCloses() { return balance().missingCloses - _netCloses; }

    const RtiFedText &_text;
    std::optional<RtiFedBalance> _balance;
    std::size_t _nextSuspect = 0;
    long _netCloses = 0; // what the repairs added: ")" inserted and "(" dropped, minus ")" dropped and "(" inserted
};
