#include "infrastructure/parser/balance/RtiFedBalance.hh"

#include "infrastructure/parser/balance/RtiFedBalanceSearch.hh"

#include <algorithm>
#include <cmath>

namespace {

using Suspect = RtiFedBalance::Suspect;
using Search = RtiFedBalanceSearch;
using Change = Search::Change;

/// Parentheses of the longest text that is searched, some 100,000 lines. A search takes a few microseconds for each.
constexpr std::size_t kMostSigns = 1 << 18; // equivalent: a guess at what may take a second

/// The ways to correct a text are weighed by their costs. The habits of a text depend on each other, so that costs are
/// exaggerated.
constexpr float kTrust = 0.5F;
/// The share of the weight that the places which are named must have together.
constexpr float kConfident = 0.85F;

bool isInsertedClose(Change change) {
    return change == Change::insertClose || change == Change::insertCloseOnOwnLine;
}

/// Turns ways to correct a text into suspects.
class Judge {
public:
    Judge(const RtiFedLayout &layout, const Search &search) : _layout(layout) {
        for (const Search::Way &way : search.ways())
            _ways.push_back({std::exp((search.ways().front().cost - way.cost) * kTrust), search.editsOf(way)});
    }

    void judge(RtiFedBalance &balance) const {
        if (_ways.empty())
            return;
        const std::vector<Search::Edit> &edits = _ways.front().edits;
        balance.numMistakes = edits.size();
        for (std::size_t i = 0; i < edits.size(); ++i) {
            const Search::Edit &edit = edits[i];
            if (isShownByGrammar(edit))
                continue;
            Suspect suspect{};
            suspect.change = isInsertedClose(edit.change)       ? Suspect::missingClose
                             : edit.change == Change::dropClose ? Suspect::surplusClose
                                                                : Suspect::surplusOpen;
            suspect.at = isInsertedClose(edit.change) ? signOf(edit).after : signOf(edit).at;
            if (!addPlaces(i, suspect))
                balance.isUnclear = true;
            else if (!isAtEnd(edit, suspect))
                balance.suspects.push_back(suspect);
        }
    }

private:
    const RtiFedLayout::Sign &signOf(const Search::Edit &edit) const { return _layout.signs[edit.sign]; }

    RtiFedOffset lineOf(const Search::Edit &edit) const {
        const RtiFedLayout::Sign &sign = signOf(edit);
        if (!isInsertedClose(edit.change))
            return sign.line;
        return isTraced(edit) ? sign.traceLine : sign.lineBefore;
    }

    RtiFedOffset placeOf(const Search::Edit &edit) const {
        const RtiFedLayout::Sign &sign = signOf(edit);
        if (!isInsertedClose(edit.change))
            return sign.at;
        return isTraced(edit) ? sign.traceAt : sign.after - 1;
    }

    /// The reader finds these by itself, at their place.
    bool isShownByGrammar(const Search::Edit &edit) const {
        return edit.change == Change::insertOpen || (edit.change == Change::dropClose && signOf(edit).words > 0);
    }

    /// Whether there is nothing to judge: a ")" is missing at the end of the text, and no line shows that it was there.
    bool isAtEnd(const Search::Edit &edit, const Suspect &suspect) const {
        return signOf(edit).kind == RtiFedLayout::Kind::end && suspect.numPlaces == 1 && !isTraced(edit);
    }

    bool isTraced(const Search::Edit &edit) const {
        return edit.change == Change::insertCloseOnOwnLine && signOf(edit).trace != RtiFedLayout::Trace::none;
    }

    /// Adds the places of one of the changes of the best way, as many as are needed to be confident. Returns whether
    /// three are enough.
    bool addPlaces(std::size_t index, Suspect &suspect) const {
        struct Candidate {
            RtiFedOffset line, place;
            float weight;
        };
        const std::vector<Search::Edit> &best = _ways.front().edits;
        std::vector<Candidate> candidates;
        float total = 0;
        for (const auto &[weight, edits] : _ways) {
            total += weight;
            if (edits.size() != best.size() ||
                isInsertedClose(edits[index].change) != isInsertedClose(best[index].change))
                continue; // it explains the text otherwise, and has no place for this change
            const RtiFedOffset line = lineOf(edits[index]);
            const auto same = std::find_if(candidates.begin(), candidates.end(),
                                           [line](const Candidate &c) { return c.line == line; });
            if (same == candidates.end())
                candidates.push_back({line, placeOf(edits[index]), weight});
            else
                same->weight += weight;
        }
        std::vector<RtiFedOffset> places;
        float covered = 0;
        for (const Candidate &candidate : candidates) {
            if (places.size() == Suspect::kMostPlaces || covered >= kConfident * total)
                break;
            places.push_back(candidate.place);
            covered += candidate.weight;
        }
        std::sort(places.begin(), places.end());
        std::copy(places.begin(), places.end(), suspect.places);
        suspect.numPlaces = places.size();
        return covered >= kConfident * total; // equivalent: sums of probabilities are never just that
    }

    struct Weighed {
        float weight;
        std::vector<Search::Edit> edits;
    };

    const RtiFedLayout &_layout;
    std::vector<Weighed> _ways; // the best first
};

} // namespace

RtiFedBalance::RtiFedBalance(const RtiFedText &text) {
    const RtiFedLayout layout(text, kMostSigns);
    missingCloses = layout.missingCloses;
    if (missingCloses == 0 || !layout.complete)
        return;
    const bool isCut = layout.signs.size() < 2 || layout.signs.end()[-2].kind == RtiFedLayout::Kind::open;
    if (isCut) // what is missing is missing at the end
        return;
    const Search search(text, layout);
    Judge(layout, search).judge(*this);
}
