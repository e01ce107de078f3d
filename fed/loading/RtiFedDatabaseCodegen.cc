#include "fed/loading/RtiFedDatabaseCodegen.hh"

#include "fed/loading/RtiFedReport.hh"

#include <utility>

RtiFedDatabaseCodegen::RtiFedDatabaseCodegen(RtiFedDatabase *database) : _database(database) {}

RtiFedDatabaseCodegen::~RtiFedDatabaseCodegen() = default;

void RtiFedDatabaseCodegen::setFederate(std::string name) {
    _database->setFederateName(std::move(name));
}

void RtiFedDatabaseCodegen::setFederateVersion(std::string version) {
    _database->setFederateVersion(std::move(version));
}

void RtiFedDatabaseCodegen::addSpace(std::string name) {
    forgetReplacedRecords();
    _space = _database->addSpace(std::move(name));
}

void RtiFedDatabaseCodegen::addDimension(std::string name) {
    forgetReplacedRecords();
    _database->addSpaceDimension(_space, std::move(name));
}

void RtiFedDatabaseCodegen::addObjectClass(std::string name) {
    loadObjectClass(name, 0); // equivalent: only memory
}

void RtiFedDatabaseCodegen::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                                    std::string space) {
    loadObjectClassAttribute(name, transportation, ordering, space);
}

void RtiFedDatabaseCodegen::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                                std::string space) {
    loadInteractionClass(name, transportation, ordering, space, 0); // equivalent: only memory
}

void RtiFedDatabaseCodegen::addParameter(std::string name) {
    loadParameter(name);
}

void RtiFedDatabaseCodegen::loadObjectClass(std::string_view name, std::size_t numAttributes) {
    forgetReplacedRecords();
    _objectClass = _database->addObjectClass(name, _objectClass);
    _objectClass->reserveMembers(numAttributes); // equivalent: only speed
}

void RtiFedDatabaseCodegen::loadObjectClassAttribute(std::string_view name, std::string_view transportation,
                                                     std::string_view ordering, std::string_view space) {
    forgetReplacedRecords();
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 85: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _database->addObjectClassAttribute(_objectClass, RtiFedName(name), transport,
                                       _database->getOrderingHandle(ordering), handle);
}

void RtiFedDatabaseCodegen::loadInteractionClass(std::string_view name, std::string_view transportation,
                                                 std::string_view ordering, std::string_view space,
                                                 std::size_t numParameters) {
    forgetReplacedRecords();
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 111: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _interactionClass = _database->addInteractionClass(name, transport, _database->getOrderingHandle(ordering), handle,
                                                       _interactionClass);
    _interactionClass->reserveMembers(numParameters); // equivalent: only speed
}

void RtiFedDatabaseCodegen::loadParameter(std::string_view name) {
    forgetReplacedRecords();
    if (!_interactionClass)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabaseCodegen\", line 74: parameter ", name,
                                           " before the first interaction class");
    // Directly to the class: the database does not record parameters, it only issues their handles.
    _interactionClass->addParameter(_database->createParameterHandle(), RtiFedName(name));
}

// equivalent in this function: only speed
void RtiFedDatabaseCodegen::reserve(const RtiFedDeclarationCounts &counts) {
    _database->_objectClasses.reserve(counts.objects.number, counts.objects.numLetters);
    _database->_interactionClasses.reserve(counts.interactions.number, counts.interactions.numLetters);
    _database->_attributeObjectClassMap.reserve(counts.objects.numMembers);
}

/// The handle of the space that a declaration names; 0 if it names none.
RtiSpaceHandle RtiFedDatabaseCodegen::spaceHandle(std::string_view space, const char *position) const {
    if (space.empty())
        return 0;
    try {
        return _database->getRoutingSpaceHandle(space);
    } catch (const RTI::NameNotFound &) {
        rtiFedReport(RTI_G_medium, position + ("Invalid Space Name Specified: `" + std::string(space)) + "` ");
        throw;
    }
}

/// Forgets the last records if the database has been restored since, which freed them.
void RtiFedDatabaseCodegen::forgetReplacedRecords() {
    if (_generation == _database->_generation)
        return;
    _generation = _database->_generation;
    _space = nullptr;
    _objectClass = nullptr;
    _interactionClass = nullptr;
}
