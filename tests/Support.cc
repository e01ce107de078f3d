#include "tests/Support.hh"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

std::string readFile(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

std::string replaced(std::string text, const std::string &what, const std::string &with) {
    const auto place = text.find(what);
    EXPECT_NE(place, std::string::npos) << what;
    return text.replace(place, what.size(), with);
}

std::string withMom(const std::string &objects, const std::string &interactions, const std::string &spaces) {
    const std::string object = "(class RTIprivate)", interaction = "(class RTIprivate reliable timestamp)";
    std::string text = replaced(example("minimal.fed"), object, object + objects);
    text = replaced(text, interaction, interaction + interactions);
    return replaced(text, "(spaces", "(spaces " + spaces);
}

TemporaryFile::TemporaryFile(const std::string &contents) : _path("/tmp/rtifed-test-XXXXXX") {
    const int file = mkstemp(_path.data());
    EXPECT_EQ(write(file, contents.data(), contents.size()), static_cast<ssize_t>(contents.size()));
    close(file);
}

TemporaryFile::~TemporaryFile() {
    std::remove(_path.c_str());
}

std::unique_ptr<RtiFedDatabase> load(const std::string &text) {
    const TemporaryFile file(text);
    return std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(file.path(), RTI_true));
}

std::unique_ptr<RtiFedDatabase> emptyDatabase(const std::string &fileName) {
    return std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
}

std::string listing(const RtiFedDatabase &database) {
    std::ostringstream os;
    database.dumpDatabase(&os);
    return os.str();
}

/// Writes what a record answers about itself.
static void describe(std::ostream &os, const RtiFedSaveable &record) {
    RtiBuffer image;
    record.save(image);
    record.dump(os);
    record.diff(image, os);
}

std::string answers(const RtiFedDatabase &db) {
    std::ostringstream os, counters;
    os.exceptions(std::ios::badbit); // otherwise the stream hides a failed allocation
    counters.exceptions(std::ios::badbit);
    db.dumpDatabase(&os);
    os << db.getChecksum();
    describe(counters, db);
    std::string lacking;
    os << db.verifyMomObjectClasses(lacking) << db.verifyMomInteractionClasses(lacking) << lacking;
    os << db.getAttributeHandleSet().size();
    for (const RtiSpaceHandle &handle : db.getRoutingSpaceHandleSet())
        describe(os, *db.find(db.getRoutingSpaceHandle(db.getRoutingSpaceName(handle))));
    for (const RtiObjectClassHandle &handle : db.getObjectClassHandleSet()) {
        const RtiFedObjectClass &node = *db.find(handle);
        describe(os, node);
        os << '\n' << db.getObjectClassHandle(db.getObjectClassName(handle))._value;
        std::set<RtiObjectClassHandle> derived;
        db.getDerivedObjectClassHandleSet(handle, derived);
        os << derived.size() << node.getChildrenClasses().size() << node.descendants().size()
           << node.getParentClassHandle()._value << (node.getParentClass() ? node.getParentClass()->getName() : "-");
        db.getChildlessDerivedObjectClassHandleSet(handle, derived);
        os << derived.size() << db.getAvailableFedAttributes(handle, 0)->size();
        const RtiAttributeHandleSet &available = *db.getAvailableAttributeHandles(handle, 0);
        for (unsigned long i = 0; i < available.size(); ++i) {
            const RtiAttributeHandle attribute = available.getHandle(i);
            os << db.getAttributeHandle(db.getAttributeName(attribute, handle), handle)._value
               << db.getRealObjectClassHandle(handle, attribute)._value
               << db.getAttributeRoutingSpaceHandle(attribute, handle)._value;
        }
        os << db.verifyAvailableAttributes(handle, available);
        node.forEachOwned([&os](const RtiFedObjectClass &owned) { os << owned.getName(); });
    }
    for (const RtiInteractionClassHandle &handle : db.getInteractionClassHandleSet()) {
        os << '\n' << db.getInteractionClassHandle(db.getInteractionClassName(handle))._value;
        const RtiFedInteractionClass &node = *db.find(handle);
        describe(os, node);
        node.forEachOwned([&os](const RtiFedInteractionClass &owned) { os << owned.getName(); });
        std::set<RtiInteractionClassHandle> derived;
        db.getDerivedInteractionClassHandleSet(handle, derived);
        os << derived.size() << node.getChildrenClasses().size() << db.getInteractionRoutingSpaceHandle(handle)._value;
        for (const RtiParameterHandle &parameter : db.getAvailableInteractionClassHandles(handle))
            os << db.getParameterHandle(db.getParameterName(parameter, handle), handle)._value;
    }
    return os.str();
}

std::unique_ptr<RtiFedDatabase> restored(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    auto database = std::make_unique<RtiFedDatabase>(buffer);
    EXPECT_EQ(buffer.remaining(), 0u);
    return database;
}
