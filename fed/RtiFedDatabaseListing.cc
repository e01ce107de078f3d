// The readable listing of RtiFedDatabase. Programs that read it rely on its irregular form: parentheses that stay open,
// and spacing that differs between the kinds.

#include "fed/RtiFedDatabase.hh"

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
