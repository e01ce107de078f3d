#include "tool/check/Checker.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tool/check/SpaceFindings.hh"
#include "tool/check/Suggestion.hh"
#include "tool/check/SyntaxFindings.hh"
#include "tool/check/mom/MomFindings.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/Model.hh"
#include "tool/model/Names.hh"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

namespace {

// equivalent: a bound of the time, whose exact value does not matter
constexpr std::size_t kMaxSuggestions = 1000; // for one text: each compares a word with all candidates

bool comesBefore(const Finding &a, const Finding &b) {
    return a.span->begin < b.span->begin;
}

} // namespace

Checker::Checker(std::string text, const std::string &fileName)
    : _parser(std::move(text)), _database(buildModel(_parser, fileName)) {
    if (!_database)
        findErrors();
}

void Checker::findErrors() {
    _database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(std::string(), RTI_false));
    _declarationsKnown = true;
    _parser.deliver(*this);
    if (_parser.nestingKnown() && _parser.classesKnown() && !_classNamesUncertain)
        checkMom();
    giveMomItsSpace();
    joinUsesOfMisspeltSpaces(*this, _usedSpaces, _findings);
    std::stable_sort(_findings.begin(), _findings.end(), comesBefore);
    // unreached: more errors than a test can wait for in each run
    if (_findings.size() >= kMaxErrors)
        _findings.push_back(
            {&ruleOf(RtiFedParser::tooManyErrors), _findings.back().span, "there are more errors than are shown"});
}

const SyntaxTree &Checker::tree() const {
    return _tree ? *_tree : _tree.emplace(_parser);
}

const Declarations &Checker::declarations() const {
    if (!_declarationsKnown)
        _declarations.addAll(*_database);
    _declarationsKnown = true; // equivalent: only speed
    return _declarations;
}

void Checker::forEachFinding(const std::function<bool(const Finding &)> &visit) const {
    std::map<std::string, Suggestion> suggestions; // by what is wrong: the same mistake at many places needs one
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
        const bool isSpace = finding.rule == &ruleOf(RuleId::unknownSpace);
        const Suggestion best = isSpace ? bestNameOf(word, candidates) : bestOf(word, candidates);
        return visit(withSuggestion(finding, suggestions.emplace(mistake, best).first->second));
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
        const Finding *const better = insteadOf(found);
        error.emplace(better ? *better : findingOf(std::move(found), _parser.text()), std::move(keywords));
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
    constexpr RuleId kRulesThatDropDeclarations[] = {
        RuleId::repeatedClass,   RuleId::ambiguousClass,    RuleId::refusedClass, RuleId::repeatedMember,
        RuleId::inheritedMember, RuleId::repeatedDimension, RuleId::shiftedWords};
    const auto dropped = std::find_if(_findings.begin(), _findings.end(), [&](const Finding &finding) {
        return std::any_of(std::begin(kRulesThatDropDeclarations), std::end(kRulesThatDropDeclarations),
                           [&](RuleId id) { return finding.rule == &ruleOf(id); });
    });
    std::optional<RtiFedSpan> first;
    if (_parser.numErrors() > 0)
        first = _parser.error(0).span;
    // equivalent: at one place, either is the first
    if (dropped != _findings.end() && (!first || dropped->span->begin < first->begin))
        first = dropped->span;
    return first ? std::optional(_parser.positionAt(first->begin)) : std::nullopt;
}

bool Checker::hasAllNames() const {
    // unreached: the parser refuses what the database would refuse
    return _parser.numErrors() == 0 && !finds(RuleId::ambiguousClass) && !finds(RuleId::refusedClass);
}

bool Checker::finds(RuleId id) const {
    return std::any_of(_findings.begin(), _findings.end(), [id](const Finding &f) { return f.rule == &ruleOf(id); });
}

void Checker::setFederate(std::string name) {
    _database->setFederateName(std::move(name));
}

void Checker::setFederateVersion(std::string version) {
    _database->setFederateVersion(std::move(version));
}

void Checker::addSpace(std::string name) {
    _space = _database->addSpace(std::move(name));
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
    _owner = offsetOfWord(_parser.span());
    _objectClass = addClass<Objects>(name, [&] { return _database->addObjectClass(name); });
}

void Checker::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                      std::string space) {
    const Words words{name, std::move(transportation), std::move(ordering), std::move(space)};
    const auto properties = resolve("attribute", name, words);
    if (!properties)
        return;
    addMember<Objects>(_objectClass, name, [&] {
        _database->addObjectClassAttribute(_objectClass, name, properties->transportation, properties->ordering,
                                           properties->space);
        return _objectClass->getAttribute(_objectClass->getNumberOfAttributes() - 1);
    });
}

void Checker::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                  std::string space) {
    const std::size_t numShifted = _shiftedWords.size();
    const Words words{std::string(lastComponent(name)), std::move(transportation), std::move(ordering),
                      std::move(space)};
    const auto properties = resolve("interaction class", name, words);
    _classNamesUncertain = _classNamesUncertain || !properties || _shiftedWords.size() > numShifted;
    _interactionClass = addClass<Interactions>(name, [&] {
        const Properties known = properties.value_or(Properties{});
        return _database->addInteractionClass(name, known.transportation, known.ordering, known.space);
    });
}

void Checker::addParameter(std::string name) {
    addMember<Interactions>(_interactionClass, name,
                            [&] { return _interactionClass->addParameter(_database->createParameterHandle(), name); });
}

/// Returns the class that a class clause declares, or the first of that name if it is a duplicate. Null if the class
/// could not be added; that was reported, or follows from an error that was.
template <class Tree, class Add>
typename Tree::Node *Checker::addClass(const std::string &name, Add add) {
    _clauses.begin(name);
    if (auto *first = Tree::find(*_database, name)) {
        if (!_clauses.followsFromRepetition(_declarations.classClause(first)))
            reportRepeatedClass<Tree>(name, *first);
        return first;
    }
    try {
        auto *added = add();
        addDeclaration(added);
        return added;
    } catch (const RTI::Exception &refused) {
        // unreached: the parser refuses names and classes before that the database would refuse
        if (_parser.numErrors() == 0)
            report(RuleId::refusedClass, Argument::name,
                   std::string("the ") + Tree::kind.className + " " + inQuotes(name) +
                       " is refused: " + refused._reason);
        // unreached: likewise
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
    // unreached: likewise; only a refused class is null
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

void Checker::checkMom() {
    for (Finding &finding : momFindings(*this))
        _findings.push_back(std::move(finding));
}

bool Checker::mayBeDeclaredIn(std::uint32_t owner, std::string_view name) const {
    return _parser.skipped(name, owner) || _shiftedWords.count({owner, RtiStringUtility::toupper(name)}) > 0;
}

std::size_t Checker::numLostNames(std::uint32_t owner) const {
    return _parser.numLostNames(owner) + _lostNames.count(owner);
}

std::uint32_t Checker::offsetOfWord(RtiFedSpan span) const {
    return span.begin + (_parser.text()[span.begin] == '"' ? 1 : 0);
}

/// Gives the classes of the MOM their routing space, as loading does, as far as they exist.
void Checker::giveMomItsSpace() {
    auto *object = Objects::find(*_database, "ObjectRoot.Manager");
    auto *interaction = Interactions::find(*_database, "InteractionRoot.Manager");
    if (!object && !interaction)
        return;
    _database->createMomDefaultSpace();
    const RtiSpaceHandle space = _database->getRoutingSpaceHandle(RtiFedDatabase::_momDefaultSpace);
    if (object)
        _database->setMomDefaultSpaceForAttributes(object, space);
    if (interaction)
        _database->setMomDefaultSpaceForInteractionClasses(interaction, space);
}

void Checker::report(RuleId rule, Argument argument, std::string text, std::string_view particular) {
    // unreached: likewise
    if (_findings.size() == kMaxErrors)
        return;
    _findings.push_back({&ruleOf(rule), _parser.span(argument), std::move(text)});
    _findings.back().setParticular(particular);
}

void Checker::reportRepeated(RuleId rule, std::string text, Declarations::Record first, std::string_view particular) {
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
Finding Checker::withSuggestion(Finding finding, const Suggestion &suggestion) const {
    const std::string &meant = suggestion.word;
    const std::string_view word = _declarations.wordAt(*finding.span);
    if (meant.empty() || RtiStringUtility::toupper(word) == RtiStringUtility::toupper(meant))
        return finding;
    finding.text += didYouMean(meant);
    // A keyword that is not allowed here is often right, and its place wrong.
    const bool isMisplaced =
        finding.rule == &ruleOf(RtiFedParser::expectedClause) && !RtiFedParser::keyword(word).empty();
    finding.fix = {{{*finding.span, asWord(meant)}}, suggestion.isSure && !isMisplaced};
    return finding;
}
