#include "infrastructure/RtiAttributeHandleSet.hh"
#include "infrastructure/RtiCrc.hh"
#include "infrastructure/RtiDebugSaver.hh"
#include "infrastructure/RtiDottedClassname.hh"
#include "infrastructure/RtiDump.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

#include <climits>
#include <random>
#include <set>

TEST(HostServices, CrcIsTheOneOfZip) {
    EXPECT_EQ(RtiCrc::computeCrc("123456789", 9), 0xCBF43926UL);
    EXPECT_EQ(RtiCrc::computeCrc("", 0), 0u);
    EXPECT_EQ(RtiCrc::computeCrc("x", -1), 0u);
}

TEST(HostServices, UpperCaseTouchesAToZOnly) {
    EXPECT_EQ(RtiStringUtility::toupper("aZ{`@[\xE4\xFF"), "AZ{`@[\xE4\xFF");
}

TEST(HostServices, DottedNames) {
    const RtiDottedClassname name("ObjectRoot.Manager.Federate");
    EXPECT_EQ(name.getDepth(), 3);
    EXPECT_EQ(name.getFullyQualifiedSubclass(0), "");
    EXPECT_EQ(name.getFullyQualifiedSubclass(1), "ObjectRoot");
    EXPECT_EQ(name.getFullyQualifiedSubclass(2), "ObjectRoot.Manager");
    EXPECT_EQ(name.getFullyQualifiedSubclass(9), name.getClassname());
    EXPECT_EQ(RtiDottedClassname("X").getDepth(), 1);
}

TEST(HostServices, HandleSetIsASet) {
    std::mt19937 random(3);
    for (const unsigned long range : {6UL, 40UL, 400UL}) {
        RtiAttributeHandleSet set(0);
        std::set<RtiAttributeHandle> model;
        for (int i = 0; i < 300; ++i) {
            const unsigned long handle = random() % 8 ? random() % range : ULONG_MAX - random() % 3;
            const RtiAttributeHandleSet before = set;
            set.add(handle);
            ASSERT_EQ(before.size(), model.size()); // a copy does not change with the set
            ASSERT_EQ(before.isMember(handle), model.count(handle) == 1);
            model.insert(handle);
            RtiAttributeHandleSet others(0);
            bool hasAll = true;
            for (std::size_t left = random() % 6; left > 0; --left) {
                const unsigned long other = random() % 8 ? random() % range : ULONG_MAX - random() % 3;
                others.add(other);
                hasAll = hasAll && model.count(other) == 1;
            }
            ASSERT_EQ(set.containsAll(others), hasAll);
            ASSERT_TRUE(set.containsAll(before));
            ASSERT_EQ(before.containsAll(set), before.size() == set.size());
            const RtiAttributeHandleSet copy = set;
            ASSERT_EQ(copy.size(), model.size());
            unsigned long index = 0;
            for (const RtiAttributeHandle &member : model)
                ASSERT_EQ(copy.getHandle(index++), member);
            for (unsigned long other = 0; other <= range; ++other)
                ASSERT_EQ(copy.isMember(other), model.count(other) == 1);
        }
        EXPECT_EQ(reasonOf<RTI::ArrayIndexOutOfBounds>([&] { set.getHandle(set.size()); }),
                  "attribute handle set: index " + toString(set.size()) + " of " + toString(set.size()) + " handles");
    }
}

TEST(HostServices, StreamsAreSwitchedByPackageAndImportance) {
    RtiDebugStream stream(false, true);
    EXPECT_FALSE(stream.enabled(RTI_P_fedDatabase, RTI_G_high));
    stream.enable(RTI_P_fedDatabase, RTI_G_high);
    EXPECT_TRUE(stream.enabled(RTI_P_fedDatabase, RTI_G_high));
    EXPECT_FALSE(stream.enabled(RTI_P_fedDatabase, RTI_G_medium));
    {
        const RtiDebugSaver saver(stream);
        RtiDump::setTraceMask(RTI_T_NONE);
        EXPECT_FALSE(stream.enabled(RTI_P_fedDatabase, RTI_G_high));
        EXPECT_TRUE(_rtiErrorStream.enabled(RTI_P_fedDatabase, RTI_G_high));
    }
    EXPECT_TRUE(stream.enabled(RTI_P_fedDatabase, RTI_G_high));
    EXPECT_FALSE(stream.enabled(RTI_P_fedDatabase << 1, RTI_G_high));
    EXPECT_TRUE(_rtiErrorStream.enabled(RTI_P_fedDatabase, RTI_G_medium));
    EXPECT_FALSE(_rtiDebugStream.enabled(RTI_P_fedDatabase, RTI_G_high));
    EXPECT_EQ(&stream.getOutputStream(), &std::cerr);
}

TEST(HostServices, DumpsAreNotTraced) {
    struct Probe : std::stringbuf {
        int sync() override { return 0; }
        std::streamsize xsputn(const char *text, std::streamsize size) override {
            mask |= RtiDump::getTraceMask();
            return std::stringbuf::xsputn(text, size);
        }
        unsigned char mask = 0;
    } probe;
    std::ostream os(&probe);
    const RtiDebugSaver saver(_rtiDebugStream);
    RtiDump::setTraceMask(5);
    const RtiFedElement element("x"), other("y");
    element.dump(os);
    RtiBuffer image = imageOf(other);
    element.diff(image, os);
    EXPECT_EQ(probe.str(), "_name=``x''\nold _name=``y'', new _name=``x''\n");
    EXPECT_EQ(probe.mask, RTI_T_NONE);
    EXPECT_EQ(RtiDump::getTraceMask(), 5);
}
