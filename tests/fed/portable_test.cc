// Prints what every machine must give alike, whatever its word size and byte order: of each example, and of a database
// with numbers at both ends of the 32 bits, the size and CRC-32 of the image and the checksum of the model; of that
// database every byte. Each image is restored and saved again on the way. portable.txt is
// what must come out. Usage: portable_test EXAMPLES_DIR

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

/// A cut, a sign or a byte order that is wrong would show here; and bytes above 127, for which one machine's `char` has
/// a sign and the other's has none.
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
            // The file's name alone enters the image, wherever the examples stand.
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
