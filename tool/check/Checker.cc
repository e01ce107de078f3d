#include "tool/check/Checker.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/MomFindings.hh"
#include "tool/check/Suggestion.hh"
#include "tool/model/ClassTrees.hh"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t kMaxSuggestions = 1000; // of one text: each costs a comparison with all candidates

template <class LookUp>
bool isKnown(LookUp lookUp) {
    try {
        lookUp();
        return true;
    } catch (const RTI::NameNotFound &) {
        return false;
    }
}

/// What is missing of the MOM stands nowhere, and comes last.
bool comesBefore(const Finding &a, const Finding &b) {
    const auto place = [](const Finding &f) { return std::pair(!f.details.empty(), f.span->begin); };
    return place(a) < place(b);
}

} // namespace

Finding findingOf(RtiFedParser::Error error) {
    return {&ruleOf(error.problem), error.span, std::move(error.text), {}, std::move(error.notes), {}};
}

Checker::Checker(std::string text)
    : _parser(std::move(text)), _database(RtiFedDatabaseConstructorArg(std::string(), RTI_false)) {
    _parser.deliver(*this);
    if (_parser.nestingKnown() && _parser.classesKnown() && !_shiftedInClass)
        checkMom();
    completeMom();
    std::stable_sort(_findings.begin(), _findings.end(), comesBefore);
    if (_findings.size() >= kMaxErrors)
        _findings.push_back(
            {&ruleOf(RtiFedParser::tooManyErrors), _findings.back().span, "more was found than is shown", {}, {}, {}});
}

void Checker::forEachFinding(const std::function<bool(const Finding &)> &visit) const {
    std::size_t nextError = 0, numSuggestions = 0;
    const auto complete = [&](Finding finding, const std::vector<std::string> &candidates) {
        if (!candidates.empty() && ++numSuggestions <= kMaxSuggestions)
            suggest(finding, candidates);
        return finding;
    };
    const auto visitErrorsBefore = [&](const Finding *finding) {
        for (; nextError < _parser.numErrors(); ++nextError) {
            RtiFedParser::Error error = _parser.error(nextError);
            const std::vector<std::string> keywords = std::move(error.keywords);
            Finding syntax = findingOf(std::move(error));
            if (finding && comesBefore(*finding, syntax))
                return true;
            if (!visit(complete(std::move(syntax), keywords)))
                return false;
        }
        return true;
    };
    for (const Finding &finding : _findings)
        if (!visitErrorsBefore(&finding) || !visit(complete(finding, candidatesFor(finding))))
            return;
    visitErrorsBefore(nullptr);
}

bool Checker::keepsAll() const {
    constexpr RuleId kLosing[] = {RuleId::repeatedClass,  RuleId::ambiguousClass,  RuleId::refusedClass,
                                  RuleId::repeatedMember, RuleId::inheritedMember, RuleId::repeatedDimension};
    return _parser.numErrors() == 0 &&
           std::none_of(std::begin(kLosing), std::end(kLosing), [this](RuleId id) { return finds(id); });
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
    declared(_space);
    _spaceNames.push_back(_space->getName());
}

void Checker::addDimension(std::string name) {
    if (_space->dimensionExists(name)) {
        const RtiFedDimension *first = _space->find(_space->getDimensionHandle(name));
        return findAgain(RuleId::repeatedDimension,
                         "the dimension " + quoted(name) + " is declared a second time in the space " +
                             quoted(_space->getName()),
                         first);
    }
    declared(_space->addDimension(std::move(name)));
}

void Checker::addObjectClass(std::string name) {
    _objectClass = addClass<Objects>(name, [&] { return _database.addObjectClass(name); });
}

void Checker::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                      std::string space) {
    const Properties properties = judge("the attribute " + quoted(name), transportation, ordering, space);
    addMember<Objects>(_objectClass, name, [&] {
        _database.addObjectClassAttribute(_objectClass, name, properties.transportation, properties.ordering,
                                          properties.space);
        return _objectClass->getAttribute(_objectClass->getNumberOfAttributes() - 1);
    });
}

void Checker::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                  std::string space) {
    const std::size_t numShifted = _shiftedWords.size();
    const Properties properties = judge("the interaction class " + quoted(name), transportation, ordering, space);
    _shiftedInClass = _shiftedInClass || _shiftedWords.size() > numShifted;
    _interactionClass = addClass<Interactions>(name, [&] {
        return _database.addInteractionClass(name, properties.transportation, properties.ordering, properties.space);
    });
}

void Checker::addParameter(std::string name) {
    addMember<Interactions>(_interactionClass, name,
                            [&] { return _interactionClass->addParameter(_database.createParameterHandle(), name); });
}

/// The class that a class clause declares, be it declared a second time; null if it could not be added, which then
/// follows from an error that was reported.
template <class Tree, class Add>
typename Tree::Node *Checker::addClass(const std::string &name, Add add) {
    ++_clause;
    const bool inRepeated = !_repeatedClass.empty() && name.size() > _repeatedClass.size() &&
                            name[_repeatedClass.size()] == '.' &&
                            name.compare(0, _repeatedClass.size(), _repeatedClass) == 0;
    if (!inRepeated)
        _repeatedClass.clear();
    auto *existing = Tree::find(_database, name);
    _repeated = existing != nullptr;
    if (existing) {
        // What is new in a class declared again counts as the first's, so that each slip is found once.
        if (inRepeated && _declarations.at(existing).clause < _repeatedClause)
            return existing;
        const std::string subject = std::string("the ") + Tree::kind + " " + quoted(name);
        if (name.size() == existing->getName().size())
            findAgain(RuleId::repeatedClass, subject + " is declared a second time", existing);
        else
            findAgain(RuleId::ambiguousClass,
                      subject + " cannot stand beside " + quoted(existing->getName()) + ", which is found without \"" +
                          Tree::root + ".\" as well",
                      existing);
        if (!inRepeated) {
            _repeatedClass = name;
            _repeatedClause = _clause;
        }
        return existing;
    }
    try {
        auto *added = add();
        declared(added);
        return added;
    } catch (const RTI::Exception &refused) {
        if (_parser.numErrors() == 0)
            find(RuleId::refusedClass, 0,
                 std::string("the ") + Tree::kind + " " + quoted(name) + " is refused: " + refused._reason);
        return nullptr;
    }
}

template <class Tree, class Add>
void Checker::addMember(typename Tree::Node *owner, const std::string &name, Add add) {
    if (!owner)
        return;
    for (const auto *node = owner; node; node = node->getParentClass()) {
        const auto *first = Tree::findMember(*node, name);
        if (!first)
            continue;
        const std::string subject = std::string("the ") + Tree::member + " " + quoted(name);
        const bool sameClause = _declarations.at(first).clause == _clause;
        if (node != owner)
            findAgain(RuleId::inheritedMember,
                      subject + " of " + quoted(owner->getName()) + " is declared again: it is inherited from " +
                          quoted(node->getName()),
                      first);
        else if (sameClause || !_repeated)
            findAgain(RuleId::repeatedMember, subject + " is declared a second time in " + quoted(owner->getName()),
                      first);
        return;
    }
    declared(add());
}

/// Finds what is unknown of the words behind a name. What a syntax error took away is not judged.
Checker::Properties Checker::judge(const std::string &owner, const std::string &transportation,
                                   const std::string &ordering, const std::string &space) {
    Properties known;
    if (_findings.size() == kMaxErrors)
        return known;
    const bool sound = isTransportation(transportation) && isOrdering(ordering);
    if (!sound && findMisplaced(owner, transportation, ordering, space))
        return known;
    if (!_parser.given(2)) // one of the two words is missing, and was reported
        return known;
    if (isTransportation(transportation))
        known.transportation = _database.getTransportationHandle(transportation);
    else
        find(RuleId::unknownTransportation, 1,
             "unknown transportation " + quoted(transportation) + " of " + owner +
                 ", expected reliable or best_effort");
    if (isOrdering(ordering))
        known.ordering = _database.getOrderingHandle(ordering);
    else
        find(RuleId::unknownOrdering, 2,
             "unknown ordering " + quoted(ordering) + " of " + owner + ", expected timestamp or receive");
    if (space.empty())
        return known;
    if (isKnown([&] { _database.getRoutingSpaceHandle(space); }))
        known.space = _database.getRoutingSpaceHandle(space);
    else if (_parser.spacesKnown() && !_parser.skipped(space))
        find(RuleId::unknownSpace, 3,
             "unknown routing space " + quoted(space) + " of " + owner +
                 ", expected the name of a space that the file declares");
    return known;
}

bool Checker::isTransportation(const std::string &word) const {
    return isKnown([&] { _database.getTransportationHandle(word); });
}

bool Checker::isOrdering(const std::string &word) const {
    return isKnown([&] { _database.getOrderingHandle(word); });
}

/// Finds words that stand in the place of others: one slip, not several. Returns whether there are.
bool Checker::findMisplaced(const std::string &owner, const std::string &transportation, const std::string &ordering,
                            const std::string &space) {
    if (isOrdering(transportation) && isTransportation(ordering))
        findSwap(transportation, ordering, owner);
    else if (_parser.given(3) && isOrdering(space) && !isTransportation(transportation) && isTransportation(ordering))
        findShift(1, "unknown transportation", transportation, owner, "a word too many");
    else if (_parser.given(3) && isOrdering(space) && isTransportation(transportation) && !isOrdering(ordering))
        findShift(2, "unknown ordering", ordering, owner, "a word too many");
    else if (_parser.given(2) && !_parser.given(3) && isOrdering(transportation) && !isOrdering(ordering))
        findShift(1, "unknown transportation", transportation, owner, "a word is missing");
    else
        return false;
    return true;
}

void Checker::findShift(std::size_t argument, const std::string &unknown, const std::string &word,
                        const std::string &owner, const std::string &reason) {
    find(RuleId::shiftedWords, argument, unknown + " " + quoted(word) + " of " + owner + ", " + reason);
    _shiftedWords.push_back(RtiStringUtility::toupper(word)); // it may be the name that was meant
}

void Checker::findSwap(const std::string &transportation, const std::string &ordering, const std::string &owner) {
    const RtiFedSpan first = _parser.span(1), second = _parser.span(2);
    find(RuleId::swappedWords, 1,
         "the transportation and the ordering of " + owner + " are swapped" +
             didYouMean(ordering + " " + transportation));
    _findings.back().span->length = second.begin + second.length - first.begin;
    _findings.back().fix = {{first, ordering}, {second, transportation}};
}

void Checker::checkMom() {
    const auto mayStand = [this](std::string_view name) {
        const auto isShifted = std::find(_shiftedWords.begin(), _shiftedWords.end(), RtiStringUtility::toupper(name));
        return isShifted != _shiftedWords.end() || _parser.skipped(name);
    };
    for (Finding &finding : momFindings(*this, mayStand))
        _findings.push_back(std::move(finding));
}

/// Gives the classes of the MOM their space, as far as they are there.
void Checker::completeMom() {
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

void Checker::declared(const void *record) {
    Declaration declaration{{}, _clause};
    for (std::size_t i = 0; i < declaration.arguments.size(); ++i)
        if (_parser.given(i))
            declaration.arguments[i] = _parser.span(i);
    _declarations.emplace(record, declaration);
}

std::optional<RtiFedSpan> Checker::span(const void *record, std::size_t argument) const {
    const auto declared = _declarations.find(record);
    if (declared == _declarations.end() || declared->second.arguments.at(argument).length == 0)
        return {};
    return declared->second.arguments[argument];
}

std::optional<RtiFedPosition> Checker::place(const void *record) const {
    const auto name = span(record);
    return name ? std::optional(_parser.positionAt(name->begin)) : std::nullopt;
}

std::vector<RtiFedPosition> Checker::laterPlaces(const void *record) const {
    std::vector<RtiFedPosition> places;
    const auto again = _again.find(record);
    if (again != _again.end())
        for (const RtiFedSpan &span : again->second)
            places.push_back(_parser.positionAt(span.begin));
    return places;
}

std::string Checker::written(const void *record, std::size_t argument) const {
    const auto word = span(record, argument);
    return word ? std::string(wordAt(*word)) : std::string();
}

/// What stands in the text, without quotes.
std::string_view Checker::wordAt(RtiFedSpan span) const {
    std::string_view word = _parser.text().substr(span.begin, span.length);
    if (word.size() > 1 && word.front() == '"')
        word = word.substr(1, word.size() - 2);
    return word;
}

void Checker::find(RuleId rule, std::size_t argument, std::string text) {
    if (_findings.size() < kMaxErrors)
        _findings.push_back({&ruleOf(rule), _parser.span(argument), std::move(text), {}, {}, {}});
}

void Checker::findAgain(RuleId rule, std::string text, const void *first) {
    if (!_parser.nestingKnown() || _findings.size() == kMaxErrors)
        return;
    find(rule, 0, std::move(text));
    _findings.back().notes.push_back({*span(first), "the first declaration stands here"});
    _again[first].push_back(_parser.span());
}

/// What may have been meant by the word at which a finding stands.
const std::vector<std::string> &Checker::candidatesFor(const Finding &finding) const {
    static const std::vector<std::string> none,
        transportations{"reliable", "best_effort", "RTI_RELIABLE", "RTI_BEST_EFFORT"},
        orderings{"timestamp", "receive", "RTI_TIME_STAMP_ORDERING", "RTI_RECEIVE_ORDERING"};
    if (finding.rule == &ruleOf(RuleId::unknownTransportation))
        return transportations;
    if (finding.rule == &ruleOf(RuleId::unknownOrdering))
        return orderings;
    return finding.rule == &ruleOf(RuleId::unknownSpace) ? _spaceNames : none;
}

void Checker::suggest(Finding &finding, const std::vector<std::string> &candidates) const {
    const std::string_view word = wordAt(*finding.span);
    const std::string meant = suggestionFor(word, candidates);
    if (meant.empty() || RtiStringUtility::toupper(word) == RtiStringUtility::toupper(meant))
        return;
    finding.text += didYouMean(meant);
    finding.fix.push_back({*finding.span, asWord(meant)});
}
