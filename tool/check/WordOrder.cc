#include "tool/check/WordOrder.hh"

#include <algorithm>

namespace {

using K = WordKind;

/// The words in the right order, if each kind is there once, the space perhaps not. Returns whether they are.
bool orderOf(const WordKinds &kinds, std::size_t count, std::array<std::size_t, 4> &order) {
    constexpr K kRight[] = {K::other, K::transportation, K::ordering, K::space};
    for (std::size_t i = 0; i < count; ++i) {
        if (std::count(kinds.begin(), kinds.end(), kRight[i]) != 1)
            return false;
        order[i] = static_cast<std::size_t>(std::find(kinds.begin(), kinds.end(), kRight[i]) - kinds.begin());
    }
    return count >= 3;
}

} // namespace

WordMistake mistakeIn(WordKinds kinds) {
    using What = WordMistake::What;
    if (kinds[0] == K::space)
        kinds[0] = K::other; // a name
    const auto count = static_cast<std::size_t>(std::find(kinds.begin(), kinds.end(), K::absent) - kinds.begin());
    const auto is = [&kinds](std::size_t i, K kind) { return kinds[i] == kind; };
    if (is(0, K::transportation) && is(1, K::ordering) && (count == 2 || (count == 3 && is(2, K::space))))
        return {What::lacksName, 0, {}};
    WordMistake mistake{What::wrongOrder, 0, {}};
    if (orderOf(kinds, count, mistake.order)) {
        while (mistake.order[mistake.at] == mistake.at)
            ++mistake.at;
        return mistake;
    }
    if (count == 4 && is(3, K::ordering) && !is(1, K::transportation) && is(2, K::transportation))
        return {What::tooMany, 1, {}};
    if (count == 4 && is(3, K::ordering) && is(1, K::transportation))
        return {What::tooMany, 2, {}};
    if (count == 2 && is(1, K::space))
        return {What::lacksBoth, 1, {}};
    if (count < 4 && is(1, K::ordering) && !is(2, K::transportation))
        return {What::lacksTransportation, 1, {}};
    if (count == 3 && is(1, K::transportation) && is(2, K::space))
        return {What::lacksOrdering, 2, {}};
    return {What::unknown, 0, {}};
}
