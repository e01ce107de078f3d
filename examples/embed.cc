// The start-up of a federate: loads the federation's model, looks up names, and checks a subscription.

#include "fed/RtiFedDatabase.hh"

#include <iostream>

int main(int argc, char **argv) {
    const std::string fileName = argc > 1 ? argv[1] : "harbour.fed";
    try {
        const RtiFedDatabase database(RtiFedDatabaseConstructorArg(fileName, RTI_true));

        const RtiObjectClassHandle craft = database.getObjectClassHandle("Craft");
        const RtiAttributeHandle position = database.getAttributeHandle("Position", craft);
        const RtiSpaceHandle space = database.getAttributeRoutingSpaceHandle(position, craft);
        std::cout << database.getFederateName() << ": " << database.getObjectClassName(craft) << " is class "
                  << craft._value << ", its attribute " << database.getAttributeName(position, craft) << " is "
                  << position._value << ", in the routing space " << database.getRoutingSpaceName(space) << "\n";

        RtiAttributeHandleSet wanted(1);
        wanted.add(position);
        std::set<RtiObjectClassHandle> kinds;
        database.getDerivedObjectClassHandleSet(craft, kinds);
        for (const RtiObjectClassHandle &kind : kinds)
            std::cout << "  " << database.getObjectClassName(kind)
                      << (database.verifyAvailableAttributes(kind, wanted) ? " has it\n" : " lacks it\n");
        return 0;
    } catch (const RTI::Exception &failure) {
        std::cerr << failure._name << ": " << failure._reason << "\n";
        return 1;
    }
}
