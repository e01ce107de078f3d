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
    _space = _database->addSpace(std::move(name));
}

void RtiFedDatabaseCodegen::addDimension(std::string name) {
    _database->addSpaceDimension(_space, std::move(name));
}

void RtiFedDatabaseCodegen::addObjectClass(std::string name) {
    buildObjectClass(name, 0);
}

void RtiFedDatabaseCodegen::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                                    std::string space) {
    buildObjectClassAttribute(name, transportation, ordering, space);
}

void RtiFedDatabaseCodegen::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                                std::string space) {
    buildInteractionClass(name, transportation, ordering, space, 0);
}

void RtiFedDatabaseCodegen::addParameter(std::string name) {
    buildParameter(name);
}

void RtiFedDatabaseCodegen::buildObjectClass(std::string_view name, std::size_t numAttributes) {
    _objectClass = _database->declareObjectClass(name, _objectClass);
    _objectClass->makeRoomForMembers(numAttributes);
}

void RtiFedDatabaseCodegen::buildObjectClassAttribute(std::string_view name, std::string_view transportation,
                                                      std::string_view ordering, std::string_view space) {
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 85: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _database->declareObjectClassAttribute(_objectClass, RtiFedName(name), transport,
                                           _database->getOrderingHandle(ordering), handle);
}

void RtiFedDatabaseCodegen::buildInteractionClass(std::string_view name, std::string_view transportation,
                                                  std::string_view ordering, std::string_view space,
                                                  std::size_t numParameters) {
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 111: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _interactionClass = _database->declareInteractionClass(name, transport, _database->getOrderingHandle(ordering),
                                                           handle, _interactionClass);
    _interactionClass->makeRoomForMembers(numParameters);
}

void RtiFedDatabaseCodegen::buildParameter(std::string_view name) {
    if (!_interactionClass)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabaseCodegen\", parameter ", name, " before any class");
    // Past the database, which records no parameters: only their handles come from it.
    _interactionClass->addParameter(_database->createParameterHandle(), RtiFedName(name));
}

/// The handle of a space that a declaration names, 0 if it names none.
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
