#include "tool/Checker.hh"

#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

std::string quoted(std::string_view name) {
    return '"' + RtiFedParser::printable(name) + '"';
}

/// How the checker asks one of the two class trees.
struct Objects {
    using Node = RtiFedObjectClass;
    using Member = RtiFedAttribute;
    static constexpr const char *kind = "object class";
    static constexpr const char *member = "attribute";
    static constexpr const char *root = "ObjectRoot";

    static Node *find(const RtiFedDatabase &db, std::string_view name) {
        return db.objectClassExists(name) ? db.find(db.getObjectClassHandle(name)) : nullptr;
    }
    static Member *findMember(const Node &node, std::string_view name) {
        return node.attributeExists(name) ? node.find(node.getAttributeHandle(name)) : nullptr;
    }
    static auto missing(const RtiFedDatabase &db) { return RtiFedDatabaseMomVerifier::missingObjectClasses(db); }
};

struct Interactions {
    using Node = RtiFedInteractionClass;
    using Member = RtiFedParameter;
    static constexpr const char *kind = "interaction class";
    static constexpr const char *member = "parameter";
    static constexpr const char *root = "InteractionRoot";

    static Node *find(const RtiFedDatabase &db, std::string_view name) {
        return db.interactionClassExists(name) ? db.find(db.getInteractionClassHandle(name)) : nullptr;
    }
    static Member *findMember(const Node &node, std::string_view name) { return node.findParameter(name); }
    static auto missing(const RtiFedDatabase &db) { return RtiFedDatabaseMomVerifier::missingInteractionClasses(db); }
};

template <class LookUp>
bool isKnown(LookUp lookUp) {
    try {
        lookUp();
        return true;
    } catch (const RTI::NameNotFound &) {
        return false;
    }
}

std::string_view lastComponent(std::string_view className) {
    return className.substr(className.rfind('.') + 1);
}

std::string join(const std::vector<std::string> &names) {
    std::string joined;
    for (const std::string &name : names)
        joined += (joined.empty() ? "" : ", ") + name;
    return joined;
}

/// Adds a line for each class of the MOM of which something is missing, but for names that `mayStand` in what was not
/// understood; returns how many names are missing.
template <class Tree, class MayStand>
std::size_t describeMissing(const RtiFedDatabase &db, MayStand mayStand, std::vector<std::string> &lines) {
    std::size_t count = 0;
    for (auto &[className, classMissing, members] : Tree::missing(db)) {
        classMissing = classMissing && !mayStand(lastComponent(className));
        members.erase(std::remove_if(members.begin(), members.end(), mayStand), members.end());
        count += members.size() + (classMissing ? 1 : 0);
        const std::string memberNoun = std::string(Tree::member) + (members.size() == 1 ? " " : "s ");
        if (classMissing)
            lines.push_back(std::string("the ") + Tree::kind + " " + className +
                            (members.empty() ? "" : " with the " + memberNoun + join(members)));
        else if (!members.empty())
            lines.push_back("the " + memberNoun + join(members) + " of the " + Tree::kind + " " + className);
    }
    return count;
}

} // namespace

bool comesBefore(const Finding &a, const Finding &b) {
    const auto place = [](const Finding &f) {
        return std::make_tuple(!f.details.empty(), f.position.line, f.position.column);
    };
    return place(a) < place(b);
}

Checker::Checker(std::string text)
    : _parser(std::move(text)), _database(RtiFedDatabaseConstructorArg(std::string(), RTI_false)) {
    _parser.deliver(*this);
    if (_parser.nestingKnown() && _parser.classesKnown() && !_shiftedInClass)
        checkMom();
    completeMom();
    std::stable_sort(_findings.begin(), _findings.end(), comesBefore);
    if (_findings.size() >= kMaxErrors)
        _findings.push_back({_findings.back().position, "more was found than is shown", {}});
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
}

void Checker::addDimension(std::string name) {
    if (_space->dimensionExists(name)) {
        const RtiFedDimension *first = _space->find(_space->getDimensionHandle(name));
        return find(0, "the dimension " + quoted(name) + " is declared a second time in the space " +
                           quoted(_space->getName()) + firstPlace(first));
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
            findIfNestingKnown(subject + " is declared a second time" + firstPlace(existing));
        else
            findIfNestingKnown(subject + " cannot stand beside " + quoted(existing->getName()) +
                               ", which is found without \"" + Tree::root + ".\" as well" + firstPlace(existing));
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
            find(0, std::string("the ") + Tree::kind + " " + quoted(name) + " is refused: " + refused._reason);
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
            findIfNestingKnown(subject + " of " + quoted(owner->getName()) +
                               " is declared again: it is inherited from " + quoted(node->getName()) +
                               firstPlace(first));
        else if (sameClause || !_repeated)
            findIfNestingKnown(subject + " is declared a second time in " + quoted(owner->getName()) +
                               firstPlace(first));
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
    const auto isTransportation = [this](const std::string &word) {
        return isKnown([&] { _database.getTransportationHandle(word); });
    };
    const auto isOrdering = [this](const std::string &word) {
        return isKnown([&] { _database.getOrderingHandle(word); });
    };
    // A word too many or too few shifts those behind it: one slip, not three.
    if (_parser.given(3) && isOrdering(space)) {
        if (!isTransportation(transportation) && isTransportation(ordering))
            return findShift(1, "unknown transportation", transportation, owner, "a word too many");
        if (isTransportation(transportation) && !isOrdering(ordering))
            return findShift(2, "unknown ordering", ordering, owner, "a word too many");
    }
    if (_parser.given(2) && !_parser.given(3) && isOrdering(transportation) && !isOrdering(ordering))
        return findShift(1, "unknown transportation", transportation, owner, "a word is missing");
    if (!_parser.given(2)) // one of the two words is missing, and was reported
        return known;
    if (isTransportation(transportation))
        known.transportation = _database.getTransportationHandle(transportation);
    else
        find(1, "unknown transportation " + quoted(transportation) + " of " + owner +
                    ", expected reliable or best_effort");
    if (isOrdering(ordering))
        known.ordering = _database.getOrderingHandle(ordering);
    else
        find(2, "unknown ordering " + quoted(ordering) + " of " + owner + ", expected timestamp or receive");
    if (space.empty())
        return known;
    if (isKnown([&] { _database.getRoutingSpaceHandle(space); }))
        known.space = _database.getRoutingSpaceHandle(space);
    else if (_parser.spacesKnown() && !_parser.skipped(space))
        find(3, "unknown routing space " + quoted(space) + " of " + owner +
                    ", expected the name of a space that the file declares");
    return known;
}

Checker::Properties Checker::findShift(std::size_t argument, const std::string &unknown, const std::string &word,
                                       const std::string &owner, const std::string &reason) {
    find(argument, unknown + " " + quoted(word) + " of " + owner + ", " + reason);
    _shiftedWords.push_back(RtiStringUtility::toupper(word)); // it may be the name that was meant
    return {};
}

void Checker::checkMom() {
    const auto mayStand = [this](std::string_view name) {
        const auto isShifted = std::find(_shiftedWords.begin(), _shiftedWords.end(), RtiStringUtility::toupper(name));
        return isShifted != _shiftedWords.end() || _parser.skipped(name);
    };
    std::vector<std::string> lines;
    const std::size_t count = describeMissing<Objects>(_database, mayStand, lines) +
                              describeMissing<Interactions>(_database, mayStand, lines);
    if (count > _parser.numLostNames()) // else those may be the missing
        _findings.push_back({_parser.position(),
                             "the Management Object Model (MOM) is incomplete, " + std::to_string(count) +
                                 (count == 1 ? " name is missing:" : " names are missing:"),
                             std::move(lines)});
    checkMomPlace<Objects>();
    checkMomPlace<Interactions>();
}

/// The MOM is found without its root, but the database gives it its space by its full name.
template <class Tree>
void Checker::checkMomPlace() {
    const auto *manager = Tree::find(_database, "Manager");
    if (!manager || Tree::find(_database, std::string(Tree::root) + ".Manager"))
        return;
    _findings.push_back({*place(manager),
                         std::string("the ") + Tree::kind + " \"Manager\" of the MOM stands alone, expected it in \"" +
                             Tree::root + "\"",
                         {}});
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

std::optional<RtiFedPosition> Checker::place(const void *record) const {
    const auto declared = _declarations.find(record);
    if (declared == _declarations.end())
        return {};
    return _parser.positionAt(declared->second.arguments[0].begin);
}

std::string Checker::written(const void *record, std::size_t argument) const {
    const auto declared = _declarations.find(record);
    if (declared == _declarations.end())
        return {};
    const RtiFedSpan span = declared->second.arguments.at(argument);
    std::string_view word = _parser.text().substr(span.begin, span.length);
    if (!word.empty() && word.front() == '"')
        word = word.substr(1, word.size() - 2);
    return std::string(word);
}

std::string Checker::firstPlace(const void *record) const {
    const RtiFedPosition first = *place(record);
    return ", the first is at " + std::to_string(first.line) + ":" + std::to_string(first.column);
}

void Checker::find(std::size_t argument, std::string text) {
    if (_findings.size() < kMaxErrors)
        _findings.push_back({_parser.position(argument), std::move(text), {}});
}

void Checker::findIfNestingKnown(std::string text) {
    if (_parser.nestingKnown())
        find(0, std::move(text));
}
