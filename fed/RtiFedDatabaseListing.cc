// The readable listing of RtiFedDatabase. Programs that read it rely on its irregular form: parentheses that stay open,
// and spacing that differs between the kinds.

#include "fed/RtiFedDatabase.hh"

#include <initializer_list>
#include <string_view>

void RtiFedDatabase::dumpDatabase(std::ostream *os) const {
    std::string line; // is reused, since a listing has very many lines
    const auto put = [&](std::initializer_list<std::string_view> parts) {
        line.clear();
        for (const std::string_view part : parts)
            line += part;
        *os << line;
    };
    *os << "FED DATABASE\n"
        << "Federation:  " + _fedName + "\n"
        << "Version: " + _fedVersion + "\n"
        << "Routing Space List:\n";
    _spaceHandleMap.forEach([&](const RtiSpaceHandle &handle, const auto &space) {
        put({"  ", getRoutingSpaceName(handle), " (HANDLE = ", toString(handle._value), ") \n"});
        for (unsigned long i = 0; i < space->getNumberOfDimensions(); ++i) {
            const RtiFedDimension &dimension = *space->getDimension(i);
            put({"    ", dimension.nameText(), " (HANDLE = ", toString(dimension.getHandle()._value), ") \n"});
        }
    });
    *os << "\nObject Class Name List:\n";
    _objectClasses.forEach([&](const RtiFedObjectClass &objectClass) {
        put({"  ", objectClass.nameText(), " (HANDLE = ", toString(objectClass.getHandle()._value), ") \n"});
        for (const RtiFedAttribute &attribute : objectClass.members()) {
            const bool hasSpace = attribute.getSpace() != 0;
            put({"    ", attribute.nameText(), " (HANDLE = ", toString(attribute.getHandle()._value), ")  ",
                 getTransportationName(attribute.getTransport()), "  ", getOrderingName(attribute.getOrdering()), "  ",
                 hasSpace ? "(space= " : "(spaceHandle= ", hasSpace ? getRoutingSpaceName(attribute.getSpace()) : "0",
                 "\n"});
        }
    });
    *os << "\nInteractions List:\n";
    _interactionClasses.forEach([&](const RtiFedInteractionClass &interactionClass) {
        const RtiSpaceHandle space = interactionClass.getDefaultSpace();
        put({"  ", interactionClass.nameText(), "   (HANDLE = ", toString(interactionClass.getHandle()._value), ") ",
             getTransportationName(interactionClass.getDefaultTransport()), "  ",
             getOrderingName(interactionClass.getDefaultOrdering()), "  ",
             space == 0 ? "" : "(Space= ", space == 0 ? std::string() : getRoutingSpaceName(space), "\n"});
        for (const RtiFedParameter &parameter : interactionClass.members())
            put({"    ", parameter.nameText(), "\n"});
    });
}
