// The operations of RtiFedDatabase on the Management Object Model: verifying it, and giving it its default space.

#include "fed/RtiFedDatabase.hh"
#include "fed/mom/RtiFedDatabaseMomVerifier.hh"

RTI_bool RtiFedDatabase::verifyMomObjectClasses(std::string &message) const {
    return RtiFedDatabaseMomVerifier::verifyMomObjectClasses(*this, message);
}

RTI_bool RtiFedDatabase::verifyMomInteractionClasses(std::string &message) const {
    return RtiFedDatabaseMomVerifier::verifyMomInteractionClasses(*this, message);
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
