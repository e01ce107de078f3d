#include "fed/RtiFedDatabase.hh"

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "fed/loading/RtiFedReport.hh"
#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "infrastructure/RtiFedParser.hh"
#include "infrastructure/RtiStringUtility.hh"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

constexpr const char *kNotFound = " not found in FED file.";

/// A transportation or ordering: its handle, its name, and the short form that is accepted beside it.
struct FixedName {
    unsigned long handle;
    std::string_view name;
    std::string_view shortName;
};

constexpr FixedName kTransportations[] = {{2, "RTI_RELIABLE", "RELIABLE"}, {1, "RTI_BEST_EFFORT", "BEST_EFFORT"}};
constexpr FixedName kOrderings[] = {{2, "RTI_TIME_STAMP_ORDERING", "TIMESTAMP"},
                                    {1, "RTI_RECEIVE_ORDERING", "RECEIVE"}};

const FixedName *findFixed(const FixedName (&names)[2], std::string_view name) {
    for (const FixedName &fixed : names)
        if (RtiFedName::equalUpper(name, fixed.shortName) || RtiFedName::equalUpper(name, fixed.name))
            return &fixed;
    return nullptr;
}

const FixedName *findFixed(const FixedName (&names)[2], unsigned long handle) {
    for (const FixedName &fixed : names)
        if (handle == fixed.handle)
            return &fixed;
    return nullptr;
}

/// Takes the parser's views directly: nobody derives from it who would want the strings.
class Builder final : public RtiFedDatabaseCodegen {
public:
    using RtiFedDatabaseCodegen::RtiFedDatabaseCodegen;

    void declareObjectClass(std::string_view name, std::size_t numAttributes) override {
        buildObjectClass(name, numAttributes);
    }
    void declareObjectClassAttribute(std::string_view name, std::string_view transportation, std::string_view ordering,
                                     std::string_view space) override {
        buildObjectClassAttribute(name, transportation, ordering, space);
    }
    void declareInteractionClass(std::string_view name, std::string_view transportation, std::string_view ordering,
                                 std::string_view space, std::size_t numParameters) override {
        buildInteractionClass(name, transportation, ordering, space, numParameters);
    }
    void declareParameter(std::string_view name) override { buildParameter(name); }
};

/// Refuses a class of an image that is not among the descendants of the one above it, or has others than that.
void checkDescendants(const RtiFedObjectClass &node, std::size_t byte) {
    const RtiFedObjectClass *above = node.getParentClass();
    if (above && !above->hasDerrivedClass(node.getHandle()))
        refuseImage(byte, "the class ", node.getName(), " is no descendant of ", above->getName(), " above it");
    if (above && !above->descendants().containsAll(node.descendants()))
        refuseImage(byte, "not all descendants of the class ", node.getName(), " are descendants of ", above->getName(),
                    " above it");
}

/// The full name of the class above, if a class has one.
std::optional<std::string_view> superclassOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::nullopt : std::make_optional(name.substr(0, dot));
}

/// The class of this very full name, if it is `from` or stands above it.
template <class Node>
Node *upwardFrom(Node *from, std::string_view name) {
    for (; from; from = from->getParentClass())
        if (from->RtiFedElement::getName() == name)
            return from;
    return nullptr;
}

template <class Handle>
Handle next(Handle &counter) {
    // Signed counters go round as well: an image may have set one to the greatest number there is.
    using Value = decltype(counter._value);
    counter._value = static_cast<Value>(static_cast<unsigned long>(counter._value) + 1);
    return counter;
}

} // namespace

const RtiFedField<RtiFedDatabase> RtiFedDatabase::_fields[] = {
    {"_fedName", [](const RtiFedDatabase &d) { return fieldText(d._fedName); }},
    {"_fedVersion", [](const RtiFedDatabase &d) { return fieldText(d._fedVersion); }},
    {"size _objectClassNameMap", [](const RtiFedDatabase &d) { return fieldText(d._objectClasses.numNames()); }},
    {"size _objectClassHandleMap", [](const RtiFedDatabase &d) { return fieldText(d._objectClasses.numHandles()); }},
    {"size _interactionClassNameMap",
     [](const RtiFedDatabase &d) { return fieldText(d._interactionClasses.numNames()); }},
    {"size _interactionClassHandleMap",
     [](const RtiFedDatabase &d) { return fieldText(d._interactionClasses.numHandles()); }},
    {"size _spaceNameMap", [](const RtiFedDatabase &d) { return fieldText(d._spaceNameMap.size()); }},
    {"size _spaceHandleMap", [](const RtiFedDatabase &d) { return fieldText(d._spaceHandleMap.size()); }},
    {"_nextSpaceHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextSpaceHandle); }},
    {"_nextObjectClassHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextObjectClassHandle); }},
    {"_nextAttributeHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextAttributeHandle); }},
    {"_nextInteractionClassHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextInteractionClassHandle); }},
    {"_nextParameterHandle", [](const RtiFedDatabase &d) { return fieldText(d._nextParameterHandle); }},
    {"_fileName", [](const RtiFedDatabase &d) { return fieldText(d._fileName); }}};

// ---- Construction

RtiFedDatabase::RtiFedDatabase(const RtiFedDatabaseConstructorArg &arg) : _fileName(arg.fedDatabaseName()) {
    if (!arg.buildFromFileOrLeaveEmpty())
        return;
    std::FILE *file = std::fopen(_fileName.c_str(), "r");
    if (!file) {
        rtiFedReport(RTI_G_high, "\"RtiFedDatabase\", line 60: \nCould not open FED file " + _fileName);
        throw RTI::CouldNotOpenFED(_fileName.c_str());
    }
    buildFromFed(file);
}

RtiFedDatabase::RtiFedDatabase(RtiBuffer &buffer) {
    RtiFedDatabase::restore(buffer);
}

RtiFedDatabase::~RtiFedDatabase() = default;

void RtiFedDatabase::buildFromFed(std::FILE *file) {
    parse(file);
    std::string reason;
    if (!verifyMomObjectClasses(reason))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 89:  MOM error: ", reason);
    if (!verifyMomInteractionClasses(reason))
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 95:  MOM error: ", reason);
    createMomDefaultSpace();
    setMomDefaultSpace();
}

void RtiFedDatabase::parse(std::FILE *file) {
    Builder codegen(this);
    // A parser reports a syntax error as a text, ours as a string; the exceptions of the callbacks pass through.
    try {
        RtiFedParser_Class_main(file, &codegen); // which closes the file
    } catch (const std::string &reason) {
        couldNotParse("\"RtiFedDatabase\", line 73: ", "\"RtiFedDatabase\", line 75: ", reason);
    } catch (const char *reason) {
        couldNotParse("\"RtiFedDatabase\", line 80: ", "\"RtiFedDatabase\", line 82: ", reason);
    }
}

void RtiFedDatabase::couldNotParse(const char *atFile, const char *atReason, const std::string &reason) const {
    rtiFedReport(RTI_G_high, atFile + ("\nCould not parse FED file " + _fileName) + "\n" + atReason + reason);
    throw RTI::ErrorReadingFED(_fileName.c_str());
}

// ---- Building

void RtiFedDatabase::setFederateName(std::string name) {
    _fedName = std::move(name);
}

void RtiFedDatabase::setFederateVersion(std::string version) {
    _fedVersion = std::move(version);
}

/// A handle that was just handed out, unless its counter went round. Throws RTI::RTIinternalError.
template <class Handle>
Handle RtiFedDatabase::unused(const Handle &handle) const {
    if (handle == 0 || find(handle))
        rtiFedRaise<RTI::RTIinternalError>("the handle ", toString(handle._value), " is 0 or in use: none is left");
    return handle;
}

RtiSpaceHandle RtiFedDatabase::createSpaceHandle() {
    return next(_nextSpaceHandle);
}

RtiObjectClassHandle RtiFedDatabase::createObjectClassHandle() {
    return next(_nextObjectClassHandle);
}

RtiAttributeHandle RtiFedDatabase::createAttributeHandle() {
    return next(_nextAttributeHandle);
}

RtiInteractionClassHandle RtiFedDatabase::createInteractionClassHandle() {
    return next(_nextInteractionClassHandle);
}

RtiParameterHandle RtiFedDatabase::createParameterHandle() {
    return next(_nextParameterHandle);
}

RtiFedObjectClass *RtiFedDatabase::addObjectClass(std::string name) {
    return addObjectClass(RtiDottedClassname(std::move(name)));
}

RtiFedObjectClass *RtiFedDatabase::addObjectClass(const RtiDottedClassname &name) {
    return declareObjectClass(name.getClassname(), nullptr);
}

RtiFedObjectClass *RtiFedDatabase::declareObjectClass(std::string_view name, RtiFedObjectClass *last) {
    const auto key = _objectClasses.keyOf(name);
    if (_objectClasses.handleOf(key) != 0)
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 202:  The object class ", name, " already exists.");
    RtiFedObjectClass *parent = nullptr;
    if (const auto superclass = superclassOf(name)) {
        parent = upwardFrom(last, *superclass);
        if (!parent)
            parent = find(getObjectClassHandle(*superclass));
        if (!parent)
            rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabase\", line 222: FED Object Superclass Not Known");
    }
    auto made = _objectClasses.make(unused(createObjectClassHandle()), std::string(name), parent);
    if (parent) { // first, since a class that its parent does not know would spoil the image
        parent->makeRoomForChildClass(made->getHandle());
        parent->makeRoomInAllFor(made->getHandle());
    }
    RtiFedObjectClass *added = _objectClasses.add(std::move(made), key);
    if (parent) {
        parent->addChildClass(added->getHandle());
        parent->addChildClassToAll(added->getHandle());
    }
    return added;
}

void RtiFedDatabase::addObjectClassAttribute(RtiFedObjectClass *objectClass, std::string name,
                                             RtiTransportationHandle transportation, RtiOrderingHandle ordering,
                                             RtiSpaceHandle space) {
    declareObjectClassAttribute(objectClass, RtiFedName(name), transportation, ordering, space);
}

void RtiFedDatabase::declareObjectClassAttribute(RtiFedObjectClass *objectClass, const RtiFedName &name,
                                                 const RtiTransportationHandle &transportation,
                                                 const RtiOrderingHandle &ordering, const RtiSpaceHandle &space) {
    if (!objectClass)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabase\", line 523: ");
    const RtiAttributeHandle handle = createAttributeHandle();
    const bool mapped = _attributeObjectClassMap.insert(handle, objectClass->getHandle()._value);
    try {
        objectClass->addAttribute(handle, name, transportation, ordering, space);
    } catch (...) {
        if (mapped)
            _attributeObjectClassMap.erase(handle);
        throw;
    }
}

RtiFedInteractionClass *RtiFedDatabase::addInteractionClass(std::string name, RtiTransportationHandle transportation,
                                                            RtiOrderingHandle ordering, RtiSpaceHandle space) {
    return declareInteractionClass(name, transportation, ordering, space, nullptr);
}

RtiFedInteractionClass *RtiFedDatabase::declareInteractionClass(std::string_view name,
                                                                const RtiTransportationHandle &transportation,
                                                                const RtiOrderingHandle &ordering,
                                                                const RtiSpaceHandle &space,
                                                                RtiFedInteractionClass *last) {
    const auto key = _interactionClasses.keyOf(name);
    if (_interactionClasses.handleOf(key) != 0)
        rtiFedRaise<RTI::ErrorReadingFED>("\"RtiFedDatabase\", line 567:  The interaction class ", name,
                                          " already exists.");
    RtiFedInteractionClass *parent = nullptr;
    if (const auto superclass = superclassOf(name)) {
        parent = upwardFrom(last, *superclass);
        if (!parent)
            parent = find(getInteractionClassHandle(*superclass));
        if (!parent)
            rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabase\", line 587: FED Interaction Superclass Not Known");
    }
    auto made = _interactionClasses.make(unused(createInteractionClassHandle()), std::string(name), parent,
                                         transportation, ordering, space);
    if (parent)
        parent->makeRoomForChildClass(made->getHandle());
    RtiFedInteractionClass *added = _interactionClasses.add(std::move(made), key);
    if (parent) // only the parent learns of it: an interaction class knows no further descendants
        parent->addChildClass(added->getHandle());
    return added;
}

RtiFedSpace *RtiFedDatabase::addSpace(std::string name) {
    return own(std::make_unique<RtiFedSpace>(unused(createSpaceHandle()), std::move(name)));
}

/// Enters a space whose handle is free; a name that is taken keeps its first space. If memory runs out, nothing has
/// changed.
RtiFedSpace *RtiFedDatabase::own(std::unique_ptr<RtiFedSpace> space) {
    RtiFedSpace *added = space.get();
    const RtiSpaceHandle handle = added->getHandle();
    _spaceHandleMap.insert(handle, std::move(space));
    try {
        _spaceNameMap.insert(added->getName(), added); // NOLINT(clang-analyzer-cplusplus.NewDelete): the map has it
    } catch (...) {
        _spaceHandleMap.erase(handle);
        throw;
    }
    return added;
}

void RtiFedDatabase::addSpaceDimension(RtiFedSpace *space, std::string name) {
    if (!space)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabase\", line 666: ");
    space->addDimension(std::move(name));
}

void RtiFedDatabase::createMomDefaultSpace() {
    addSpace(_momDefaultSpace);
}

void RtiFedDatabase::setMomDefaultSpace() {
    const RtiSpaceHandle space = getRoutingSpaceHandle(_momDefaultSpace);
    setMomDefaultSpaceForAttributes(find(getObjectClassHandle("ObjectRoot.Manager")), space);
    setMomDefaultSpaceForInteractionClasses(find(getInteractionClassHandle("InteractionRoot.Manager")), space);
}

void RtiFedDatabase::setMomDefaultSpaceForAttributes(const RtiFedObjectClass *objectClass, RtiSpaceHandle space) {
    _objectClasses.forEachDerived(objectClass, [space](const RtiFedObjectClass &derived) {
        for (RtiFedAttribute &attribute : derived.members())
            if (attribute.getSpace() == 0)
                attribute.setSpace(space);
    });
}

void RtiFedDatabase::setMomDefaultSpaceForInteractionClasses(RtiFedInteractionClass *interactionClass,
                                                             RtiSpaceHandle space) {
    _interactionClasses.forEachDerived(interactionClass, [space](RtiFedInteractionClass &derived) {
        if (derived.getDefaultSpace() == 0)
            derived.setDefaultSpace(space);
    });
}

RTI_bool RtiFedDatabase::verifyMomObjectClasses(std::string &message) const {
    return RtiFedDatabaseMomVerifier::verifyMomObjectClasses(*this, message);
}

RTI_bool RtiFedDatabase::verifyMomInteractionClasses(std::string &message) const {
    return RtiFedDatabaseMomVerifier::verifyMomInteractionClasses(*this, message);
}

// ---- The database as a whole

unsigned long RtiFedDatabase::numObjectClasses() const {
    return static_cast<unsigned long>(_objectClasses.numNames());
}

unsigned long RtiFedDatabase::numInteractionClasses() const {
    return static_cast<unsigned long>(_interactionClasses.numNames());
}

unsigned long RtiFedDatabase::numSpaces() const {
    return static_cast<unsigned long>(_spaceNameMap.size());
}

template <class Database, class Visit>
void RtiFedDatabase::visitCounters(Database &database, Visit visit) {
    visit(database._nextSpaceHandle);
    visit(database._nextObjectClassHandle);
    visit(database._nextAttributeHandle);
    visit(database._nextInteractionClassHandle);
    visit(database._nextParameterHandle);
}

RTI_bool RtiFedDatabase::save(RtiBuffer &buffer) const {
    RtiStringUtility::putString(_fedName, buffer);
    RtiStringUtility::putString(_fedVersion, buffer);
    _objectClasses.save(buffer);
    _interactionClasses.save(buffer);
    buffer.put(numSpaces());
    for (const auto &[name, space] : _spaceNameMap.sorted())
        buffer.put(*space);
    buffer.put(static_cast<unsigned long>(_attributeObjectClassMap.size()));
    _attributeObjectClassMap.forEach([&buffer](const RtiAttributeHandle &attribute, unsigned long objectClass) {
        buffer.put(attribute);
        buffer.put(RtiObjectClassHandle(objectClass));
    });
    visitCounters(*this, [&buffer](const RtiSaveableType &counter) { buffer.put(counter); });
    RtiStringUtility::putString(_fileName, buffer);
    return RTI_true;
}

void RtiFedDatabase::restore(RtiBuffer &buffer) {
    try {
        restoreContents(buffer);
    } catch (...) {
        clear(); // nothing stays that was not checked
        throw;
    }
}

void RtiFedDatabase::restoreContents(RtiBuffer &buffer) {
    clear();
    _fedName = RtiStringUtility::getString(buffer);
    _fedVersion = RtiStringUtility::getString(buffer);

    AttributeClasses declared = restoreObjectClasses(buffer);
    const RtiParameterHandle greatestParameter = restoreInteractionClasses(buffer);
    restoreSpaces(buffer);
    const RtiAttributeHandle greatestAttribute = declared.greatest();
    restoreAttributeClasses(buffer, std::move(declared));

    const std::size_t byte = imageByte(buffer);
    visitCounters(*this, [&buffer](RtiSaveableType &counter) { buffer.get(counter); });
    if (_nextSpaceHandle < _spaceHandleMap.greatest() || _nextObjectClassHandle < _objectClasses.greatest() ||
        _nextAttributeHandle < greatestAttribute || _nextInteractionClassHandle < _interactionClasses.greatest() ||
        _nextParameterHandle < greatestParameter)
        refuseImage(byte, "a counter is below 0 or a handle that was handed out");
    _fileName = RtiStringUtility::getString(buffer);
}

/// Returns the classes that declare the attributes.
RtiFedDatabase::AttributeClasses RtiFedDatabase::restoreObjectClasses(RtiBuffer &buffer) {
    // If each class has all descendants of those below it, and all together have as many as there are pairs of a class
    // and one above it, then none has any other.
    bool inherited = true;
    std::size_t numDescendants = 0, numPairs = 0;
    const auto read =
        _objectClasses.restore(buffer, "object classes", [&](const RtiFedObjectClass &node, std::size_t numAbove) {
            const RtiFedObjectClass *above = node.getParentClass();
            inherited = inherited && (!above || (above->descendants().contains(node.getHandle()) &&
                                                 above->descendants().containsAll(node.descendants())));
            numDescendants += node.descendants().size();
            numPairs += numAbove;
        });
    const bool sound = read.linked && inherited && numDescendants == numPairs;
    AttributeClasses declared;
    declared.reserve(read.numMembers);
    for (const auto &[node, byte] : read.classes) {
        if (!sound)
            checkDescendants(*node, byte);
        node->members().forEachHandle([&, of = node, at = byte](const RtiAttributeHandle &attribute) {
            if (attribute == 0 || !declared.insert(attribute, of->getHandle()._value))
                refuseImage(at, "an attribute handle of the class ", of->getName(), " is 0 or stands twice");
        });
    }
    // With all that stand below a class among its descendants, an equal number says that there are no others. From the
    // end, where most images have the subclasses, so that the class is named whose own list is wrong.
    for (auto place = read.classes.rbegin(); !sound && place != read.classes.rend(); ++place) {
        const auto &[node, byte] = *place;
        std::size_t below = 0;
        node->children().forEach(
            [&](const RtiObjectClassHandle &child) { below += 1 + _objectClasses.find(child)->descendants().size(); });
        if (node->descendants().size() != below)
            refuseImage(byte, "not all descendants of the class ", node->getName(), " are below it");
    }
    return declared;
}

/// Returns the greatest parameter handle, 0 if there is none.
RtiParameterHandle RtiFedDatabase::restoreInteractionClasses(RtiBuffer &buffer) {
    // A set of handles. They come in the order of the class names, in which a set of runs would be slow.
    RtiFedHandleMap<RtiParameterHandle, unsigned char> handles;
    const auto read =
        _interactionClasses.restore(buffer, "interaction classes", [](const RtiFedInteractionClass &, std::size_t) {});
    handles.reserve(read.numMembers);
    for (const auto &[node, byte] : read.classes)
        node->members().forEachHandle([&, of = node, at = byte](const RtiParameterHandle &parameter) {
            if (parameter == 0 || !handles.insert(parameter, 1))
                refuseImage(at, "the parameter handle ", toString(parameter._value), " of the class ", of->getName(),
                            " is 0 or stands twice");
        });
    return handles.greatest();
}

void RtiFedDatabase::restoreSpaces(RtiBuffer &buffer) {
    for (unsigned long count = readCount(buffer, RtiFedSpace::_numImageValues, "spaces"); count > 0; --count) {
        const std::size_t byte = imageByte(buffer);
        auto space = std::make_unique<RtiFedSpace>(buffer);
        if (!(RtiSpaceHandle(0) < space->getHandle()) || find(space->getHandle()))
            refuseImage(byte, "the handle of the space ", space->getName(), " is below 1 or stands twice");
        if (_spaceNameMap.find(space->getName()))
            refuseImage(byte, "the space name ", space->getName(), " stands twice");
        own(std::move(space));
    }
}

void RtiFedDatabase::restoreAttributeClasses(RtiBuffer &buffer, AttributeClasses declared) {
    unsigned long count = readCount(buffer, 2, "pairs of attribute and class");
    const bool all = count == declared.size(); // a host may have declared some past the database
    for (RtiAttributeHandle last = 0; count > 0; --count) {
        const std::size_t byte = imageByte(buffer);
        unsigned long pair[2];
        buffer.get(pair, 2);
        const RtiAttributeHandle attribute = pair[0];
        const RtiObjectClassHandle objectClass = pair[1];
        const unsigned long *declaring = declared.find(attribute);
        if (!(last < attribute) || !declaring || objectClass != *declaring)
            refuseImage(byte, "the attribute handle ", toString(attribute._value),
                        " is out of order, or not declared by the class ", toString(objectClass._value));
        if (!all)
            _attributeObjectClassMap.insert(attribute, objectClass._value);
        last = attribute;
    }
    if (all)
        _attributeObjectClassMap = std::move(declared);
}

void RtiFedDatabase::clear() {
    _objectClasses.clear();
    _interactionClasses.clear();
    _spaceNameMap.clear();
    _spaceHandleMap.clear();
    _attributeObjectClassMap.clear();
    visitCounters(*this, [](auto &counter) { counter._value = 0; });
}

void RtiFedDatabase::dump(std::ostream &os) const {
    dumpFields(_fields, *this, os);
}

void RtiFedDatabase::diff(RtiBuffer &buffer, std::ostream &os) const {
    diffFields(_fields, *this, buffer, os);
}

unsigned long RtiFedDatabase::getChecksum() const {
    unsigned long checksum =
        checksumOf(_fedName) ^ checksumOf(_fedVersion) ^ _objectClasses.checksum() ^ _interactionClasses.checksum();
    for (const auto &[name, space] : _spaceNameMap.sorted())
        checksum ^= space->getChecksum();
    return checksum;
}

void RtiFedDatabase::dumpDatabase(std::ostream *os) const {
    *os << "FED DATABASE\n"
        << "Federation:  " + _fedName + "\n"
        << "Version: " + _fedVersion + "\n"
        << "Routing Space List:\n";
    _spaceHandleMap.forEach([&](const RtiSpaceHandle &handle, const auto &space) {
        *os << "  " + getRoutingSpaceName(handle) + " (HANDLE = " + toString(handle._value) + ") \n";
        for (unsigned long i = 0; i < space->getNumberOfDimensions(); ++i) {
            const RtiFedDimension &dimension = *space->getDimension(i);
            *os << "    " + dimension.getName() + " (HANDLE = " + toString(dimension.getHandle()._value) + ") \n";
        }
    });
    // Readers of the listing rely on its odd shape: parentheses that stay open, and blanks that differ between the
    // kinds.
    *os << "\nObject Class Name List:\n";
    _objectClasses.forEach([&](const RtiFedObjectClass &objectClass) {
        *os << "  " + objectClass.getName() + " (HANDLE = " + toString(objectClass.getHandle()._value) + ") \n";
        for (const RtiFedAttribute &attribute : objectClass.members())
            *os << "    " + attribute.getName() + " (HANDLE = " + toString(attribute.getHandle()._value) + ")  " +
                       getTransportationName(attribute.getTransport()) + "  " +
                       getOrderingName(attribute.getOrdering()) + "  " +
                       (attribute.getSpace() == 0 ? "(spaceHandle= 0"
                                                  : "(space= " + getRoutingSpaceName(attribute.getSpace())) +
                       "\n";
    });
    *os << "\nInteractions List:\n";
    _interactionClasses.forEach([&](const RtiFedInteractionClass &interactionClass) {
        const RtiSpaceHandle space = interactionClass.getDefaultSpace();
        *os << "  " + interactionClass.getName() + "   (HANDLE = " + toString(interactionClass.getHandle()._value) +
                   ") " + getTransportationName(interactionClass.getDefaultTransport()) + "  " +
                   getOrderingName(interactionClass.getDefaultOrdering()) + "  " +
                   (space == 0 ? "" : "(Space= " + getRoutingSpaceName(space)) + "\n";
        for (const RtiFedParameter &parameter : interactionClass.members())
            *os << "    " + parameter.getName() + "\n";
    });
}

// ---- Names and handles

RTI_bool RtiFedDatabase::objectClassExists(RtiObjectClassHandle handle) const {
    return find(handle) ? RTI_true : RTI_false;
}

RTI_bool RtiFedDatabase::objectClassExists(std::string_view name) const {
    return _objectClasses.handleOf(name) != 0 ? RTI_true : RTI_false;
}

RTI_bool RtiFedDatabase::interactionClassExists(RtiInteractionClassHandle handle) const {
    return find(handle) ? RTI_true : RTI_false;
}

RTI_bool RtiFedDatabase::interactionClassExists(std::string_view name) const {
    return _interactionClasses.handleOf(name) != 0 ? RTI_true : RTI_false;
}

RtiFedSpace *RtiFedDatabase::find(RtiSpaceHandle handle) const {
    const auto *found = _spaceHandleMap.find(handle);
    return found ? found->get() : nullptr;
}

RtiFedInteractionClass *RtiFedDatabase::find(RtiInteractionClassHandle handle) const {
    return _interactionClasses.find(handle);
}

RtiFedObjectClass *RtiFedDatabase::find(RtiObjectClassHandle handle) const {
    return _objectClasses.find(handle);
}

RtiObjectClassHandle RtiFedDatabase::getObjectClassHandle(std::string_view name) const {
    RtiObjectClassHandle handle = _objectClasses.handleOf(name);
    if (handle != 0)
        return handle;
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1342: Object Class Name: ", name, kNotFound);
}

std::string RtiFedDatabase::getObjectClassName(RtiObjectClassHandle handle) const {
    if (const RtiFedObjectClass *objectClass = find(handle))
        return objectClass->getName();
    rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1368: ");
}

RtiAttributeHandle RtiFedDatabase::getAttributeHandle(std::string_view name, RtiObjectClassHandle objectClass) const {
    const RtiFedObjectClass *declaring = find(objectClass);
    if (!declaring)
        rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1397: ");
    const RtiFedName hashed(name);
    for (; declaring; declaring = declaring->getParentClass()) {
        const RtiFedAttribute *attribute = declaring->members().find(hashed);
        if (attribute && attribute->getHandle() != 0)
            return attribute->getHandle();
    }
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1410: Attribute Name: ", name,
                                   " of Object Class: ", toString(objectClass._value), kNotFound);
}

std::string RtiFedDatabase::getAttributeName(RtiAttributeHandle handle, RtiObjectClassHandle objectClass) const {
    const RtiFedObjectClass *declaring = find(objectClass);
    if (!declaring)
        rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1450: ");
    for (; declaring; declaring = declaring->getParentClass()) {
        std::string name = declaring->getAttributeName(handle);
        if (!name.empty())
            return name;
    }
    rtiFedRaise<RTI::AttributeNotDefined>("\"RtiFedDatabase\", line 1464: ");
}

RtiInteractionClassHandle RtiFedDatabase::getInteractionClassHandle(std::string_view name) const {
    RtiInteractionClassHandle handle = _interactionClasses.handleOf(name);
    if (handle != 0)
        return handle;
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1504: Interaction Class Name: ", name, kNotFound);
}

std::string RtiFedDatabase::getInteractionClassName(RtiInteractionClassHandle handle) const {
    if (const RtiFedInteractionClass *interactionClass = find(handle))
        return interactionClass->getName();
    rtiFedRaise<RTI::InteractionClassNotDefined>("\"RtiFedDatabase\", line 1533: ");
}

RtiParameterHandle RtiFedDatabase::getParameterHandle(std::string_view name,
                                                      RtiInteractionClassHandle interactionClass) const {
    const RtiFedInteractionClass *declaring = find(interactionClass);
    if (!declaring)
        rtiFedRaise<RTI::InteractionClassNotDefined>("\"RtiFedDatabase\", line 1562: ");
    const RtiFedName hashed(name);
    for (; declaring; declaring = find(declaring->getParentClassHandle()))
        if (const RtiFedParameter *parameter = declaring->members().find(hashed))
            return parameter->getHandle();
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1579: Parameter Name: ", name,
                                   " of Interaction Class: ", toString(interactionClass._value), kNotFound);
}

std::string RtiFedDatabase::getParameterName(RtiParameterHandle handle,
                                             RtiInteractionClassHandle interactionClass) const {
    const RtiFedInteractionClass *declaring = find(interactionClass);
    if (!declaring)
        rtiFedRaise<RTI::InteractionClassNotDefined>("\"RtiFedDatabase\", line 1611: ");
    for (; declaring; declaring = find(declaring->getParentClassHandle()))
        if (const RtiFedParameter *parameter = declaring->find(handle))
            return parameter->getName();
    rtiFedRaise<RTI::InteractionParameterNotDefined>("\"RtiFedDatabase\", line 1628: ");
}

RtiSpaceHandle RtiFedDatabase::getRoutingSpaceHandle(std::string_view name) const {
    if (const RtiFedSpace *space = _spaceNameMap.find(name))
        return space->getHandle();
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1651: Routing Space Name: ", name, kNotFound);
}

std::string RtiFedDatabase::getRoutingSpaceName(RtiSpaceHandle handle) const {
    if (const RtiFedSpace *space = find(handle))
        return space->getName();
    rtiFedRaise<RTI::SpaceNotDefined>("\"RtiFedDatabase\", line 1679: ");
}

RtiDimensionHandle RtiFedDatabase::getDimensionHandle(std::string_view name, RtiSpaceHandle space) const {
    if (const RtiFedSpace *found = find(space))
        return found->getDimensionHandle(name);
    rtiFedRaise<RTI::SpaceNotDefined>("\"RtiFedDatabase\", line 1706: ");
}

std::string RtiFedDatabase::getDimensionName(RtiDimensionHandle handle, RtiSpaceHandle space) const {
    if (const RtiFedSpace *found = find(space))
        return found->getDimensionName(handle);
    rtiFedRaise<RTI::SpaceNotDefined>("\"RtiFedDatabase\", line 1734: ");
}

RtiSpaceHandle RtiFedDatabase::getAttributeRoutingSpaceHandle(RtiAttributeHandle attribute,
                                                              RtiObjectClassHandle objectClass) const {
    const RtiFedObjectClass *found = find(objectClass);
    if (!found)
        rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1767: ");
    if (const RtiFedAttribute *record = found->findRecurse(attribute))
        return record->getSpace();
    rtiFedRaise<RTI::AttributeNotDefined>("\"RtiFedDatabase\", line 1772: ");
}

RtiSpaceHandle RtiFedDatabase::getInteractionRoutingSpaceHandle(RtiInteractionClassHandle interactionClass) const {
    if (const RtiFedInteractionClass *found = find(interactionClass))
        return found->getDefaultSpace();
    rtiFedRaise<RTI::InteractionClassNotDefined>("\"RtiFedDatabase\", line 1800: ");
}

RtiTransportationHandle RtiFedDatabase::getTransportationHandle(std::string_view name) const {
    if (const FixedName *transportation = findFixed(kTransportations, name))
        return transportation->handle;
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1833: Transportation Name: ", name, kNotFound);
}

std::string RtiFedDatabase::getTransportationName(RtiTransportationHandle handle) const {
    if (const FixedName *transportation = findFixed(kTransportations, handle._value))
        return std::string(transportation->name);
    rtiFedRaise<RTI::InvalidTransportationHandle>("\"RtiFedDatabase\", line 1867: ");
}

RtiOrderingHandle RtiFedDatabase::getOrderingHandle(std::string_view name) const {
    if (const FixedName *ordering = findFixed(kOrderings, name))
        return ordering->handle;
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1899: Ordering Name: ", name, kNotFound);
}

std::string RtiFedDatabase::getOrderingName(RtiOrderingHandle handle) const {
    if (const FixedName *ordering = findFixed(kOrderings, handle._value))
        return std::string(ordering->name);
    rtiFedRaise<RTI::InvalidOrderingHandle>("\"RtiFedDatabase\", line 1932: ");
}

// ---- Handle sets and derivation

std::set<RtiObjectClassHandle> RtiFedDatabase::getObjectClassHandleSet() const {
    return _objectClasses.handles();
}

std::set<RtiAttributeHandle> RtiFedDatabase::getAttributeHandleSet() const {
    std::set<RtiAttributeHandle> attributes;
    _objectClasses.forEach([&attributes](const RtiFedObjectClass &objectClass) {
        for (const RtiFedAttribute &attribute : objectClass.members())
            attributes.insert(attributes.end(), attribute.getHandle());
    });
    return attributes;
}

std::set<RtiInteractionClassHandle> RtiFedDatabase::getInteractionClassHandleSet() const {
    return _interactionClasses.handles();
}

std::set<RtiSpaceHandle> RtiFedDatabase::getRoutingSpaceHandleSet() const {
    std::set<RtiSpaceHandle> spaces;
    _spaceHandleMap.forEach([&spaces](const RtiSpaceHandle &handle, const auto &) { spaces.insert(handle); });
    return spaces;
}

RtiObjectClassHandle RtiFedDatabase::getRealObjectClassHandle(RtiObjectClassHandle,
                                                              RtiAttributeHandle attribute) const {
    const unsigned long *declaring = _attributeObjectClassMap.find(attribute);
    return declaring ? *declaring : 0;
}

void RtiFedDatabase::getDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                    std::set<RtiObjectClassHandle> &derived) const {
    _objectClasses.forEachDerived(find(objectClass),
                                  [&derived](const RtiFedObjectClass &node) { derived.insert(node.getHandle()); });
}

void RtiFedDatabase::getDerivedInteractionClassHandleSet(RtiInteractionClassHandle interactionClass,
                                                         std::set<RtiInteractionClassHandle> &derived) const {
    _interactionClasses.forEachDerived(
        find(interactionClass), [&derived](const RtiFedInteractionClass &node) { derived.insert(node.getHandle()); });
}

void RtiFedDatabase::getChildlessDerivedObjectClassHandleSet(RtiObjectClassHandle objectClass,
                                                             std::set<RtiObjectClassHandle> &derived) const {
    const RtiFedObjectClass *node = find(objectClass);
    if (!node)
        return;
    const auto children = node->getChildrenClasses();
    if (children.empty())
        derived.insert(objectClass);
    // Not only the leaves, whatever the name says: callers rely on the inner classes being there.
    for (const RtiObjectClassHandle &child : children)
        getDerivedObjectClassHandleSet(child, derived);
}

std::set<RtiParameterHandle>
RtiFedDatabase::getAvailableInteractionClassHandles(RtiInteractionClassHandle interactionClass) const {
    std::set<RtiParameterHandle> parameters;
    _interactionClasses.forEachAncestor(interactionClass, [&parameters](const RtiFedInteractionClass &node) {
        for (const RtiFedParameter &parameter : node.members())
            parameters.insert(parameter.getHandle());
    });
    return parameters;
}

const RtiFedObjectClass &RtiFedDatabase::defined(const RtiFedObjectClass *objectClass) {
    if (objectClass)
        return *objectClass;
    rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", available attributes: no such object class");
}

template <class Visit>
void RtiFedDatabase::forEachAvailable(const RtiFedObjectClass &objectClass, Visit visit) const {
    for (const RtiFedObjectClass *node = &objectClass; node; node = find(node->getParentClassHandle()))
        for (RtiFedAttribute &attribute : node->members())
            visit(&attribute);
}

std::set<RtiFedAttribute *> *RtiFedDatabase::getAvailableFedAttributes(const RtiFedObjectClass *objectClass,
                                                                       int) const {
    const RtiFedObjectClass &known = defined(objectClass);
    if (auto *ready = known.getAvailableFedAttributes())
        return ready;
    auto available = std::make_unique<std::set<RtiFedAttribute *>>();
    forEachAvailable(known, [&available](RtiFedAttribute *attribute) { available->insert(attribute); });
    return known.publishAvailableFedAttributes(std::move(available));
}

std::set<RtiFedAttribute *> *RtiFedDatabase::getAvailableFedAttributes(const RtiObjectClassHandle &objectClass,
                                                                       int ignored) const {
    return getAvailableFedAttributes(find(objectClass), ignored);
}

RtiAttributeHandleSet *RtiFedDatabase::getAvailableAttributeHandles(const RtiFedObjectClass *objectClass, int) const {
    const RtiFedObjectClass &known = defined(objectClass);
    if (auto *ready = known.getAvailableAttributes())
        return ready;
    std::set<RtiAttributeHandle> ascending; // as the set takes them best
    forEachAvailable(known,
                     [&ascending](const RtiFedAttribute *attribute) { ascending.insert(attribute->getHandle()); });
    auto available = std::make_unique<RtiAttributeHandleSet>(known.getNumberOfAttributes());
    for (const RtiAttributeHandle &attribute : ascending)
        available->add(attribute);
    return known.publishAvailableAttributes(std::move(available));
}

RtiAttributeHandleSet *RtiFedDatabase::getAvailableAttributeHandles(const RtiObjectClassHandle &objectClass,
                                                                    int ignored) const {
    return getAvailableAttributeHandles(find(objectClass), ignored);
}

RTI_bool RtiFedDatabase::verifyAvailableAttributes(const RtiObjectClassHandle &objectClass,
                                                   RtiAttributeHandleSet attributes) const {
    const RtiAttributeHandleSet &available = *getAvailableAttributeHandles(objectClass, 0);
    for (unsigned long i = 0; i < attributes.size(); ++i)
        if (!available.isMember(attributes.getHandle(i)))
            return RTI_false;
    return RTI_true;
}
