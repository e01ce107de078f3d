#include "tool/check/Checker.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/MomFindings.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/ClassTrees.hh"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace {

constexpr const char *kWordTooMany = "; judging by the words after it, there is a word too many";
constexpr std::size_t kMaxSuggestions = 1000; // for one text: each compares a word with all candidates

template <class LookUp>
bool isKnown(LookUp lookUp) {
    try {
        lookUp();
        return true;
    } catch (const RTI::NameNotFound &) {
        return false;
    }
}

/// The order of the text; the finding about the MOM, which alone has details, comes last.
bool comesBefore(const Finding &a, const Finding &b) {
    const auto place = [](const Finding &f) { return std::pair(!f.details.empty(), f.span->begin); };
    return place(a) < place(b);
}

} // namespace

Finding findingOf(RtiFedParser::Error error) {
    return {&ruleOf(error.problem), error.span, std::move(error.text), {}, std::move(error.notes)};
}

Checker::Checker(std::string text)
    : _parser(std::move(text)), _database(RtiFedDatabaseConstructorArg(std::string(), RTI_false)) {
    _parser.deliver(*this);
    if (_parser.nestingKnown() && _parser.classesKnown() && !_classNamesUncertain)
        checkMom();
    giveMomItsSpace();
    std::stable_sort(_findings.begin(), _findings.end(), comesBefore);
    if (_findings.size() >= kMaxErrors)
        _findings.push_back(
            {&ruleOf(RtiFedParser::tooManyErrors), _findings.back().span, "there are more errors than are shown"});
}

void Checker::forEachFinding(const std::function<bool(const Finding &)> &visit) const {
    std::map<std::string, std::string> suggestions; // by what is wrong: the same mistake at many places needs one
    const auto visitWithSuggestion = [&](const Finding &finding, const std::vector<std::string> &candidates) {
        if (candidates.empty())
            return visit(finding);
        const std::string_view word = _declarations.wordAt(*finding.span);
        const std::string mistake =
            std::string(word) + '\0' + finding.rule->id + '\0' + std::string(finding.textAfter());
        const auto known = suggestions.find(mistake);
        if (known != suggestions.end())
            return visit(withSuggestion(finding, known->second));
        if (suggestions.size() == kMaxSuggestions)
            return visit(finding);
        const std::string &meant = suggestions.emplace(mistake, suggestionFor(word, candidates)).first->second;
        return visit(withSuggestion(finding, meant));
    };
    std::size_t next = 0;
    // The next syntax error, made into a finding once, and the keywords that may have been meant.
    std::optional<std::pair<Finding, std::vector<std::string>>> error;
    const auto advance = [&] {
        error.reset();
        if (next == _parser.numErrors())
            return;
        RtiFedParser::Error found = _parser.error(next++);
        std::vector<std::string> keywords = std::move(found.keywords);
        error.emplace(findingOf(std::move(found)), std::move(keywords));
    };
    advance();
    auto finding = _findings.begin();
    while (error || finding != _findings.end()) {
        const bool errorIsNext = error && (finding == _findings.end() || !comesBefore(*finding, error->first));
        if (!(errorIsNext ? visitWithSuggestion(error->first, error->second)
                          : visitWithSuggestion(*finding, candidatesFor(*finding))))
            return;
        if (errorIsNext)
            advance();
        else
            ++finding;
    }
}

std::optional<RtiFedPosition> Checker::firstLoss() const {
    constexpr RuleId kRulesThatDropDeclarations[] = {RuleId::repeatedClass,   RuleId::ambiguousClass,
                                                     RuleId::refusedClass,    RuleId::repeatedMember,
                                                     RuleId::inheritedMember, RuleId::repeatedDimension};
    const auto dropped = std::find_if(_findings.begin(), _findings.end(), [&](const Finding &finding) {
        return std::any_of(std::begin(kRulesThatDropDeclarations), std::end(kRulesThatDropDeclarations),
                           [&](RuleId id) { return finding.rule == &ruleOf(id); });
    });
    std::optional<RtiFedSpan> first;
    if (_parser.numErrors() > 0)
        first = _parser.error(0).span;
    if (dropped != _findings.end() && (!first || dropped->span->begin < first->begin))
        first = dropped->span;
    return first ? std::optional(_parser.positionAt(first->begin)) : std::nullopt;
}

bool Checker::hasAllNames() const {
    return _parser.numErrors() == 0 && !finds(RuleId::ambiguousClass) && !finds(RuleId::refusedClass);
}

bool Checker::finds(RuleId id) const {
    return std::any_of(_findings.begin(), _findings.end(), [id](const Finding &f) { return f.rule == &ruleOf(id); });
}

void Checker::setFederate(std::string name) {
    _database.setFederateName(std::move(name));
}

void Checker::setFederateVersion(std::string version) {
    _database.setFederateVersion(std::move(version));
}

void Checker::addSpace(std::string name) {
    _space = _database.addSpace(std::move(name));
    addDeclaration(_space);
    _spaceNames.push_back(_space->getName());
}

void Checker::addDimension(std::string name) {
    if (_space->dimensionExists(name)) {
        const RtiFedDimension *first = _space->find(_space->getDimensionHandle(name));
        return reportRepeated(RuleId::repeatedDimension,
                              "duplicate dimension " + inQuotes(name) + " in the space " + inQuotes(_space->getName()),
                              first);
    }
    addDeclaration(_space->addDimension(std::move(name)));
}

void Checker::addObjectClass(std::string name) {
    _objectClass = addClass<Objects>(name, [&] { return _database.addObjectClass(name); });
}

void Checker::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                      std::string space) {
    const Properties properties = resolve("the attribute " + inQuotes(name), {transportation, ordering, space});
    addMember<Objects>(_objectClass, name, [&] {
        _database.addObjectClassAttribute(_objectClass, name, properties.transportation, properties.ordering,
                                          properties.space);
        return _objectClass->getAttribute(_objectClass->getNumberOfAttributes() - 1);
    });
}

void Checker::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                  std::string space) {
    const std::size_t numShifted = _shiftedWords.size();
    const Properties properties = resolve("the interaction class " + inQuotes(name), {transportation, ordering, space});
    _classNamesUncertain = _classNamesUncertain || _shiftedWords.size() > numShifted;
    _interactionClass = addClass<Interactions>(name, [&] {
        return _database.addInteractionClass(name, properties.transportation, properties.ordering, properties.space);
    });
}

void Checker::addParameter(std::string name) {
    addMember<Interactions>(_interactionClass, name,
                            [&] { return _interactionClass->addParameter(_database.createParameterHandle(), name); });
}

/// Returns the class that a class clause declares, or the first of that name if it is a duplicate. Null if the class
/// could not be added; that was reported, or follows from an error that was.
template <class Tree, class Add>
typename Tree::Node *Checker::addClass(const std::string &name, Add add) {
    _clauses.begin(name);
    if (auto *first = Tree::find(_database, name)) {
        if (!_clauses.followsFromRepetition(_declarations.classClause(first)))
            reportRepeatedClass<Tree>(name, *first);
        return first;
    }
    try {
        auto *added = add();
        addDeclaration(added);
        return added;
    } catch (const RTI::Exception &refused) {
        if (_parser.numErrors() == 0)
            report(RuleId::refusedClass, Argument::name,
                   std::string("the ") + Tree::kind.className + " " + inQuotes(name) +
                       " is refused: " + refused._reason);
        return nullptr;
    }
}

/// A class is found with and without the name of its root, so that the first one may have another full name.
template <class Tree>
void Checker::reportRepeatedClass(const std::string &name, const typename Tree::Node &first) {
    const std::string subject = std::string(Tree::kind.className) + " " + inQuotes(name);
    if (name.size() == first.getName().size())
        reportRepeated(RuleId::repeatedClass, "duplicate " + subject, &first);
    else
        reportRepeated(RuleId::ambiguousClass,
                       "the " + subject + " conflicts with " + inQuotes(first.getName()) +
                           ", which is also found without \"" + Tree::kind.root + ".\"",
                       &first);
    _clauses.setRepeated(name);
}

template <class Tree, class Add>
void Checker::addMember(typename Tree::Node *owner, const std::string &name, Add add) {
    if (!owner)
        return;
    for (const auto *node = owner; node; node = node->getParentClass()) {
        const auto *first = Tree::findMember(*node, name);
        if (!first)
            continue;
        const std::string inOwner = " in " + inQuotes(owner->getName());
        const std::string subject = std::string("duplicate ") + Tree::kind.memberName + " " + inQuotes(name) + inOwner;
        const bool isInClause = _declarations.classClause(first) == _clauses.number();
        if (node != owner)
            reportRepeated(RuleId::inheritedMember, subject + ": it is inherited from " + inQuotes(node->getName()),
                           first, inOwner);
        else if (isInClause) // else the whole class is a duplicate, which was reported
            reportRepeated(RuleId::repeatedMember, subject, first);
        return;
    }
    addDeclaration(add());
}

/// Looks up the words after a name and reports the unknown ones. Words that a syntax error took away are not reported.
Checker::Properties Checker::resolve(const std::string &owner, const Words &words) {
    Properties known;
    if (_findings.size() == kMaxErrors)
        return known;
    const bool bothKnown = isTransportation(words.transportation) && isOrdering(words.ordering);
    if (!bothKnown && reportMisplacedWords(owner, words))
        return known;
    if (!_parser.given(Argument::ordering)) // one of the two words is missing, and was reported
        return known;
    if (isTransportation(words.transportation))
        known.transportation = _database.getTransportationHandle(words.transportation);
    else
        reportUnknownWord(RuleId::unknownTransportation, Argument::transportation, "transportation",
                          words.transportation, owner, expectedForms(kTransportations));
    if (isOrdering(words.ordering))
        known.ordering = _database.getOrderingHandle(words.ordering);
    else
        reportUnknownWord(RuleId::unknownOrdering, Argument::ordering, "ordering", words.ordering, owner,
                          expectedForms(kOrderings));
    if (words.space.empty())
        return known;
    if (isKnown([&] { _database.getRoutingSpaceHandle(words.space); }))
        known.space = _database.getRoutingSpaceHandle(words.space);
    else if (_parser.spacesKnown() && !_parser.skipped(words.space))
        reportUnknownWord(RuleId::unknownSpace, Argument::space, "routing space", words.space, owner,
                          "the name of a space that the file declares");
    return known;
}

bool Checker::isTransportation(const std::string &word) const {
    return isKnown([&] { _database.getTransportationHandle(word); });
}

bool Checker::isOrdering(const std::string &word) const {
    return isKnown([&] { _database.getOrderingHandle(word); });
}

/// Reports words that are in the wrong place: one mistake, where looking up each word would find two or three. Returns
/// whether there are any.
///
/// The idea: transportation and ordering are the only words from a small known set, so if one of them is found one
/// place too late, a word before it is superfluous; if one place too early, a word is missing. Without a known word in
/// a wrong place nothing can be said, and each word is reported on its own.
bool Checker::reportMisplacedWords(const std::string &owner, const Words &words) {
    const bool transportationKnown = isTransportation(words.transportation), orderingKnown = isOrdering(words.ordering);
    const bool hasOrdering = _parser.given(Argument::ordering), hasSpace = _parser.given(Argument::space);
    const bool orderingIsLate = hasSpace && isOrdering(words.space);
    if (isOrdering(words.transportation) && isTransportation(words.ordering))
        reportSwap(words, owner);
    else if (orderingIsLate && !transportationKnown && isTransportation(words.ordering))
        reportShift(Argument::transportation, "unknown transportation", words.transportation, owner, kWordTooMany);
    else if (orderingIsLate && transportationKnown && !orderingKnown)
        reportShift(Argument::ordering, "unknown ordering", words.ordering, owner, kWordTooMany);
    else if (hasOrdering && !hasSpace && isOrdering(words.transportation) && !orderingKnown)
        reportShift(Argument::transportation, "unknown transportation", words.transportation, owner,
                    "; it is an ordering, so a word before it is missing");
    else
        return false;
    return true;
}

void Checker::reportShift(Argument argument, const std::string &unknown, const std::string &word,
                          const std::string &owner, const std::string &reason) {
    report(RuleId::shiftedWords, argument, unknown + " " + inQuotes(word) + " of " + owner + reason);
    _shiftedWords.push_back(RtiStringUtility::toupper(word)); // it may be the name that was meant
}

void Checker::reportSwap(const Words &words, const std::string &owner) {
    const RtiFedSpan first = _parser.span(Argument::transportation), second = _parser.span(Argument::ordering);
    report(RuleId::swappedWords, Argument::transportation,
           "the transportation and the ordering of " + owner + " are swapped" +
               didYouMean(words.ordering + " " + words.transportation),
           " of " + owner);
    _findings.back().span->length = second.begin + second.length - first.begin;
    _findings.back().fix = {{first, words.ordering}, {second, words.transportation}};
}

void Checker::reportUnknownWord(RuleId rule, Argument argument, const std::string &noun, const std::string &word,
                                const std::string &owner, const std::string &expected) {
    report(rule, argument, "unknown " + noun + " " + inQuotes(word) + " of " + owner + ", expected " + expected,
           " of " + owner);
}

void Checker::checkMom() {
    const auto mayBeDeclared = [this](std::string_view name) {
        const auto shifted = std::find(_shiftedWords.begin(), _shiftedWords.end(), RtiStringUtility::toupper(name));
        return shifted != _shiftedWords.end() || _parser.skipped(name);
    };
    for (Finding &finding : momFindings(*this, mayBeDeclared))
        _findings.push_back(std::move(finding));
}

/// Gives the classes of the MOM their routing space, as loading does, as far as they exist.
void Checker::giveMomItsSpace() {
    auto *object = Objects::find(_database, "ObjectRoot.Manager");
    auto *interaction = Interactions::find(_database, "InteractionRoot.Manager");
    if (!object && !interaction)
        return;
    _database.createMomDefaultSpace();
    const RtiSpaceHandle space = _database.getRoutingSpaceHandle(RtiFedDatabase::_momDefaultSpace);
    if (object)
        _database.setMomDefaultSpaceForAttributes(object, space);
    if (interaction)
        _database.setMomDefaultSpaceForInteractionClasses(interaction, space);
}

void Checker::report(RuleId rule, Argument argument, std::string text, std::string_view particular) {
    if (_findings.size() == kMaxErrors)
        return;
    _findings.push_back({&ruleOf(rule), _parser.span(argument), std::move(text)});
    _findings.back().setParticular(particular);
}

void Checker::reportRepeated(RuleId rule, std::string text, const void *first, std::string_view particular) {
    if (!_parser.nestingKnown() || _findings.size() == kMaxErrors)
        return;
    report(rule, Argument::name, std::move(text), particular);
    _findings.back().notes.push_back({*_declarations.span(first), "the first declaration is here"});
    _declarations.addLater(first, _parser.span());
}

/// The words that may have been meant by the unknown word of a finding.
const std::vector<std::string> &Checker::candidatesFor(const Finding &finding) const {
    static const std::vector<std::string> none, transportations = allForms(kTransportations),
                                                orderings = allForms(kOrderings);
    if (finding.rule == &ruleOf(RuleId::unknownTransportation))
        return transportations;
    if (finding.rule == &ruleOf(RuleId::unknownOrdering))
        return orderings;
    return finding.rule == &ruleOf(RuleId::unknownSpace) ? _spaceNames : none;
}

/// Adds the word that was meant in place of that of the finding, if any, to its text and as its fix.
Finding Checker::withSuggestion(Finding finding, const std::string &meant) const {
    const std::string_view word = _declarations.wordAt(*finding.span);
    if (meant.empty() || RtiStringUtility::toupper(word) == RtiStringUtility::toupper(meant))
        return finding;
    finding.text += didYouMean(meant);
    finding.fix.push_back({*finding.span, asWord(meant)});
    return finding;
}
