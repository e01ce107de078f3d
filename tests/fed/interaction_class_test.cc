#include "fed/RtiFedInteractionClass.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

namespace {

struct InteractionClassTest : testing::Test {
    RtiFedInteractionClass root{1, "Root", nullptr, 2, 1, 0};
    RtiFedInteractionClass *sub = root.addInteractionClass(4, "Root.Sub", 1, 2, -3);
    RtiFedParameter *cause = root.addParameter(1, "Cause");
    RtiFedParameter *place = sub->addParameter(2, "Place");
};

} // namespace

TEST_F(InteractionClassTest, LooksOnlyAtItself) {
    EXPECT_EQ(sub->getParameterHandle("PLACE"), 2);
    EXPECT_EQ(sub->getParameterName(2), "Place");
    EXPECT_EQ(sub->getParameter(0), place);
    EXPECT_EQ(sub->find(2), place);
    EXPECT_EQ(sub->find(1), nullptr);
    EXPECT_FALSE(sub->parameterExists("cause"));
    EXPECT_TRUE(sub->parameterExists("place"));
    EXPECT_TRUE(sub->parameterIsInherited("cause"));
    EXPECT_FALSE(sub->parameterIsInherited("place"));
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { sub->getParameterHandle("cause"); }),
              "\"RtiFedInteractionClass\", line 202: ");
    EXPECT_EQ(reasonOf<RTI::InteractionParameterNotDefined>([&] { sub->getParameterName(1); }),
              "\"RtiFedInteractionClass\", line 225: ");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { sub->getParameter(1); }), "\"RtiFedInteractionClass\", line 333: ");
    for (const unsigned long handle : {5UL, 6UL, ~0UL}) {
        EXPECT_EQ(sub->find(handle), nullptr);
        EXPECT_EQ(sub->find(sub->addParameter(handle, "p" + std::to_string(handle))->getHandle())->getHandle(), handle);
        EXPECT_EQ(sub->find(3), nullptr);
    }
}

TEST_F(InteractionClassTest, RefusesAParameterTwice) {
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { sub->addParameter(9, "place"); }),
              "\"RtiFedInteractionClass\", line 413:  Duplicate attribute place in interaction class Root.Sub");
    EXPECT_EQ(
        reasonOf<RTI::ErrorReadingFED>([&] { sub->addParameter(9, "CAUSE"); }),
        "\"RtiFedInteractionClass\", line 423:  Duplicate attribute CAUSE in interaction class hierarchy at class "
        "Root.Sub");
    EXPECT_EQ(sub->getNumberOfParameters(), 1u);
}

TEST_F(InteractionClassTest, ChecksumHasItsDefaultsAndSubclasses) {
    EXPECT_EQ(sub->getChecksum(), 0xF23892F2U);
    const unsigned long before = root.getChecksum();
    const RtiFedInteractionClass *second = root.addInteractionClass(5, "Root.Second", 2, 2, 0);
    EXPECT_EQ(root.getChecksum(), before ^ second->getChecksum());
    root.setDefaultSpace(7);
    EXPECT_NE(root.getChecksum(), before ^ second->getChecksum());
}

TEST_F(InteractionClassTest, ImageDumpAndDiff) {
    sub->addChildClass(9);
    EXPECT_EQ(bytesOf(*sub), "\0\0\0\10Root.Sub\0\0\0\0\0\0\0\1\0\0\0\5Place\0\0\0\2\0\0\0\1\0\0\0\11"
                             "\0\0\0\1\0\0\0\2\xFF\xFF\xFF\xFD\0\0\0\4\0\0\0\1"s);
    RtiBuffer image = imageOf(root);
    RtiFedInteractionClass restored(image);
    EXPECT_EQ(bytesOf(restored), bytesOf(root));
    EXPECT_EQ(restored.getChecksum(), root.getChecksum());
    EXPECT_EQ(dumpOf(root), "_theHandle=``1''\n_parentInteractionClassHandle=``0''\n_defaultTransport=``2''\n"
                            "_defaultOrdering=``1''\n_defaultSpace=``0''\nsize _subClassHandleToPtrMap=``1''\n"
                            "size _parameterHandlePtrMap=``1''\nsize _parameterNamePtrMap=``1''\n"
                            "size _parameterVector=``1''\nsize _childrenClasses=``0''\n");
    const RtiFedInteractionClass other(4, "Other", &root, 2, 1, 0);
    EXPECT_EQ(diffOf(*sub, other), "old _defaultTransport=``1'', new _defaultTransport=``2''\n"
                                   "old _defaultOrdering=``2'', new _defaultOrdering=``1''\n"
                                   "old _defaultSpace=``-3'', new _defaultSpace=``0''\n"
                                   "old size _parameterHandlePtrMap=``1'', new size _parameterHandlePtrMap=``0''\n"
                                   "old size _parameterNamePtrMap=``1'', new size _parameterNamePtrMap=``0''\n"
                                   "old size _parameterVector=``1'', new size _parameterVector=``0''\n"
                                   "old size _childrenClasses=``1'', new size _childrenClasses=``0''\n");
    EXPECT_EQ(diffOf(root, restored), "");
}

TEST_F(InteractionClassTest, RestoresInItsOwnPlace) {
    RtiFedInteractionClass other{9, "Other", nullptr, 1, 1, 0};
    for (unsigned long handle = 20; handle > 0; --handle) // enough, in this order, to need the maps
        other.addParameter(handle, "p" + std::to_string(handle));
    for (int i = 0; i < 2; ++i) {
        RtiBuffer image = imageOf(other);
        root.restore(image);
        EXPECT_EQ(bytesOf(root), bytesOf(other));
        EXPECT_EQ(root.getParameterHandle("P7"), 7);
    }
}
