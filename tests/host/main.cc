// A program on a host infrastructure: prints the listing of a FED file and writes its image, and checks on the way that
// the library uses the host as docs/replacing-the-infrastructure.md says.
// Usage: host FED IMAGE

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiDebugStream.hh"
#include "infrastructure/RtiDump.hh"

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace {

void check(bool isSo, const char *what) {
    if (!isSo)
        throw std::logic_error(what);
}

/// Saves through the overload for const objects.
std::string imageOf(const RtiFedSaveable &object) {
    RtiBuffer buffer;
    object.save(buffer);
    return buffer.bytes();
}

/// A record that a host derives, and whose operations it overrides as its own base class declares them.
class HostRecord : public RtiFedParameter {
public:
    using RtiFedParameter::RtiFedParameter;
    RTI_bool save(RtiBuffer &) override { return called(); }
    void dump(std::ostream &) override { called(); }
    void diff(RtiBuffer &, std::ostream &) override { called(); }

    RTI_bool called() {
        ++numCalls;
        return RTI_true;
    }
    int numCalls = 0;
};

void checkOverriding() {
    HostRecord record(1, "P");
    RtiSaveableType &base = record;
    const RtiFedSaveable &constant = record;
    RtiBuffer buffer;
    base.save(buffer);
    base.dump(std::cerr);
    base.diff(buffer, std::cerr);
    buffer.put(base);
    constant.save(buffer);
    check(record.numCalls == 5, "the operations that a host overrides");
}

/// Each single handle of a record is written and read as an object.
void checkHandlesAreObjects() {
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("", RTI_false));
    database.addObjectClassAttribute(database.addObjectClass("ObjectRoot"), "A", 2, 1, 0);
    database.addInteractionClass("InteractionRoot", 2, 1, 0);
    database.addSpace("S");
    RtiBuffer buffer;
    database.save(buffer);
    // The class with its handle and parent, the attribute with its four; the interaction class with five; the space
    // with two; the attribute with its class; the counters.
    const int numRecords = 4, numHandles = 2 + 4 + 5 + 2 + 2 + 5;
    check(buffer.numObjects == numRecords + numHandles, "the objects that are written");
    buffer.numObjects = 0;
    const RtiFedDatabase copy(buffer);
    check(buffer.numObjects == numHandles, "the handles that are read");
}

void checkAnswers(const RtiFedDatabase &database) {
    const RtiObjectClassHandle tug = database.getObjectClassHandle("objectroot.craft.servicecraft.tug");
    const RtiAttributeHandle position = database.getAttributeHandle("Position", tug);
    check(database.getObjectClassName(tug) == "ObjectRoot.Craft.ServiceCraft.Tug", "a class by its handle");
    check(database.getAttributeName(position, tug) == "Position", "an inherited attribute by its handle");
    check(database.getRoutingSpaceName(database.getAttributeRoutingSpaceHandle(position, tug)) == "ApproachArea",
          "the space of an attribute");
    check(database.objectClassExists("Manager.Federate") == RTI_true, "an existing class");
    check(database.objectClassExists("Manager.Federat") == RTI_false, "an unknown class");
    const RtiAttributeHandleSet &available = *database.getAvailableAttributeHandles(tug, 0);
    check(database.verifyAvailableAttributes(tug, available) == RTI_true && available.isMember(position),
          "the attributes of a class");
    check(RtiAttributeHandleSet::numOnHeap > 0, "a set of handles that the host allocated");
    try {
        database.getObjectClassHandle("None");
        check(false, "a class that was found by mistake");
    } catch (const RTI::Exception &thrown) {
        const std::unique_ptr<RTI::Exception> clone(thrown.cloneSelf());
        check(dynamic_cast<RTI::NameNotFound *>(clone.get()) && clone->_name == "RTI.NameNotFound" &&
                  clone->_serial == -1 && clone->_reason.find("None not found") != std::string::npos,
              "the exception for an unknown name");
    }
}

/// Whether an image is refused for its contents, not because memory ran out.
bool isRefused(const std::string &image) {
    try {
        RtiBuffer buffer(image);
        const RtiFedDatabase database(buffer);
    } catch (const std::out_of_range &) {
        return true;
    } catch (const RTI::RTIinternalError &thrown) {
        return thrown._reason.find("image: ") == 0;
    }
    return false;
}

void checkDamaged(const std::string &image) {
    for (std::size_t size = 0; size < image.size(); size += 101)
        check(isRefused(image.substr(0, size)), "a truncated image");
    const std::size_t name = image.find("ObjectRoot");
    for (const std::size_t number : {name - 10, name + 10, name + 18}) { // of classes, of subclasses, of attributes
        std::string tooMany = image;
        tooMany.replace(number, 8, std::string(7, '\xFF') + '\x7F');
        check(isRefused(tooMany), "an image that claims too much");
    }
}

void checkWrongText(const std::string &fileName) {
    std::ofstream(fileName) << "(FED (Federation F)";
    try {
        const RtiFedDatabase database(RtiFedDatabaseConstructorArg(fileName, RTI_true));
        check(false, "a wrong text that was read");
    } catch (const RTI::ErrorReadingFED &thrown) {
        check(thrown._reason == fileName &&
                  _rtiErrorStream.messages.str().find("a parenthesis is missing") != std::string::npos,
              "the report of a wrong text");
    }
}

void useDatabase(const std::string &fedFile, const std::string &imageFile) {
    const RtiFedDatabase database(RtiFedDatabaseConstructorArg(fedFile, RTI_true));
    checkAnswers(database);
    database.dumpDatabase(&std::cout);

    const std::string image = imageOf(database);
    RtiBuffer buffer(image), again(image);
    const RtiFedDatabase copy(buffer);
    checkAnswers(copy);
    check(imageOf(copy) == image, "the image of a restored database");
    check(copy.getChecksum() == database.getChecksum(), "the checksum of a restored database");
    std::ostringstream differences;
    database.diff(again, differences);
    check(differences.str().empty() && RtiDump::traceMask != RTI_T_NONE, "a comparison with the image");
    checkDamaged(image);
    std::ofstream(imageFile, std::ios::binary) << image;
}

} // namespace

int main(int, char **arguments) {
    try {
        checkOverriding();
        checkHandlesAreObjects();
        checkWrongText(arguments[2]);
        useDatabase(arguments[1], arguments[2]);
        check(RtiAttributeHandleSet::numOnHeap == 0, "all sets of handles freed");
        return 0;
    } catch (const RTI::Exception &thrown) {
        std::cerr << "FAILED: " << thrown._name << ": " << thrown._reason << '\n';
    } catch (const std::exception &thrown) {
        std::cerr << "FAILED: " << thrown.what() << '\n';
    }
    return 1;
}
