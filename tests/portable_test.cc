// Prints the images and checksums that every machine must give alike, whatever its word size and byte order; each image
// is restored and saved again on the way. portable.txt is what must come out. Usage: portable_test EXAMPLES_DIR

#include "fed/RtiFedDatabase.hh"
#include "infrastructure/RtiBuffer.hh"
#include "infrastructure/RtiCrc.hh"

#include <cstdio>
#include <cstring>
#include <exception>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

void require(bool holds, const std::string &what) {
    if (!holds)
        throw std::runtime_error(what);
}

std::unique_ptr<RtiFedDatabase> emptyDatabase(const std::string &fileName) {
    return std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
}

/// The file's name alone enters the image, so that the image does not depend on where the examples stand.
std::unique_ptr<RtiFedDatabase> load(const std::string &directory, const std::string &fileName) {
    auto database = emptyDatabase(fileName);
    std::FILE *file = std::fopen((directory + "/" + fileName).c_str(), "rb");
    require(file, "cannot be opened");
    database->buildFromFed(file);
    return database;
}

/// A database on which a cut, a sign or a byte order that is wrong would show: numbers at both ends of the 32 bits, and
/// names with bytes above 127, in which one machine's `char` has a sign and the other's has none.
std::unique_ptr<RtiFedDatabase> handMade() {
    constexpr unsigned long largest = 0xFFFFFFFF;
    constexpr long smallestSigned = -0x7FFFFFFF - 1;
    auto database = emptyDatabase("s.fed");
    database->setFederateName("F\xC3\xA4");
    database->setFederateVersion("v");
    RtiFedSpace *space = database->addSpace("S");
    database->addSpaceDimension(space, "X");
    database->addSpaceDimension(space, "\xC3\x9F");
    database->addObjectClassAttribute(database->addObjectClass("R"), "a", 0x01020304, largest, space->getHandle());
    RtiFedObjectClass *inner = database->addObjectClass("R.\xC3\xA4");
    database->addObjectClassAttribute(inner, "\xFF", 2, 1, -1);
    database->addObjectClassAttribute(inner, "z", 1, 2, smallestSigned);
    database->addInteractionClass("I", 2, 1, space->getHandle())->addParameter(database->createParameterHandle(), "p");
    database->addInteractionClass("I.J", largest, 0x01020304, 0x7FFFFFFF);
    return database;
}

RtiBuffer imageOf(const RtiFedDatabase &database) {
    RtiBuffer image;
    database.save(image);
    return image;
}

RtiBuffer printed(const RtiFedDatabase &origin) {
    RtiBuffer image = imageOf(origin);
    const RtiFedDatabase copy(image);
    require(image.remaining() == 0, "the image was not read to its end");
    const RtiBuffer again = imageOf(copy);
    require(again.size() == image.size() && std::memcmp(again.data(), image.data(), image.size()) == 0,
            "the restored database saves other bytes");
    require(copy.getChecksum() == origin.getChecksum(), "the restored database has another checksum");
    std::printf("%s %zu bytes, CRC-32 %08lx, checksum %08lx\n", origin.getFileName().c_str(), image.size(),
                RtiCrc::computeCrc(image.data(), static_cast<long>(image.size())), origin.getChecksum());
    return image;
}

void printHex(const RtiBuffer &image) {
    constexpr std::size_t perLine = 16;
    for (std::size_t i = 0; i < image.size(); ++i) {
        if (i % perLine == 0)
            std::printf("%04zx:", i);
        std::printf(" %02x%s", image.data()[i], i % perLine == perLine - 1 || i + 1 == image.size() ? "\n" : "");
    }
}

template <class Action>
bool throws(Action action) {
    try {
        action();
    } catch (const RTI::Exception &) {
        return true;
    }
    return false;
}

/// A number that is wider than the image's 32 bits, on a machine that has such numbers, is refused and never cut.
void requireNothingIsCut() {
    using Numbers = std::numeric_limits<unsigned long>;
    constexpr bool wider = Numbers::digits > 32;
    const auto database = emptyDatabase("wide.fed");
    database->addInteractionClass("I", Numbers::max(), 1, 0);
    require(throws([&] { imageOf(*database); }) == wider, "a wide number: save");
    require(throws([&] { database->getChecksum(); }) == wider, "a wide number: getChecksum");
    for (const long number : {std::numeric_limits<long>::min(), std::numeric_limits<long>::max()})
        require(throws([&] { RtiBuffer().put(number); }) == wider, "a wide signed number: put");
}

} // namespace

int main(int count, char **arguments) {
    if (count != 2) {
        std::fputs("usage: portable_test EXAMPLES_DIR\n", stderr);
        return 2;
    }
    std::string subject = "wide.fed";
    try {
        requireNothingIsCut();
        for (const char *name : {"harbour.fed", "minimal.fed", "tolerances.fed"}) {
            subject = name;
            printed(*load(arguments[1], name));
        }
        subject = "s.fed";
        printHex(printed(*handMade()));
        return 0;
    } catch (const RTI::Exception &thrown) {
        std::fprintf(stderr, "FAILED: %s: %s: %s\n", subject.c_str(), thrown._name, thrown._reason);
    } catch (const std::exception &thrown) {
        std::fprintf(stderr, "FAILED: %s: %s\n", subject.c_str(), thrown.what());
    }
    return 1;
}
