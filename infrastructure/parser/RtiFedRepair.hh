#pragma once

#include "infrastructure/parser/balance/RtiFedBalance.hh"

#include <memory>
#include <utility>

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
/// is balanced.
///
/// The grammar may notice a mistake much later than where it was made. So a text with errors is read a second time,
/// with the suspects of RtiFedBalance: where one is, the reader repairs without waiting for the grammar.
class RtiFedRepair {
public:
    using Suspect = RtiFedBalance::Suspect;

    explicit RtiFedRepair(const RtiFedText &text) : _text(text) {}
    /// For the second reading.
    RtiFedRepair(const RtiFedText &text, std::shared_ptr<const RtiFedBalance> balance)
        : _text(text), _balance(std::move(balance)), _suspects(&_balance->suspects) {
        for (const Suspect &suspect : *_suspects)
            _netCloses += suspect.change == Suspect::surplusClose ? -1 : 1;
    }

    bool mayInsertClose(std::size_t count = 1) { return remainingCloses() >= static_cast<long>(count); }
    bool mayDropOpen() { return remainingCloses() > 0; }
    bool mayDropClose() { return remainingCloses() < 0; }
    bool mayInsertOpen() { return remainingCloses() < 0; }

    void insertClose(std::size_t count = 1) { _netCloses += static_cast<long>(count); }
    void dropOpen() { ++_netCloses; }
    void dropClose() { --_netCloses; }
    void insertOpen() { --_netCloses; }

    /// Made at the first error, since it reads the whole text.
    const std::shared_ptr<const RtiFedBalance> &balance() {
        if (!_balance)
            _balance = std::make_shared<const RtiFedBalance>(_text);
        return _balance;
    }

    /// Whether this is the second reading.
    bool isJudging() const { return _suspects != nullptr; }
    /// The next suspect, if it is this change at this offset; null otherwise. Each is returned once. They are part of
    /// the count of repairs from the beginning, since the reader will come to them.
    const Suspect *takeSuspect(Suspect::Change change, RtiFedOffset at) {
        if (!_suspects || _nextSuspect == _suspects->size())
            return nullptr;
        const Suspect &next = (*_suspects)[_nextSuspect];
        if (next.change != change || next.at != at)
            return nullptr;
        ++_nextSuspect;
        return &next;
    }

private:
    /// Closing parentheses still missing after the repairs so far; negative if there are too many.
    long remainingCloses() { return balance()->missingCloses - _netCloses; }

    const RtiFedText &_text;
    std::shared_ptr<const RtiFedBalance> _balance;
    const std::vector<Suspect> *_suspects = nullptr;
    std::size_t _nextSuspect = 0;
    long _netCloses = 0; // what the repairs added: ")" inserted and "(" dropped, minus ")" dropped and "(" inserted
};
