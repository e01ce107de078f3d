#include "fed/loading/RtiFedDatabaseCodegen.hh"

#include "infrastructure/RtiDebugStream.hh"

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
    _objectClass = _database->addObjectClass(std::move(name));
}

void RtiFedDatabaseCodegen::addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                                    std::string space) {
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 85: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _database->addObjectClassAttribute(_objectClass, std::move(name), transport, _database->getOrderingHandle(ordering),
                                       handle);
}

void RtiFedDatabaseCodegen::addInteractionClass(std::string name, std::string transportation, std::string ordering,
                                                std::string space) {
    const RtiSpaceHandle handle = spaceHandle(space, "\"RtiFedDatabaseCodegen\", line 111: ");
    const RtiTransportationHandle transport = _database->getTransportationHandle(transportation);
    _interactionClass =
        _database->addInteractionClass(std::move(name), transport, _database->getOrderingHandle(ordering), handle);
}

void RtiFedDatabaseCodegen::addParameter(std::string name) {
    if (!_interactionClass)
        rtiFedRaise<RTI::RTIinternalError>("\"RtiFedDatabaseCodegen\", parameter ", name, " before any class");
    // Past the database, which records no parameters: only their handles come from it.
    _interactionClass->addParameter(_database->createParameterHandle(), std::move(name));
}

/// The handle of a space that a declaration names, 0 if it names none.
RtiSpaceHandle RtiFedDatabaseCodegen::spaceHandle(const std::string &space, const char *position) const {
    if (space.empty())
        return 0;
    try {
        return _database->getRoutingSpaceHandle(space);
    } catch (const RTI::NameNotFound &) {
        if (_rtiErrorStream.enabled(RTI_P_fedDatabase, RTI_G_medium))
            _rtiErrorStream.getOutputStream()
                << position + ("Invalid Space Name Specified: `" + space) + "` " << std::endl;
        throw;
    }
}
