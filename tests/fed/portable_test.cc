// Prints what must be the same on machines of any word size and byte order: for each example, and for a database with
// numbers at both ends of the 32 bits, the size and CRC-32 of the image and the checksum of the model; for that
// database also every byte. Each image is restored and saved again in between. The expected output is
// data/portable.txt. Usage: portable_test EXAMPLES_DIR

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiCrc.hh"

#include <cstdio>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>

namespace {

void print(const RtiFedDatabase &origin, bool everyByte) {
    RtiBuffer image, again;
    origin.save(image);
    const RtiFedDatabase copy(image);
    copy.save(again);
    if (again.size() != image.size() || std::memcmp(again.data(), image.data(), image.size()) != 0 ||
        copy.getChecksum() != origin.getChecksum())
        throw std::runtime_error("the restored database differs from its origin");
    std::printf("%s %zu bytes, CRC-32 %08lx, checksum %08lx\n", origin.getFileName().c_str(), image.size(),
                RtiCrc::computeCrc(image.data(), static_cast<long>(image.size())), origin.getChecksum());
    for (std::size_t i = 0; everyByte && i < image.size(); ++i)
        std::printf("%02x%s", image.data()[i], i % 32 == 31 || i + 1 == image.size() ? "\n" : " ");
}

/// Shows wrong truncation, sign or byte order, and bytes above 127, which are negative where `char` is signed.
void buildByHand(RtiFedDatabase &database) {
    constexpr unsigned long largest = 0xFFFFFFFF;
    database.setFederateName("F\xC3\xA4");
    RtiFedSpace *space = database.addSpace("S");
    database.addSpaceDimension(space, "\xC3\x9F");
    database.addObjectClassAttribute(database.addObjectClass("R"), "a", 0x01020304, largest, space->getHandle());
    RtiFedObjectClass *inner = database.addObjectClass("R.\xC3\xA4");
    database.addObjectClassAttribute(inner, "\xFF", 2, 1, -1);
    database.addObjectClassAttribute(inner, "z", 1, 2, -0x7FFFFFFF - 1);
    database.addInteractionClass("I", largest, 1, 0x7FFFFFFF)->addParameter(database.createParameterHandle(), "p");
}

} // namespace

int main(int, char **arguments) {
    try {
        for (const std::string name : {"harbour.fed", "minimal.fed", "tolerances.fed"}) {
            // The image contains the file's name, not the path of the examples.
            RtiFedDatabase database(RtiFedDatabaseConstructorArg(name, RTI_false));
            database.buildFromFed(std::fopen((arguments[1] + ("/" + name)).c_str(), "rb"));
            print(database, false);
        }
        RtiFedDatabase byHand(RtiFedDatabaseConstructorArg("hand", RTI_false));
        buildByHand(byHand);
        print(byHand, true);
        return 0;
    } catch (const RTI::Exception &thrown) {
        std::fprintf(stderr, "FAILED: %s: %s\n", thrown._name, thrown._reason);
    } catch (const std::exception &thrown) {
        std::fprintf(stderr, "FAILED: %s\n", thrown.what());
    }
    return 1;
}
