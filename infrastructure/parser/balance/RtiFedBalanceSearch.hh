#pragma once

#include "infrastructure/parser/balance/RtiFedLayout.hh"
#include "infrastructure/parser/balance/RtiFedLayoutHabits.hh"
#include "infrastructure/parser/balance/RtiFedTrial.hh"

#include <array>
#include <optional>
#include <unordered_map>
#include <vector>

/// Finds the fewest and most plausible changes of parentheses after which a text balances.
///
/// A text with a parenthesis too many or too few can be read in many ways, each with another parenthesis added or left
/// out. This reads the text in all of them at once: a state is the clauses open at one point if the text is read in one
/// way, and the cost of that way, which grows by each change, by each violation of the grammar, and by each deviation
/// from the habits of the text (RtiFedLayoutHabits). Ways that lead to the same state have the same future, so only the
/// cheapest of them are kept: a mistake rarely adds more than one state for each open clause, and the whole takes time
/// proportional to the text. In the end, the cheapest way shows where the mistake is; if other ways cost nearly as
/// much, the text does not show it.
///
/// It gives up on texts nested deeper than any correct one. States that cost much more than the cheapest are dropped,
/// so that of many mistakes close to each other some may be taken for others.
class RtiFedBalanceSearch {
public:
    enum class Change : unsigned char { insertClose, insertCloseOnOwnLine, dropClose, insertOpen, dropOpen };

    struct Edit {
        Change change{};
        std::uint32_t sign = 0; ///< It, or before it, is the change. equivalent: set before it is read
        std::int32_t before = kNone;
    };

    /// One way to read the text.
    struct Way {
        float cost = 0;
        std::int32_t lastEdit = kNone;
    };

    RtiFedBalanceSearch(const RtiFedText &text, const RtiFedLayout &layout);

    /// Some ways to read the whole text, the cheapest first; none if the search gave up.
    const std::vector<Way> &ways() const { return _found.ways; }
    /// The changes of a way, in the order of the text.
    std::vector<Edit> editsOf(const Way &way) const;

private:
    static constexpr std::int32_t kNone = -1; // equivalent: any negative number

    struct State {
        RtiFedTrial trial;
        std::vector<Way> ways; // the cheapest first
        float cheapest() const { return ways.front().cost; }
    };

    bool learn(const std::vector<Edit> &edits);
    void search();
    void insertCloses(std::size_t sign);
    void readSign(std::size_t sign);
    void leaveOut(const State &state, std::size_t sign);
    void insertOpen(const State &read, std::size_t sign);
    bool mayLeaveOut(const State &state, std::size_t sign) const;
    State changed(const State &state, Change change, std::size_t sign, float cost);
    void keep(State &&state);
    void merge(std::vector<Way> &ways, const std::vector<Way> &others) const;
    bool isSamePlace(const Way &a, const Way &b) const;
    void prune();

    const RtiFedText &_text;
    const RtiFedLayout &_layout;
    RtiFedLayoutHabits _habits;
    std::vector<State> _states, _next;
    std::unordered_map<std::uint64_t, std::size_t> _nextByHash;
    std::vector<Edit> _edits;
    State _found;
    float _limit = 0; // states that cost more are dropped. equivalent: set before it is read
};
