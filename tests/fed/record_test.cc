#include "fed/RtiFedAttribute.hh"
#include "fed/RtiFedDimension.hh"
#include "fed/RtiFedParameter.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

#include <locale>

TEST(Handle, OrdersBySignOfItsKind) {
    EXPECT_LT(RtiSpaceHandle(-1), RtiSpaceHandle(1));
    EXPECT_LT(RtiAttributeHandle(1), RtiAttributeHandle(4294967295UL));
    EXPECT_EQ(RtiAttributeHandle(), RtiAttributeHandle(0));
    EXPECT_EQ(sizeof(RtiAttributeHandle), sizeof(void *) + sizeof(unsigned long));
}

TEST(Handle, SavesAsItsNumber) {
    EXPECT_EQ(bytesOf(RtiAttributeHandle(4294967295UL)), "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(bytesOf(RtiSpaceHandle(-2)), "\xFF\xFF\xFF\xFE");
    RtiBuffer image = imageOf(RtiSpaceHandle(-2));
    RtiSpaceHandle restored;
    image.get(restored);
    EXPECT_EQ(restored, -2);
}

TEST(Handle, PrintsDecimalWhateverTheLocale) {
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouped));
    EXPECT_EQ(toString<unsigned long>(4294967295UL), "4294967295");
    EXPECT_EQ(toString<unsigned long>(0), "0");
    EXPECT_EQ(dumpOf(RtiAttributeHandle(4294967295UL)), "_value=``4294967295''\n");
    EXPECT_EQ(dumpOf(RtiSpaceHandle(-1)), "_value=``-1''\n");
    std::locale::global(before);
}

TEST(Handle, DiffConsumesOneNumber) {
    EXPECT_EQ(diffOf(RtiAttributeHandle(7), RtiAttributeHandle(7)), "");
    EXPECT_EQ(diffOf(RtiAttributeHandle(5), RtiAttributeHandle(7)), "old _value=``5'', new _value=``7''\n");
    EXPECT_EQ(diffOf(RtiSpaceHandle(-5), RtiSpaceHandle(7)), "old _value=``-5'', new _value=``7''\n");
}

TEST(Element, ComparesItsNameExactly) {
    const RtiFedElement element("Plane");
    EXPECT_EQ(bytesOf(element), "\0\0\0\5Plane"s);
    EXPECT_EQ(dumpOf(element), "_name=``Plane''\n");
    EXPECT_EQ(dumpOf(RtiFedElement("")), "_name=``''\n");
    EXPECT_EQ(diffOf(RtiFedElement("plane"), element), "old _name=``plane'', new _name=``Plane''\n");
    EXPECT_EQ(diffOf(element, element), "");

    RtiFedElement restored("old");
    const std::string &name = restored.getName();
    RtiBuffer image = imageOf(element);
    restored.restore(image);
    EXPECT_EQ(name, "Plane");
}

template <class Record>
class NumberedElementTest : public testing::Test {};
using NumberedElements = testing::Types<RtiFedParameter, RtiFedDimension>;
TYPED_TEST_SUITE(NumberedElementTest, NumberedElements);

TYPED_TEST(NumberedElementTest, IsANameAndAHandle) {
    const TypeParam record(3, "x");
    EXPECT_EQ(bytesOf(record), "\0\0\0\1x\0\0\0\3"s);
    EXPECT_EQ(dumpOf(record), "_theHandle=``3''\n");
    EXPECT_EQ(diffOf(TypeParam(3, "another"), record), "");
    EXPECT_EQ(diffOf(TypeParam(4, "another"), record), "old _theHandle=``4'', new _theHandle=``3''\n");
    RtiBuffer image = imageOf(record);
    TypeParam restored(image);
    EXPECT_EQ(restored.getName(), "x");
    EXPECT_EQ(restored.getHandle(), 3);
    image = imageOf(TypeParam(4, "yy"));
    restored.restore(image);
    EXPECT_EQ(bytesOf(restored), "\0\0\0\2yy\0\0\0\4"s);
}

TEST(Attribute, ImageHasTheHandleLast) {
    const RtiFedAttribute attribute(7, "x", 1, 2, -1);
    EXPECT_EQ(bytesOf(attribute), "\0\0\0\1x\0\0\0\1\0\0\0\2\xFF\xFF\xFF\xFF\0\0\0\7"s);
    RtiBuffer image = imageOf(attribute);
    EXPECT_EQ(bytesOf(RtiFedAttribute(image)), bytesOf(attribute));
    RtiFedAttribute other(8, "another", 2, 1, 0);
    image.rewind();
    other.restore(image);
    EXPECT_EQ(bytesOf(other), bytesOf(attribute));
    EXPECT_EQ(dumpOf(attribute), "_theHandle=``7''\n_defaultTransport=``1''\n_defaultOrdering=``2''\n"
                                 "_defaultSpace=``-1''\n");
}

TEST(Attribute, DiffHasItsOddCommas) {
    const RtiFedAttribute live(7, "x", 1, 2, 3);
    EXPECT_EQ(diffOf(RtiFedAttribute(7, "y", 1, 2, 3), live), "");
    EXPECT_EQ(diffOf(RtiFedAttribute(8, "x", 1, 2, 3), live), "old _theHandle=``8'', new _theHandle=``7''\n");
    EXPECT_EQ(diffOf(RtiFedAttribute(7, "x", 2, 1, -3), live),
              "old _defaultTransport=``2'',, new _defaultTransport=``1''\n"
              "old _defaultOrdering=``1'',, new _defaultOrdering=``2''\n"
              "old _defaultSpace=``-3'',, new _defaultSpace=``3''\n");
}
