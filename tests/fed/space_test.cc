#include "fed/RtiFedSpace.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

namespace {

struct Area : RtiFedSpace {
    Area(std::initializer_list<const char *> dimensions) : RtiFedSpace(-4, "Area") {
        for (const char *name : dimensions)
            addDimension(name);
    }
};

} // namespace

TEST(Space, NumbersItsDimensionsFromZero) {
    const Area space{"X", "Y", "Z"};
    EXPECT_EQ(space.getDimension(1)->getName(), "Y");
    EXPECT_EQ(space.getDimension(1)->getHandle(), 1);
    EXPECT_EQ(space.getNumberOfDimensions(), 3u);
    EXPECT_EQ(space.getDimensionName(2), "Z");
    EXPECT_EQ(space.find(0)->getName(), "X");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { space.getDimension(3); }), "\"RtiFedSpace\", line 389: ");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { space.find(3); }), "\"RtiFedSpace\", line 372: ");
    EXPECT_EQ(reasonOf<RTI::DimensionNotDefined>([&] { space.getDimensionName(3); }), "\"RtiFedSpace\", line 301: ");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { space.getDimensionHandle("W"); }), "\"RtiFedSpace\", line 278: ");
}

TEST(Space, FindsInAnyCaseButExistsInUpperCaseOnly) {
    const Area space{"Lat1"};
    EXPECT_EQ(space.getDimensionHandle("lAT1"), 0);
    EXPECT_TRUE(space.dimensionExists("LAT1"));
    EXPECT_FALSE(space.dimensionExists("Lat1"));
}

TEST(Space, RefusesASecondNameOnlyInUpperCase) {
    Area space{"X"};
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { space.addDimension("X"); }), "\"RtiFedSpace\", line 338: ");
    EXPECT_EQ(space.addDimension("x")->getHandle(), 1); // the refusal used no handle
    space.addDimension("y");
    EXPECT_EQ(space.getDimensionHandle("x"), 0);
    EXPECT_EQ(dumpOf(space), "_theHandle=``-4''\n_nextDimensionHandle=``3''\nsize _dimensionNameMap=``2''\n"
                             "size _dimensionHandleMap=``3''\nsize _dimensionVector=``3''\n");
}

TEST(Space, RestoresWithItsNumbering) {
    Area space{"X", "x"};
    EXPECT_EQ(bytesOf(space), "\0\0\0\4Area\0\0\0\2"
                              "\0\0\0\1X\0\0\0\0\0\0\0\1x\0\0\0\1\xFF\xFF\xFF\xFC\0\0\0\2"s);
    RtiBuffer image = imageOf(space);
    RtiFedSpace restored(image);
    EXPECT_EQ(restored.getChecksum(), space.getChecksum());
    EXPECT_EQ(restored.addDimension("Y")->getHandle(), 2);
    EXPECT_EQ(diffOf(restored, space), "old _nextDimensionHandle=``3'', new _nextDimensionHandle=``2''\n"
                                       "old size _dimensionNameMap=``2'', new size _dimensionNameMap=``1''\n"
                                       "old size _dimensionHandleMap=``3'', new size _dimensionHandleMap=``2''\n"
                                       "old size _dimensionVector=``3'', new size _dimensionVector=``2''\n");
    RtiBuffer again = imageOf(space);
    restored.restore(again);
    EXPECT_EQ(bytesOf(restored), bytesOf(space));
}

TEST(Space, ChecksumIsMadeOfItsNamesAndHandles) {
    EXPECT_EQ((Area{}.getChecksum()), 0x9AECC247U);
    EXPECT_EQ((Area{"X", "Y"}.getChecksum()), 0x555795B4U);
}

TEST(Space, ChecksumRefusesAWideHandle) {
    if constexpr (sizeof(long) > 4) {
        EXPECT_EQ(reasonOf<RTI::RTIinternalError>([] { RtiFedSpace(1L << 32, "s").getChecksum(); }),
                  "\"RtiFedChecksum\", line 20: the handle 4294967296 does not fit into 32 bits");
    }
}
