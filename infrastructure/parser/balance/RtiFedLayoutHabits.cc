#include "infrastructure/parser/balance/RtiFedLayoutHabits.hh"

#include <algorithm>
#include <cmath>

namespace {

constexpr float kHighestCost = 9; // a single unusual thing may have any reason. equivalent: a guess

constexpr float kUnknown = 0.3F; // what is expected of a value of which nothing is known

/// The weight of what was seen `count` times, if one of them may be the mistake.
float trusted(std::uint32_t count) {
    return count == 0 ? 0 : static_cast<float>(count - 1);
}

/// What is expected of an indentation before anything is counted, as weights that add up to about 1.
float expected(RtiFedLayoutHabits::Habit habit, int difference) {
    const int distance = std::abs(difference);
    if (habit == RtiFedLayoutHabits::indentOfFirst)
        return difference >= 1 && difference <= 8 ? 0.1F : difference == 0 ? 0.02F : 0.003F; // equivalent: a guess
    return distance == 0 ? 0.7F : distance <= 3 ? 0.03F : 0.002F;
}

} // namespace

RtiFedLayoutHabits::RtiFedLayoutHabits()
    : _counts(kNumHabits * kContexts * kValues), _expected(_counts.size(), kUnknown), _costs(_counts.size()) {}

std::size_t RtiFedLayoutHabits::index(Habit habit, int context, int value) {
    const int inRange = std::clamp(value, -kMiddle, kMiddle) + kMiddle;
    const std::size_t row = std::size_t{habit} * kContexts + static_cast<std::size_t>(context);
    return row * kValues + static_cast<std::size_t>(inRange);
}

void RtiFedLayoutHabits::expect(Habit habit, int context, int value, float times) {
    _expected[index(habit, context, value)] = times;
}

void RtiFedLayoutHabits::count(Habit habit, int context, int value) {
    ++_counts[index(habit, context, value)];
}

void RtiFedLayoutHabits::learn() {
    for (const Habit habit : {indentOfSibling, indentOfFirst, indentAfter, indentOfClose})
        learnIndents(habit);
    for (const Habit habit : {placeOfClose, sequence, netOfLine, traceBefore})
        learnFew(habit);
}

/// An indentation near a usual one is more likely than one far from it. A context that is seen too rarely takes after
/// the others of its habit.
void RtiFedLayoutHabits::learnIndents(Habit habit) {
    constexpr float kExpectedWeight = 10, kOthersWeight = 6, kNeighbour = 0.2F;
    std::array<float, kValues> others{};
    const auto place = [](int v) { return static_cast<std::size_t>(v) + static_cast<std::size_t>(kMiddle); };
    float total = kExpectedWeight;
    for (int v = -kMiddle; v <= kMiddle; ++v) {
        float seen = 0;
        for (int context = 0; context < kContexts; ++context)
            seen += trusted(_counts[index(habit, context, v)]);
        others[place(v)] = kExpectedWeight * expected(habit, v) + seen;
        total += seen;
    }
    for (int context = 0; context < kContexts; ++context) {
        const auto seen = [&](int v) {
            return v < -kMiddle || v > kMiddle ? 0 : trusted(_counts[index(habit, context, v)]);
        };
        for (int v = -kMiddle; v <= kMiddle; ++v)
            _costs[index(habit, context, v)] =
                seen(v) + kNeighbour * (seen(v - 1) + seen(v + 1)) + kOthersWeight * others[place(v)] / total;
        weightsToCosts(habit, context);
    }
}

/// Habits with few values that have no order.
void RtiFedLayoutHabits::learnFew(Habit habit) {
    for (int context = 0; context < kContexts; ++context) {
        for (int v = -kMiddle; v <= kMiddle; ++v)
            _costs[index(habit, context, v)] =
                _expected[index(habit, context, v)] + trusted(_counts[index(habit, context, v)]);
        weightsToCosts(habit, context);
    }
}

/// What is most usual in a context costs nothing. So a way to read the text in which there is more to observe is not
/// dearer for that.
void RtiFedLayoutHabits::weightsToCosts(Habit habit, int context) {
    float *const first = &_costs[index(habit, context, -kMiddle)];
    const float highest = *std::max_element(first, first + kValues);
    std::transform(first, first + kValues, first,
                   [highest](float weight) { return std::min(kHighestCost, std::log(highest / weight)); });
}
