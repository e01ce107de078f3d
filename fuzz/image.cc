// An image: restores it, makes every query, saves it, and restores that.

#include "fuzz/Fuzz.hh"

#include <sstream>

namespace {

/// Makes every query. Any answer is fine for a model of random numbers, but none may access invalid memory.
void ask(const RtiFedDatabase &database) {
    std::ostringstream os;
    database.dump(os);
    isRefused([&] { database.dumpDatabase(&os); }); // throws for an unknown space, transportation or ordering
    for (const RtiObjectClassHandle &handle : database.getObjectClassHandleSet()) {
        FUZZ_CHECK(database.getObjectClassHandle(database.getObjectClassName(handle)) == handle);
        std::set<RtiObjectClassHandle> derived;
        database.getDerivedObjectClassHandleSet(handle, derived);
        FUZZ_CHECK(derived.count(handle) == 1);
        const RtiAttributeHandleSet &available = *database.getAvailableAttributeHandles(handle, 0);
        FUZZ_CHECK(database.verifyAvailableAttributes(handle, available));
        for (unsigned long i = 0; i < available.size(); ++i)
            database.getRealObjectClassHandle(handle, available.getHandle(i));
    }
    for (const RtiInteractionClassHandle &handle : database.getInteractionClassHandleSet()) {
        FUZZ_CHECK(database.getInteractionClassHandle(database.getInteractionClassName(handle)) == handle);
        database.getAvailableInteractionClassHandles(handle);
    }
    RtiBuffer image;
    database.save(image);
    database.diff(image, os);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    RtiBuffer buffer(data, size);
    RtiFedDatabase database(RtiFedDatabaseConstructorArg("fuzz.fed", RTI_false));
    if (isRefused([&] { database.restore(buffer); })) {
        FUZZ_CHECK(database.getObjectClassHandleSet().empty() && database.numSpaces() == 0);
        return 0;
    }
    ask(database);
    const std::string image = bytesOf(database);
    RtiBuffer again(image.data(), image.size());
    const RtiFedDatabase copy(again);
    FUZZ_CHECK(bytesOf(copy) == image && copy.getChecksum() == database.getChecksum());
    return 0;
}
