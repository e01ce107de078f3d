#include "tool/Checker.hh"

#include "fed/mom/RtiFedDatabaseMomVerifier.hh"

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

std::string_view lastComponent(std::string_view className) {
    return className.substr(className.rfind('.') + 1);
}

std::string join(const std::vector<std::string> &names) {
    std::string joined;
    for (const std::string &name : names)
        joined += (joined.empty() ? "" : ", ") + name;
    return joined;
}

/// Adds a line for each class of the MOM of which something is missing, but for names that stand in text that was not
/// understood; returns how many names are missing.
template <class Tree>
std::size_t describeMissing(const RtiFedDatabase &db, const RtiFedParser &parser, std::vector<std::string> &lines) {
    std::size_t count = 0;
    for (auto &[className, classMissing, members] : Tree::missing(db)) {
        classMissing = classMissing && !parser.skipped(lastComponent(className));
        members.erase(std::remove_if(members.begin(), members.end(),
                                     [&parser](const std::string &member) { return parser.skipped(member); }),
                      members.end());
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
    if (_parser.nestingKnown())
        checkMom();
    std::stable_sort(_findings.begin(), _findings.end(), comesBefore);
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

void Checker::addObjectClassAttribute(std::string name, std::string transportationName, std::string orderingName,
                                      std::string spaceName) {
    const std::string owner = "the attribute " + quoted(name);
    const RtiTransportationHandle transport = transportation(transportationName, owner);
    const RtiOrderingHandle order = ordering(orderingName, owner);
    const RtiSpaceHandle inSpace = space(spaceName, owner);
    addMember<Objects>(_objectClass, name, [&] {
        _database.addObjectClassAttribute(_objectClass, name, transport, order, inSpace);
        return _objectClass->getAttribute(_objectClass->getNumberOfAttributes() - 1);
    });
}

void Checker::addInteractionClass(std::string name, std::string transportationName, std::string orderingName,
                                  std::string spaceName) {
    const std::string owner = "the interaction class " + quoted(name);
    const RtiTransportationHandle transport = transportation(transportationName, owner);
    const RtiOrderingHandle order = ordering(orderingName, owner);
    const RtiSpaceHandle inSpace = space(spaceName, owner);
    _interactionClass =
        addClass<Interactions>(name, [&] { return _database.addInteractionClass(name, transport, order, inSpace); });
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

RtiTransportationHandle Checker::transportation(const std::string &name, const std::string &owner) {
    try {
        if (_parser.given(1)) // else its absence was reported
            return _database.getTransportationHandle(name);
    } catch (const RTI::NameNotFound &) {
        find(1, "unknown transportation " + quoted(name) + " of " + owner + ", expected reliable or best_effort");
    }
    return 0;
}

RtiOrderingHandle Checker::ordering(const std::string &name, const std::string &owner) {
    try {
        if (_parser.given(2))
            return _database.getOrderingHandle(name);
    } catch (const RTI::NameNotFound &) {
        find(2, "unknown ordering " + quoted(name) + " of " + owner + ", expected timestamp or receive");
    }
    return 0;
}

RtiSpaceHandle Checker::space(const std::string &name, const std::string &owner) {
    try {
        if (!name.empty())
            return _database.getRoutingSpaceHandle(name);
    } catch (const RTI::NameNotFound &) {
        if (!_parser.skipped(name))
            find(3, "unknown routing space " + quoted(name) + " of " + owner +
                        ", expected the name of a space that the file declares");
    }
    return 0;
}

void Checker::checkMom() {
    std::vector<std::string> lines;
    const std::size_t count =
        describeMissing<Objects>(_database, _parser, lines) + describeMissing<Interactions>(_database, _parser, lines);
    if (count > 0) {
        find(0, "the Management Object Model (MOM) is incomplete, " + std::to_string(count) +
                    (count == 1 ? " name is missing:" : " names are missing:"));
        _findings.back().details = std::move(lines);
    }
    checkMomPlace<Objects>();
    checkMomPlace<Interactions>();
}

/// The MOM is found without its root, but the database gives it its space by its full name.
template <class Tree>
void Checker::checkMomPlace() {
    const auto *manager = Tree::find(_database, "Manager");
    if (!manager || Tree::find(_database, std::string(Tree::root) + ".Manager"))
        return;
    _findings.push_back({_declarations.at(manager).position,
                         std::string("the ") + Tree::kind + " \"Manager\" of the MOM stands alone, expected it in \"" +
                             Tree::root + "\"",
                         {}});
}

void Checker::declared(const void *record) {
    _declarations.emplace(record, Declaration{_parser.position(), _clause});
}

std::string Checker::firstPlace(const void *record) const {
    const RtiFedPosition first = _declarations.at(record).position;
    return ", the first is at " + std::to_string(first.line) + ":" + std::to_string(first.column);
}

void Checker::find(std::size_t argument, std::string text) {
    _findings.push_back({_parser.position(argument), std::move(text), {}});
}

void Checker::findIfNestingKnown(std::string text) {
    if (_parser.nestingKnown())
        find(0, std::move(text));
}
