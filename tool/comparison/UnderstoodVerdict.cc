#include "tool/comparison/UnderstoodVerdict.hh"

#include "tool/model/DeliveryWords.hh"

#include <algorithm>

namespace {

/// Whether a change is of something that the old model had: not of a word that was no transportation, ordering or
/// space.
bool wasUnderstood(const Comparison::Change &change, const Outline &old) {
    using Kind = Comparison::Change::Kind;
    if (change.kind == Kind::unclear || !change.before)
        return change.kind != Kind::unclear;
    const std::string before = change.value(*change.before);
    const auto isOneOf = [&before](const DeliveryWords &words) {
        return before == words[0].shortForm || before == words[1].shortForm;
    };
    const auto isSpace = [&] {
        return std::any_of(old.spaces.begin(), old.spaces.end(),
                           [&before](const Outline::Space &space) { return space.name == before; });
    };
    return change.kind == Kind::transportation ? isOneOf(kTransportations)
           : change.kind == Kind::ordering     ? isOneOf(kOrderings)
           : change.kind == Kind::space        ? isSpace()
                                               : true;
}

} // namespace

Comparison::Verdict understoodVerdict(const Outline &before, const Outline &after) {
    const Comparison comparison(before, after, false);
    auto verdict = Comparison::Verdict::same;
    for (const Comparison::Change &change : comparison.changes())
        if (wasUnderstood(change, before))
            verdict = std::max(verdict, Comparison::meaning(change.kind));
    return verdict;
}
