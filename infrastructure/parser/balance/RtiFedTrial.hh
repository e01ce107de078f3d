#pragma once

#include "infrastructure/parser/balance/RtiFedLayout.hh"
#include "infrastructure/parser/balance/RtiFedLayoutHabits.hh"

#include <cstdint>
#include <vector>

/// The clauses that are open at one point of a text, if it is read with some parentheses added or left out.
///
/// Each step over a parenthesis adds what was observed to a cost, or counts it as a habit of the text. A trial holds
/// only what later steps depend on, so two trials with the same hash have the same future.
class RtiFedTrial {
public:
    /// Where the steps read, and what becomes of what they observe.
    struct Context {
        const RtiFedText &text;
        RtiFedLayoutHabits &habits;
        bool learning;
    };

    static constexpr float kViolation = 14; ///< The cost of what the grammar forbids.

    bool isEmpty() const { return _clauses.empty(); }
    std::size_t depth() const { return _clauses.size(); }
    RtiFedClause kind() const { return _clauses.empty() ? RtiFedClause::unknown : _clauses.back().kind; }
    std::uint64_t hash() const;

    /// What every text is expected to be like: a section has one outermost class, members come before subclasses
    /// and are closed on their line.
    static void expect(RtiFedLayoutHabits &habits);

    // Each step returns its cost.
    float open(const Context &context, const RtiFedLayout::Sign &sign);
    float close(const Context &context, const RtiFedLayout::Sign &sign);
    float end(const Context &context, const RtiFedLayout::Sign &sign);
    /// A ")" that is not in the text, before a sign: at the end of the line before it, or on a line of its own.
    float insertClose(const Context &context, const RtiFedLayout::Sign &before, bool onOwnLine);
    /// A "(" that is not in the text, before the first word after `sign` that may be a keyword.
    bool mayInsertOpen(const Context &context, const RtiFedLayout::Sign &sign) const;
    float insertOpen(const Context &context, const RtiFedLayout::Sign &sign);
    /// The words after a parenthesis that is left out.
    float dropSign(const Context &context, const RtiFedLayout::Sign &sign);

private:
    static constexpr int kNoColumn = -10000;

    /// Clauses of one category are laid out alike.
    enum Category : unsigned char { fed, section, space, someClass, member, leaf, other, close_ };

    struct Clause {
        std::uint64_t hash = 0; ///< Of this one and those around it.
        RtiFedClause kind = RtiFedClause::unknown;
        Category last = close_; ///< Of the last clause in it; close_ if there is none.
        bool onThisLine = true;
        std::uint8_t words = 0;
        int column = 0; ///< Of the line that it is on.
        int lastMember = kNoColumn, lastClass = kNoColumn;
    };

    static Category categoryOf(RtiFedClause kind);
    static RtiFedClause guess(const RtiFedText &text, RtiFedClause parent, RtiFedSpan keyword, bool &allowed);

    float observe(const Context &context, RtiFedLayoutHabits::Habit habit, int first, int second, int value) const;
    float beginLine(const Context &context, Category category, int column);
    float push(const Context &context, RtiFedSpan keyword, unsigned words, bool beginsLine);
    float observeChild(const Context &context, Category category, bool beginsLine);
    float pop(const Context &context, bool beginsLine, int column);
    float takeWords(unsigned words);
    float requireWords() const;
    void rehash(std::size_t from);

    std::vector<Clause> _clauses;        // the outermost first
    Category _line = close_;             // of the first parenthesis on this line
    int _column = 0;                     // of this line
    int _net = 0;                        // the levels that it opened so far
    bool _begun = false, _ended = false; // the first line, the outermost clause
};
