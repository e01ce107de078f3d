#include "infrastructure/parser/balance/RtiFedBalanceSearch.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>

namespace {

using Kind = RtiFedLayout::Kind;
using Sign = RtiFedLayout::Sign;

constexpr float kChange = 12;       // the cost of a change
constexpr float kMargin = 14;       // by which a state may be dearer than the cheapest with one change
constexpr std::size_t kStates = 64; // equivalent: a guess at what is enough
constexpr std::size_t kWays = 8; // of a state: enough to see that there are more than three places. equivalent: a guess
constexpr std::size_t kDeepest = kMaxClassNesting + 4; // FED, a section, a member, its sec_level

bool isInsertedClose(RtiFedBalanceSearch::Change change) {
    return change == RtiFedBalanceSearch::Change::insertClose ||
           change == RtiFedBalanceSearch::Change::insertCloseOnOwnLine;
}

} // namespace

RtiFedBalanceSearch::RtiFedBalanceSearch(const RtiFedText &text, const RtiFedLayout &layout)
    : _text(text), _layout(layout) {
    if (!learn({}))
        return;
    search();
    if (_found.ways.empty() || !learn(editsOf(_found.ways.front())))
        return;
    search();
}

/// Counts the habits of the text, read with these changes. Returns whether it is nested no deeper than a correct text.
bool RtiFedBalanceSearch::learn(const std::vector<Edit> &edits) {
    _habits = {};
    RtiFedTrial::expect(_habits);
    const RtiFedTrial::Context context{_text, _habits, true};
    RtiFedTrial trial;
    auto edit = edits.begin();
    for (std::size_t i = 0; i < _layout.signs.size(); ++i) {
        const Sign &sign = _layout.signs[i];
        for (; edit != edits.end() && edit->sign == i && isInsertedClose(edit->change); ++edit)
            trial.insertClose(context, sign, edit->change == Change::insertCloseOnOwnLine);
        const bool isDropped = edit != edits.end() && edit->sign == i && edit->change != Change::insertOpen;
        if (isDropped)
            trial.dropSign(context, sign);
        else if (sign.kind == Kind::open)
            trial.open(context, sign);
        else if (sign.kind == Kind::close)
            trial.close(context, sign);
        else
            trial.end(context, sign); // equivalent: one line more hardly changes a habit
        if (edit != edits.end() && edit->sign == i && !isInsertedClose(edit->change)) {
            if (edit->change == Change::insertOpen)
                trial.insertOpen(context, sign);
            ++edit;
        }
        if (trial.depth() > kDeepest)
            return false;
    }
    _habits.learn();
    return true;
}

void RtiFedBalanceSearch::search() {
    _states.clear(); // equivalent: a search leaves none
    _edits.clear();  // equivalent: only memory
    _found = {};
    _states.push_back({{}, {Way{}}});
    _limit = kChange + kMargin;
    // equivalent: no state is left after the last sign
    for (std::size_t sign = 0; sign < _layout.signs.size() && !_states.empty(); ++sign) {
        insertCloses(sign);
        readSign(sign);
        prune();
    }
}

/// Adds the states in which one or more ")" are inserted before this sign. Where ")" follow each other on a line, it
/// makes no difference which one is the new one, so only the end of a line or another kind of sign is such a place.
void RtiFedBalanceSearch::insertCloses(std::size_t sign) {
    const Sign &before = _layout.signs[sign];
    if (sign == 0 || (before.kind == Kind::close && !before.beginsLine))
        return;
    const RtiFedTrial::Context context{_text, _habits, false};
    // equivalent: a guess; more are never the cheapest
    const std::size_t most = before.kind == Kind::end ? kDeepest : 3;
    if (before.kind == Kind::end) // however many are missing
        _limit += kChange * static_cast<float>(kDeepest);
    std::size_t begin = 0;
    _nextByHash.clear();
    for (std::size_t i = 0; i < _states.size(); ++i)
        _nextByHash.emplace(_states[i].trial.hash(), i);
    // equivalent: likewise, and it ends where no state is new
    for (std::size_t round = 0; round < most && begin < _states.size(); ++round) {
        const std::size_t end = _states.size();
        std::swap(_states, _next);
        for (std::size_t i = begin; i < end; ++i) {
            for (const bool ownLine : {false, true}) {
                if (_next[i].trial.isEmpty() || (ownLine && !before.beginsLine) ||
                    (_next[i].trial.depth() == 1 && before.kind != Kind::end) ||
                    _next[i].cheapest() + kChange / 2 > _limit) // equivalent: only speed: keep() has the same limit
                    continue;
                State state{_next[i].trial, {}};
                const float cost = state.trial.insertClose(context, before, ownLine) + kChange;
                if (_next[i].cheapest() + cost > _limit) // equivalent: likewise only speed
                    continue;
                state.ways = _next[i].ways;
                keep(changed(state, ownLine ? Change::insertCloseOnOwnLine : Change::insertClose, sign, cost));
            }
        }
        std::swap(_states, _next);
        begin = end; // equivalent: only speed: equal states are merged
    }
}

/// Reads a sign in each state, and leaves it out in those where that may be meant.
void RtiFedBalanceSearch::readSign(std::size_t sign) {
    const RtiFedTrial::Context context{_text, _habits, false};
    const Sign &read = _layout.signs[sign];
    _next.clear();
    _nextByHash.clear();
    for (State &state : _states) {
        if (read.kind == Kind::end) {
            if (state.trial.isEmpty()) {
                const float cost = state.trial.end(context, read);
                for (Way &way : state.ways)
                    way.cost += cost;
                merge(_found.ways, state.ways);
            }
            continue;
        }
        if (mayLeaveOut(state, sign))
            leaveOut(state, sign);
        const float cost = read.kind == Kind::open ? state.trial.open(context, read) : state.trial.close(context, read);
        for (Way &way : state.ways)
            way.cost += cost;
        if (read.words > 0 && state.trial.mayInsertOpen(context, read))
            insertOpen(state, sign);
        if (state.trial.depth() <= kDeepest)
            keep(std::move(state));
    }
    std::swap(_states, _next);
}

/// Of ")" that follow each other on a line, only the last may be left out: the others would be the same change. A "("
/// is left out only if the grammar does not allow its clause, and if the text continues.
bool RtiFedBalanceSearch::mayLeaveOut(const State &state, std::size_t sign) const {
    const Sign &read = _layout.signs[sign];
    const Sign &next = _layout.signs[sign + 1];
    if (read.kind == Kind::close)
        return next.kind != Kind::close || next.beginsLine || read.words > 0;
    if (sign == 0 || next.kind == Kind::end) // the text is cut
        return false;
    const bool doubled = _layout.signs[sign - 1].kind == Kind::open && _layout.signs[sign - 1].words == 0;
    return doubled || childOf(state.trial.kind(), _text.at(read.keyword)) == RtiFedClause::unknown;
}

void RtiFedBalanceSearch::leaveOut(const State &state, std::size_t sign) {
    const Sign &read = _layout.signs[sign];
    State without{state.trial, state.ways};
    const float cost = without.trial.dropSign({_text, _habits, false}, read) + kChange;
    keep(changed(without, read.kind == Kind::open ? Change::dropOpen : Change::dropClose, sign, cost));
}

void RtiFedBalanceSearch::insertOpen(const State &read, std::size_t sign) {
    State with{read.trial, read.ways};
    const float cost = with.trial.insertOpen({_text, _habits, false}, _layout.signs[sign]) + kChange;
    keep(changed(with, Change::insertOpen, sign, cost));
}

/// The state after a change.
RtiFedBalanceSearch::State RtiFedBalanceSearch::changed(const State &state, Change change, std::size_t sign,
                                                        float cost) {
    State after{state.trial, {}};
    for (const Way &way : state.ways) {
        if (way.cost + cost > _limit)
            break;
        _edits.push_back({change, static_cast<std::uint32_t>(sign), way.lastEdit});
        after.ways.push_back({way.cost + cost, static_cast<std::int32_t>(_edits.size() - 1)});
    }
    return after;
}

/// Adds a state to the next ones, or its ways to an equal one.
void RtiFedBalanceSearch::keep(State &&state) {
    if (state.ways.empty() || state.cheapest() > _limit)
        return;
    const auto [known, isNew] = _nextByHash.emplace(state.trial.hash(), _next.size());
    if (isNew)
        _next.push_back(std::move(state));
    else
        merge(_next[known->second].ways, state.ways);
}

void RtiFedBalanceSearch::merge(std::vector<Way> &ways, const std::vector<Way> &others) const {
    for (const Way &other : others) {
        const auto same = std::find_if(ways.begin(), ways.end(), [&](const Way &w) { return isSamePlace(w, other); });
        if (same != ways.end()) {
            if (other.cost < same->cost) // equivalent: of two that cost the same, either will do
                *same = other;
        } else {
            ways.push_back(other);
        }
    }
    std::stable_sort(ways.begin(), ways.end(), [](const Way &a, const Way &b) { return a.cost < b.cost; });
    if (ways.size() > kWays) // equivalent: nothing is cut off from as many
        ways.resize(kWays);
}

/// Whether two ways differ at most in how their last change is made.
bool RtiFedBalanceSearch::isSamePlace(const Way &a, const Way &b) const {
    if (a.lastEdit == kNone || b.lastEdit == kNone)
        return a.lastEdit == b.lastEdit;
    const Edit &x = _edits[static_cast<std::size_t>(a.lastEdit)], &y = _edits[static_cast<std::size_t>(b.lastEdit)];
    return x.sign == y.sign && x.before == y.before && isInsertedClose(x.change) == isInsertedClose(y.change);
}

void RtiFedBalanceSearch::prune() {
    if (_states.empty())
        return;
    // equivalent: equal ones may be in any order
    const auto isCheaper = [](const State &a, const State &b) { return a.cheapest() < b.cheapest(); };
    const auto cheapest = std::min_element(_states.begin(), _states.end(), isCheaper);
    _limit = cheapest->cheapest() + kChange + kMargin;
    // equivalent: only speed: changed() has the same limit
    _states.erase(std::remove_if(_states.begin(), _states.end(), [&](const State &s) { return s.cheapest() > _limit; }),
                  _states.end());
    if (_states.size() > kStates) { // equivalent: a guess at what is enough
        // equivalent: likewise
        std::nth_element(_states.begin(), _states.begin() + kStates, _states.end(), isCheaper);
        _states.resize(kStates); // equivalent: likewise
    }
}

std::vector<RtiFedBalanceSearch::Edit> RtiFedBalanceSearch::editsOf(const Way &way) const {
    std::vector<Edit> edits;
    for (std::int32_t i = way.lastEdit; i != kNone; i = edits.back().before)
        edits.push_back(_edits[static_cast<std::size_t>(i)]);
    std::reverse(edits.begin(), edits.end());
    return edits;
}
