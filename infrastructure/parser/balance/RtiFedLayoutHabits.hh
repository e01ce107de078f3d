#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// How the clauses of one text are usually laid out, and how unusual something is in it.
///
/// People lay out a text in one way, but each in another. So nothing is known in advance but rough expectations; the
/// rest is counted in the text itself, as it is: one wrong parenthesis changes few of its hundreds of lines. What is
/// counted is therefore kept local: how the indentation of a clause differs from that of the clause before it, by how
/// many levels a line changes the nesting, and so on. A cost is the logarithm of how much rarer a thing is than the
/// most usual one, so costs add up. What occurs once costs as much as what does not occur: it may be the mistake
/// itself.
class RtiFedLayoutHabits {
public:
    /// What is counted. The cost of a value is its frequency among the values with the same context.
    enum Habit : unsigned char {
        indentOfSibling, ///< Its indentation less that of the clause of its kind before it.
        indentOfFirst,   ///< Less that of the enclosing clause, of the first of its kind.
        indentAfter,     ///< Less that of the clause of another kind before it, of the first of its kind.
        indentOfClose,   ///< Of a ")" that begins its line, less that of the clause.
        placeOfClose,    ///< Whether a ")" is on the line of its "(", at the end of another line, or begins a line.
        sequence,        ///< The kind of the next clause in a clause, or its ")", after the kind of the one before.
        netOfLine,       ///< By how many levels a line changes the nesting.
        traceBefore      ///< RtiFedLayout::Trace, of the lines before a line.
    };
    static constexpr std::size_t kNumHabits = 8;
    static constexpr int kContexts = 64;

    RtiFedLayoutHabits();

    /// Sets what is expected of one of the habits that are no indentation, before anything is counted: as if `value`
    /// had been counted `times` times.
    void expect(Habit habit, int context, int value, float times);
    void count(Habit habit, int context, int value);
    /// To be called after the last count().
    void learn();
    float cost(Habit habit, int context, int value) const { return _costs[index(habit, context, value)]; }

private:
    static constexpr int kValues = 49; // an indentation differs by -24 to 24; those beyond count as these
    static constexpr int kMiddle = kValues / 2;
    static std::size_t index(Habit habit, int context, int value);
    void learnIndents(Habit habit);
    void learnFew(Habit habit);
    void weightsToCosts(Habit habit, int context);

    std::vector<std::uint32_t> _counts;
    std::vector<float> _expected;
    std::vector<float> _costs;
};
