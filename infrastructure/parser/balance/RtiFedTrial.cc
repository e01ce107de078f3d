#include "infrastructure/parser/balance/RtiFedTrial.hh"

#include <algorithm>

namespace {

using Habit = RtiFedLayoutHabits;
using Sign = RtiFedLayout::Sign;

constexpr int kCategories = 8;
constexpr int kMostNet = 6;
constexpr unsigned kManyWords = 100; // equivalent: any number that no clause needs

std::uint64_t mix(std::uint64_t hash, std::uint64_t value) {
    hash = (hash ^ value) * 0x9E3779B97F4A7C15U; // equivalent: any large odd number
    return hash ^ (hash >> 29);
}

std::uint64_t bitsOf(int value) {
    return static_cast<std::uint32_t>(value);
}

} // namespace

RtiFedTrial::Category RtiFedTrial::categoryOf(RtiFedClause kind) {
    switch (kind) {
    case RtiFedClause::fed:
        return fed;
    case RtiFedClause::spaces:
    case RtiFedClause::objects:
    case RtiFedClause::interactions:
        return section;
    case RtiFedClause::space:
        return space;
    case RtiFedClause::objectClass:
    case RtiFedClause::interactionClass:
        return someClass;
    case RtiFedClause::attribute:
    case RtiFedClause::parameter:
    case RtiFedClause::dimension:
        return member;
    case RtiFedClause::unknown:
        return other;
    default:
        return leaf;
    }
}

/// The kind of a clause in `parent`. If it is not allowed there, the kind that has this keyword elsewhere.
RtiFedClause RtiFedTrial::guess(const RtiFedText &text, RtiFedClause parent, RtiFedSpan keyword, bool &allowed) {
    const std::string_view word = text.at(keyword);
    const RtiFedClause child = childOf(parent, word);
    allowed = child != RtiFedClause::unknown;
    if (allowed || word.empty())
        return child;
    auto kind = RtiFedClause::fed;
    while (kind != RtiFedClause::unknown && !isKeywordOf(kind, word))
        kind = static_cast<RtiFedClause>(static_cast<unsigned char>(kind) + 1);
    return kind;
}

// equivalent in this function: guesses, which count little once a text has habits of its own
void RtiFedTrial::expect(RtiFedLayoutHabits &habits) {
    const auto follows = [&](Category parent, Category last, Category next, float times) {
        habits.expect(Habit::sequence, parent * kCategories + last, next, times);
    };
    follows(section, someClass, close_, 3);
    follows(section, someClass, someClass, 0.1F);
    for (const Category next : {member, someClass, close_}) {
        follows(someClass, close_, next, 1); // the first one in a class
        follows(someClass, member, next, 1);
    }
    follows(someClass, someClass, someClass, 1);
    follows(someClass, someClass, close_, 1);
    for (const Category category : {member, leaf}) // they are closed on their line
        habits.expect(Habit::placeOfClose, category * kCategories, 0, 5);
}

std::uint64_t RtiFedTrial::hash() const {
    std::uint64_t hash = _clauses.empty() ? 1 : _clauses.back().hash; // equivalent: any number
    hash = mix(hash, bitsOf(_column) << 32 | bitsOf(_net));           // equivalent: any bits that differ
    // equivalent: any bits that differ
    return mix(hash, static_cast<std::uint64_t>(_line) << 2 | (_begun ? 2U : 0U) | (_ended ? 1U : 0U));
}

/// Updates the hashes of the clauses from this index on.
void RtiFedTrial::rehash(std::size_t from) {
    for (std::size_t i = from; i < _clauses.size(); ++i) {
        Clause &clause = _clauses[i];
        std::uint64_t hash = i == 0 ? 7 : _clauses[i - 1].hash; // equivalent: any number
        // equivalent: any bits that differ
        hash = mix(hash, static_cast<std::uint64_t>(clause.kind) << 24 | static_cast<std::uint64_t>(clause.last) << 16 |
                             (clause.onThisLine ? 256U : 0U) | clause.words);
        hash = mix(hash, bitsOf(clause.column) << 32 | bitsOf(clause.lastMember)); // equivalent: likewise
        clause.hash = mix(hash, bitsOf(clause.lastClass));
    }
}

float RtiFedTrial::observe(const Context &context, Habit::Habit habit, int first, int second, int value) const {
    const int pair = first * kCategories + second;
    if (!context.learning)
        return context.habits.cost(habit, pair, value);
    context.habits.count(habit, pair, value);
    return 0;
}

/// Ends the line before, and begins one whose first parenthesis is of this category.
float RtiFedTrial::beginLine(const Context &context, Category category, int column) {
    float cost = 0;
    if (_begun)
        cost = observe(context, Habit::netOfLine, _line, category, std::clamp(_net, -kMostNet, kMostNet));
    _begun = true;
    _line = category;
    _column = column;
    _net = 0;
    std::size_t first = _clauses.size();
    for (; first > 0 && _clauses[first - 1].onThisLine; --first)
        _clauses[first - 1].onThisLine = false;
    rehash(first);
    return cost;
}

float RtiFedTrial::open(const Context &context, const Sign &sign) {
    bool allowed = false;
    const Category category = categoryOf(guess(context.text, kind(), sign.keyword, allowed));
    float cost = 0;
    if (sign.beginsLine)
        cost = beginLine(context, category, sign.column) +
               observe(context, Habit::traceBefore, 0, 0, static_cast<int>(sign.trace));
    return cost + push(context, sign.keyword, sign.words, sign.beginsLine);
}

/// Opens a clause; `words` counts its keyword too.
float RtiFedTrial::push(const Context &context, RtiFedSpan keyword, unsigned words, bool beginsLine) {
    bool allowed = false;
    const RtiFedClause child = guess(context.text, kind(), keyword, allowed);
    float cost = allowed || (isEmpty() && !_ended) ? 0 : kViolation;
    if (!isEmpty())
        cost += requireWords() + observeChild(context, categoryOf(child), beginsLine);
    Clause clause;
    clause.kind = child;
    clause.column = _column;
    _clauses.push_back(clause);
    ++_net;
    return cost + takeWords(words > 0 ? words - 1 : 0);
}

/// A clause of this category begins in the innermost one.
float RtiFedTrial::observeChild(const Context &context, Category category, bool beginsLine) {
    Clause &parent = _clauses.back();
    float cost = observe(context, Habit::sequence, categoryOf(parent.kind), parent.last, category);
    parent.last = category;
    if (beginsLine) {
        const bool isClass = category == someClass;
        int &before = isClass ? parent.lastClass : parent.lastMember;
        const int otherKind = isClass ? parent.lastMember : parent.lastClass;
        if (before != kNoColumn)
            // equivalent: any number for habits without a second context
            cost += observe(context, Habit::indentOfSibling, category, 0, _column - before);
        else
            cost += observe(context, Habit::indentOfFirst, categoryOf(parent.kind), category, _column - parent.column);
        if (before == kNoColumn && otherKind != kNoColumn)
            cost += observe(context, Habit::indentAfter, category, 0, _column - otherKind);
        before = _column;
    }
    rehash(_clauses.size() - 1);
    return cost;
}

float RtiFedTrial::close(const Context &context, const Sign &sign) {
    float cost = 0;
    if (sign.beginsLine)
        cost = beginLine(context, close_, sign.column) +
               observe(context, Habit::traceBefore, 0, 0, static_cast<int>(sign.trace));
    cost += pop(context, sign.beginsLine, sign.column);
    return cost + (sign.words > 0 ? kViolation : 0);
}

float RtiFedTrial::pop(const Context &context, bool beginsLine, int column) {
    --_net;
    if (isEmpty())
        return 2 * kViolation; // equivalent: a guess
    const Clause &top = _clauses.back();
    const Category category = categoryOf(top.kind);
    const int place = beginsLine ? 2 : top.onThisLine ? 0 : 1;
    float cost = requireWords() + observe(context, Habit::placeOfClose, category, 0, place) +
                 observe(context, Habit::sequence, category, top.last, close_);
    if (beginsLine && column != kNoColumn)
        // equivalent: any number for habits without a second context
        cost += observe(context, Habit::indentOfClose, category, 0, column - top.column);
    _clauses.pop_back();
    _ended = isEmpty();
    return cost;
}

float RtiFedTrial::end(const Context &context, const Sign &sign) {
    (void)sign;
    return beginLine(context, other, 0); // equivalent: no line follows
}

float RtiFedTrial::insertClose(const Context &context, const Sign &before, bool onOwnLine) {
    constexpr float kLostLine = 2; // a whole line is lost less often than a parenthesis
    if (!onOwnLine)
        return pop(context, false, 0); // equivalent: the column counts only on a line of its own
    const bool trace = before.trace != RtiFedLayout::Trace::none;
    const bool indented =
        before.trace == RtiFedLayout::Trace::blanks || before.trace == RtiFedLayout::Trace::commentOfClose;
    // What was a trace is a line like others now.
    const float explained = context.habits.cost(Habit::traceBefore, 0, static_cast<int>(before.trace)) -
                            context.habits.cost(Habit::traceBefore, 0, 0);
    const float cost = beginLine(context, close_, before.traceColumn);
    return cost + (trace ? -explained : kLostLine) + pop(context, true, indented ? before.traceColumn : kNoColumn);
}

bool RtiFedTrial::mayInsertOpen(const Context &context, const Sign &sign) const {
    if (isEmpty())
        return false;
    if (sign.kind == RtiFedLayout::Kind::close)
        return sign.keyword.length > 0 && childOf(kind(), context.text.at(sign.keyword)) != RtiFedClause::unknown;
    return sign.keywordInside.length > 0 &&
           childOf(kind(), context.text.at(sign.keywordInside)) != RtiFedClause::unknown &&
           sign.wordsBeforeInside > formOf(kind()).numArguments;
}

/// To be called after open() or close() of the sign, whose costs for words too many it takes back.
float RtiFedTrial::insertOpen(const Context &context, const Sign &sign) {
    if (sign.kind == RtiFedLayout::Kind::close)
        return push(context, sign.keyword, sign.words, false) - kViolation;
    Clause &top = _clauses.back();
    const RtiFedClauseForm &form = formOf(top.kind);
    const bool tooMany = sign.words - 1 > form.numArguments + (form.maySpace ? 1 : 0);
    top.words = static_cast<std::uint8_t>(std::min(sign.wordsBeforeInside - 1, kManyWords));
    rehash(_clauses.size() - 1);
    return push(context, sign.keywordInside, sign.words - sign.wordsBeforeInside, false) - (tooMany ? kViolation : 0);
}

float RtiFedTrial::dropSign(const Context &context, const Sign &sign) {
    (void)context;
    return takeWords(sign.words);
}

/// Adds words to the innermost clause.
float RtiFedTrial::takeWords(unsigned words) {
    if (words == 0 || isEmpty()) {
        if (!isEmpty())
            rehash(_clauses.size() - 1);
        return words > 0 ? kViolation : 0;
    }
    Clause &top = _clauses.back();
    const RtiFedClauseForm &form = formOf(top.kind);
    const unsigned before = top.words, most = static_cast<unsigned>(form.numArguments) + (form.maySpace ? 1 : 0);
    top.words = static_cast<std::uint8_t>(std::min(before + words, kManyWords));
    rehash(_clauses.size() - 1);
    const bool late = top.last != close_; // after a clause in it
    return top.kind != RtiFedClause::unknown && (top.words > most || late) && (before <= most || late) ? kViolation : 0;
}

/// The cost if the innermost clause lacks a word.
float RtiFedTrial::requireWords() const {
    const Clause &top = _clauses.back();
    return top.last == close_ && top.words < formOf(top.kind).numArguments ? kViolation : 0;
}
