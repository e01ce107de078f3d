// Building a database, and looking up names and handles. The other operations are in RtiFedDatabaseDerivation.cc,
// RtiFedDatabaseImage.cc, RtiFedDatabaseListing.cc, loading/RtiFedDatabaseLoading.cc and mom/RtiFedDatabaseMom.cc.

#include "fed/RtiFedDatabase.hh"

#include <cstdint>
#include <optional>
#include <type_traits>
#include <utility>

namespace {

constexpr const char *kNotFound = " not found in FED file.";

/// A function of its own, since the code that makes a message would slow down the lookups that it is inlined into.
[[noreturn, gnu::noinline]] void raiseNotFound(const char *what, std::string_view name) {
    rtiFedRaise<RTI::NameNotFound>(what, name, kNotFound);
}

/// A transportation or ordering: its handle, its name, and the short name that FED files use.
struct FixedName {
    unsigned long handle;
    std::string_view name;
    std::string_view shortName;
};

constexpr FixedName kTransportations[] = {{2, "RTI_RELIABLE", "RELIABLE"}, {1, "RTI_BEST_EFFORT", "BEST_EFFORT"}};
constexpr FixedName kOrderings[] = {{2, "RTI_TIME_STAMP_ORDERING", "TIMESTAMP"},
                                    {1, "RTI_RECEIVE_ORDERING", "RECEIVE"}};

/// No two names have the same size, so the size says which one to compare. It is chosen without a branch, since in a
/// file either follows the other at random.
const FixedName *findFixed(const FixedName (&names)[2], std::string_view name) {
    const auto hasSize = [&name](const FixedName &fixed) {
        return static_cast<unsigned>(name.size() == fixed.shortName.size()) |
               static_cast<unsigned>(name.size() == fixed.name.size());
    };
    const FixedName &fixed = names[hasSize(names[1])];
    const bool isShort = name.size() == fixed.shortName.size();
    return RtiFedName::equalUpper(name, isShort ? fixed.shortName : fixed.name) ? &fixed : nullptr;
}

const FixedName *findFixed(const FixedName (&names)[2], unsigned long handle) {
    for (const FixedName &fixed : names)
        if (handle == fixed.handle)
            return &fixed;
    return nullptr;
}

/// The full name of the superclass, unless `name` is that of a root.
std::optional<std::string_view> superclassOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::nullopt : std::make_optional(name.substr(0, dot));
}

/// Returns `from` or its first ancestor whose full name is `name` to the letter, or null.
template <class Node>
Node *findUpward(Node *from, std::string_view name) {
    for (; from; from = from->getParentClass())
        if (from->nameText() == name)
            return from;
    return nullptr;
}

/// Increases a counter. Handles have 32 bits on every machine, so the counter overflows there; an image can set it to
/// any value.
template <class Handle>
Handle next(Handle &counter) {
    using Value = decltype(counter._value);
    using Narrow = std::conditional_t<std::is_signed_v<Value>, std::int32_t, std::uint32_t>;
    counter._value = static_cast<Narrow>(static_cast<std::uint32_t>(counter._value) + 1);
    return counter;
}

} // namespace

RtiFedDatabase::~RtiFedDatabase() = default;

// ---- Building

/// What differs between adding an object class and adding an interaction class.
struct RtiFedDatabase::ObjectClassKind {
    using Node = RtiFedObjectClass;
    static constexpr const char *exists = "\"RtiFedDatabase\", line 202:  The object class ";
    static constexpr const char *noSuperclass = "\"RtiFedDatabase\", line 222: FED Object Superclass Not Known";

    static auto &tree(RtiFedDatabase &db) { return db._objectClasses; }
    static auto createHandle(RtiFedDatabase &db) { return db.createObjectClassHandle(); }
    static auto handleOf(const RtiFedDatabase &db, std::string_view name) { return db.getObjectClassHandle(name); }
};

struct RtiFedDatabase::InteractionClassKind {
    using Node = RtiFedInteractionClass;
    static constexpr const char *exists = "\"RtiFedDatabase\", line 567:  The interaction class ";
    static constexpr const char *noSuperclass = "\"RtiFedDatabase\", line 587: FED Interaction Superclass Not Known";

    static auto &tree(RtiFedDatabase &db) { return db._interactionClasses; }
    static auto createHandle(RtiFedDatabase &db) { return db.createInteractionClassHandle(); }
    static auto handleOf(const RtiFedDatabase &db, std::string_view name) { return db.getInteractionClassHandle(name); }
};

/// Adds a class by its full name. In files and images a class follows its superclass closely, so the superclass is
/// looked for among `last`, the class that was added before, and its ancestors, and only then by its name.
template <class Kind, class... Defaults>
typename Kind::Node *RtiFedDatabase::addClass(std::string_view name, typename Kind::Node *last,
                                              const Defaults &...defaults) {
    auto &tree = Kind::tree(*this);
    const auto key = tree.keyOf(name);
    if (tree.handleOf(key) != 0)
        rtiFedRaise<RTI::ErrorReadingFED>(Kind::exists, name, " already exists.");
    typename Kind::Node *parent = nullptr;
    if (const auto superclass = superclassOf(name)) {
        // equivalent: only speed; the lookup by name finds it, too
        parent = findUpward(last, *superclass);
        if (!parent)
            parent = find(Kind::handleOf(*this, *superclass));
        if (!parent)                                                // unreached: the lookup throws first
            rtiFedRaise<RTI::RTIinternalError>(Kind::noSuperclass); // unreached: the same
    }
    auto made = tree.make(requireUnused(Kind::createHandle(*this)), tree.store(name), parent, defaults...);
    if (parent) // before adding the class: running out of memory must not leave a class that its parent does not list
        parent->reserveForSubclass(made->getHandle());
    auto *added = tree.add(std::move(made), key);
    if (parent)
        parent->announceSubclass(added->getHandle());
    return added;
}

void RtiFedDatabase::setFederateName(std::string name) {
    _fedName = std::move(name);
}

void RtiFedDatabase::setFederateVersion(std::string version) {
    _fedVersion = std::move(version);
}

/// Returns a handle that was just issued. Throws RTI::RTIinternalError if the counter has overflowed and reached a
/// handle that is in use.
template <class Handle>
Handle RtiFedDatabase::requireUnused(const Handle &handle) const {
    if (!(Handle(0) < handle) || find(handle))
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabase\", line 125: the handle ", toString(handle._value),
                                           " is in use or no handle: none is left");
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
    return addObjectClass(name.getClassname(), nullptr);
}

RtiFedObjectClass *RtiFedDatabase::addObjectClass(std::string_view name, RtiFedObjectClass *last) {
    return addClass<ObjectClassKind>(name, last);
}

void RtiFedDatabase::addObjectClassAttribute(RtiFedObjectClass *objectClass, std::string name,
                                             RtiTransportationHandle transportation, RtiOrderingHandle ordering,
                                             RtiSpaceHandle space) {
    addObjectClassAttribute(objectClass, RtiFedName(name), transportation, ordering, space);
}

void RtiFedDatabase::addObjectClassAttribute(RtiFedObjectClass *objectClass, const RtiFedName &name,
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
    return addInteractionClass(name, transportation, ordering, space, nullptr);
}

RtiFedInteractionClass *RtiFedDatabase::addInteractionClass(std::string_view name,
                                                            const RtiTransportationHandle &transportation,
                                                            const RtiOrderingHandle &ordering,
                                                            const RtiSpaceHandle &space, RtiFedInteractionClass *last) {
    return addClass<InteractionClassKind>(name, last, transportation, ordering, space);
}

RtiFedSpace *RtiFedDatabase::addSpace(std::string name) {
    return insertSpace(std::make_unique<RtiFedSpace>(requireUnused(createSpaceHandle()), std::move(name)));
}

/// Enters a space whose handle is unused. If its name is in use, lookups by name still return the earlier space. Throws
/// std::bad_alloc, leaving the database unchanged.
RtiFedSpace *RtiFedDatabase::insertSpace(std::unique_ptr<RtiFedSpace> space) {
    RtiFedSpace *added = space.get();
    const RtiSpaceHandle handle = added->getHandle();
    _spaceHandleMap.insert(handle, std::move(space));
    try {
        // No effect if the name is in use.
        _spaceNameMap.insert(added->nameText(), added); // NOLINT(clang-analyzer-cplusplus.NewDelete): the map owns it
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
    if (const unsigned long handle = _objectClasses.handleOf(name))
        return handle;
    raiseNotFound("\"RtiFedDatabase\", line 1342: Object Class Name: ", name);
}

std::string RtiFedDatabase::getObjectClassName(RtiObjectClassHandle handle) const {
    if (const RtiFedObjectClass *objectClass = find(handle))
        return objectClass->getName();
    rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1368: ");
}

RtiAttributeHandle RtiFedDatabase::getAttributeHandle(std::string_view name, RtiObjectClassHandle objectClass) const {
    const RtiFedFoldedName folded(name);
    if (const RtiFedMemberIndex *index = _objectClasses.indexes().members.get())
        if (const std::uint32_t handle = index->find(objectClass._value, folded))
            return handle;
    return findAttribute(RtiFedName(name, folded.hash()), objectClass);
}

/// Looks for the attribute in the class and in each of its ancestors.
RtiAttributeHandle RtiFedDatabase::findAttribute(const RtiFedName &name,
                                                 const RtiObjectClassHandle &objectClass) const {
    const RtiFedObjectClass *declaring = find(objectClass);
    if (!declaring)
        rtiFedRaise<RTI::ObjectClassNotDefined>("\"RtiFedDatabase\", line 1397: ");
    // equivalent: only speed; without the index, all lookups walk
    _objectClasses.indexes().members.walked(_objectClasses, _attributeObjectClassMap.size());
    for (; declaring; declaring = declaring->getParentClass()) {
        const RtiFedAttribute *attribute = declaring->members().find(name);
        if (attribute && attribute->getHandle() != 0)
            return attribute->getHandle();
    }
    rtiFedRaise<RTI::NameNotFound>("\"RtiFedDatabase\", line 1410: Attribute Name: ", name.text(),
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
    if (const unsigned long handle = _interactionClasses.handleOf(name))
        return handle;
    raiseNotFound("\"RtiFedDatabase\", line 1504: Interaction Class Name: ", name);
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
