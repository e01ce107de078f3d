// The words after the names of attributes and interaction classes: what is wrong with those that are unknown.

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/Checker.hh"
#include "tool/check/Suggestion.hh"
#include "tool/check/SyntaxFindings.hh"
#include "tool/console/Text.hh"

#include <iterator>
#include <utility>

namespace {

template <class LookUp>
bool isKnown(LookUp lookUp) {
    try {
        lookUp();
        return true;
    } catch (const RTI::NameNotFound &) {
        return false;
    }
}

} // namespace

/// Looks up the words after a name and reports the unknown ones. Words that a syntax error took away are not reported.
/// Returns nothing if the name itself is missing, so that the first word is another one.
std::optional<Checker::Properties> Checker::resolve(const std::string &noun, const std::string &name,
                                                    const Words &words) {
    Properties known;
    if (_findings.size() == kMaxErrors)
        return known;
    const std::string owner = "the " + noun + " " + inQuotes(name);
    const bool bothKnown = isTransportation(words.transportation) && isOrdering(words.ordering);
    if (!bothKnown && (reportSplitWord(Argument::transportation, words.transportation, words.ordering, owner) ||
                       reportSplitWord(Argument::ordering, words.ordering, words.space, owner)))
        return known;
    if (!bothKnown) {
        const WordMistake mistake = mistakeIn(kindsOf(words));
        if (mistake.what == WordMistake::lacksName) {
            if (_parser.given(Argument::ordering)) // else the parser counts it
                _lostNames.insert(_owner);
            reportMissingWord(mistake, words, "the " + noun);
            return {};
        }
        if (mistake.what == WordMistake::wrongOrder && mistake.at == 0) // the first word is not the name
            reportOrder(mistake, words, "the " + noun);
        else if (mistake.what != WordMistake::unknown)
            reportMistake(mistake, words, owner);
        if (mistake.what != WordMistake::unknown)
            return known;
    }
    if (!_parser.given(Argument::ordering)) // one of the two words is missing, and was reported
        return known;
    if (isTransportation(words.transportation))
        known.transportation = _database->getTransportationHandle(words.transportation);
    else
        reportUnknownWord(RuleId::unknownTransportation, Argument::transportation, "transportation",
                          words.transportation, owner, expectedForms(kTransportations));
    if (isOrdering(words.ordering))
        known.ordering = _database->getOrderingHandle(words.ordering);
    else
        reportUnknownWord(RuleId::unknownOrdering, Argument::ordering, "ordering", words.ordering, owner,
                          expectedForms(kOrderings));
    if (words.space.empty())
        return known;
    if (isSpace(words.space)) {
        known.space = _database->getRoutingSpaceHandle(words.space);
        _usedSpaces.insert(known.space);
    } else if (_parser.spacesKnown() && !_parser.skipped(words.space))
        reportUnknownWord(RuleId::unknownSpace, Argument::space, "routing space", words.space, owner,
                          "the name of a space that the file declares");
    return known;
}

WordKinds Checker::kindsOf(const Words &words) const {
    const std::string *const all[] = {&words.name, &words.transportation, &words.ordering, &words.space};
    WordKinds kinds{};
    for (std::size_t i = 0; i < kinds.size() && _parser.given(i); ++i)
        kinds[i] = isTransportation(*all[i]) ? WordKind::transportation
                   : isOrdering(*all[i])     ? WordKind::ordering
                   : isSpace(*all[i])        ? WordKind::space
                                             : WordKind::other;
    return kinds;
}

bool Checker::isSpace(const std::string &word) const {
    return isKnown([&] { _database->getRoutingSpaceHandle(word); });
}

bool Checker::isTransportation(const std::string &word) const {
    return isKnown([&] { _database->getTransportationHandle(word); });
}

bool Checker::isOrdering(const std::string &word) const {
    return isKnown([&] { _database->getOrderingHandle(word); });
}

/// Reports words that are in the wrong place: one mistake, where looking up each word would find two or three.
void Checker::reportMistake(const WordMistake &mistake, const Words &words, const std::string &owner) {
    if (mistake.what == WordMistake::wrongOrder)
        return reportOrder(mistake, words, owner);
    if (mistake.what != WordMistake::tooMany)
        return reportMissingWord(mistake, words, owner);
    const bool isFirst = mistake.at == 1;
    const std::string &word = isFirst ? words.transportation : words.ordering;
    report(RuleId::shiftedWords, isFirst ? Argument::transportation : Argument::ordering,
           (isFirst ? "unknown transportation " : "unknown ordering ") + inQuotes(word) + " of " + owner +
               "; judging by the words after it, there is a word too many",
           " of " + owner);
    _shiftedWords.emplace(_owner, RtiStringUtility::toupper(word)); // it may be the name that was meant
}

/// Reports a transportation or ordering that is written as two words. Returns whether it is.
bool Checker::reportSplitWord(Argument argument, const std::string &first, const std::string &second,
                              const std::string &owner) {
    const std::string meant = joinedDeliveryWord(first, second);
    if (meant.empty())
        return false;
    const RtiFedSpan end = _parser.span(static_cast<Argument>(argument + 1));
    report(RuleId::shiftedWords, argument,
           inQuotes(first + " " + second) + " of " + owner + " is written as one word" + didYouMean(meant),
           " of " + owner);
    RtiFedSpan &span = *_findings.back().span;
    span.length = end.begin + end.length - span.begin;
    _findings.back().fix = {{{span, meant}}, true};
    return true;
}

void Checker::reportMissingWord(const WordMistake &mistake, const Words &words, const std::string &owner) {
    struct Form {
        const char *missing, *found;
        Argument argument;
        const std::string &word;
    };
    const auto form = [&]() -> Form {
        switch (mistake.what) {
        case WordMistake::lacksName:
            return {"name", "transportation", Argument::name, words.name};
        case WordMistake::lacksTransportation:
            return {"transportation", "ordering", Argument::transportation, words.transportation};
        case WordMistake::lacksBoth:
            return {"transportation and its ordering", "space", Argument::transportation, words.transportation};
        default:
            return {"ordering", "space", Argument::ordering, words.ordering};
        }
    }();
    Finding finding{&ruleOf(RuleId::shiftedWords), _parser.span(form.argument),
                    owner + " lacks its " + form.missing + " before the " + form.found + " " + inQuotes(form.word)};
    finding.setParticular(owner);
    if (_parser.given(Argument::ordering)) {
        _findings.push_back(std::move(finding));
        return;
    }
    // The parser reports that a word is missing, but cannot know which one.
    finding.rule = &ruleOf(RtiFedParser::expectedArgument);
    finding.severity = finding.rule->severity;
    const RtiFedSpan last = _parser.span(Argument::transportation);
    _insteadOf.emplace(last.begin + last.length, std::move(finding));
}

void Checker::reportOrder(const WordMistake &mistake, const Words &words, const std::string &owner) {
    const std::string *const all[] = {&words.name, &words.transportation, &words.ordering, &words.space};
    std::size_t count = _parser.given(Argument::space) ? 4 : 3;
    while (mistake.order[count - 1] == count - 1)
        --count;
    const RtiFedSpan last = _parser.span(count - 1);
    std::string meant;
    Fix fix{{}, true};
    for (std::size_t i = mistake.at; i < count; ++i) {
        const std::string word = asWord(*all[mistake.order[i]]);
        meant += (meant.empty() ? "" : " ") + word;
        if (mistake.order[i] != i)
            fix.edits.push_back({_parser.span(i), word});
    }
    const bool swapped = mistake.at == 1 && count == 3;
    const std::string what = swapped ? "the transportation and the ordering" : "the words";
    report(RuleId::swappedWords, static_cast<Argument>(mistake.at),
           what + " of " + owner + (swapped ? " are swapped" : " are in the wrong order") + didYouMean(meant),
           " of " + owner);
    _findings.back().span->length = last.begin + last.length - _findings.back().span->begin;
    _findings.back().fix = std::move(fix);
    _shiftedWords.emplace(_owner, RtiStringUtility::toupper(*all[mistake.order[0]]));
}

/// The finding that explains a missing word better than the parser can; null if there is none.
const Finding *Checker::insteadOf(const RtiFedParser::Error &error) const {
    if (error.problem != RtiFedParser::expectedArgument)
        return nullptr;
    const auto after = _insteadOf.upper_bound(error.span.begin);
    if (after == _insteadOf.begin())
        return nullptr;
    const auto &[end, finding] = *std::prev(after);
    const std::string_view gap = _parser.text().substr(end, error.span.begin - end);
    return gap.find_first_not_of(" \t") == std::string_view::npos ? &finding : nullptr;
}

void Checker::reportUnknownWord(RuleId rule, Argument argument, const std::string &noun, const std::string &word,
                                const std::string &owner, const std::string &expected) {
    const std::string blank = RtiFedParser::blankLookalikeIn(word);
    const std::string_view mark = RtiFedParser::foreignCommentMark(word);
    const std::string hint = !blank.empty()  ? "; it contains " + blank
                             : !mark.empty() ? "; a comment begins with \";\""
                                             : std::string();
    report(rule, argument, "unknown " + noun + " " + inQuotes(word) + " of " + owner + ", expected " + expected + hint,
           " of " + owner);
}
