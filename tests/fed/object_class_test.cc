#include "fed/RtiFedObjectClass.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

namespace {

/// Root (1), Sub (5), Leaf (6), each with an attribute.
struct ObjectClassTest : testing::Test {
    RtiFedObjectClass root{1, "Root", nullptr};
    RtiFedObjectClass *sub = root.addObjectClass(5, "Root.Sub");
    RtiFedObjectClass *leaf = sub->addObjectClass(6, "Root.Sub.Leaf");
    RtiFedAttribute *position = root.addAttribute(1, "Position", 1, 2, 3);
    RtiFedAttribute *speed = sub->addAttribute(2, "Speed", 2, 1, 0);
    RtiFedAttribute *flag = leaf->addAttribute(3, "Flag", 2, 2, -1);
};

} // namespace

TEST_F(ObjectClassTest, LooksOnlyAtItselfUnlessAskedToGoUp) {
    EXPECT_EQ(root.getAttributeHandle("POSITION"), 1);
    EXPECT_EQ(root.getAttributeName(1), "Position");
    EXPECT_EQ(leaf->getAttributeHandleRecursive("position"), 1);
    EXPECT_EQ(leaf->findRecurse(1), position);
    EXPECT_EQ(leaf->getAttributeHandle("position"), 0);
    EXPECT_FALSE(leaf->attributeExists("position"));
    EXPECT_TRUE(leaf->attributeIsInherited("position"));
    EXPECT_FALSE(leaf->attributeIsInherited("flag"));
    EXPECT_FALSE(root.attributeIsInherited("position"));
    EXPECT_EQ(leaf->getAttributeName(1), "");
    EXPECT_EQ(leaf->findRecurse(9), nullptr);
    EXPECT_EQ(leaf->getAttributeHandleRecursive("none"), 0);
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { leaf->find(1); }), "\"RtiFedObjectClass\", line 390: ");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { leaf->getAttribute(1); }), "\"RtiFedObjectClass\", line 299: ");
    EXPECT_EQ(leaf->getAttribute(0), flag);
    EXPECT_EQ(sub->find(2), speed);
    EXPECT_EQ(leaf->getParentClass(), sub);
    EXPECT_EQ(leaf->getParentClassHandle(), 5);
    EXPECT_EQ(root.getParentClassHandle(), 0);
}

TEST_F(ObjectClassTest, RefusesAnAttributeTwice) {
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { root.addAttribute(9, "POSITION", 1, 1, 0); }),
              "\"RtiFedObjectClass\", line 474:  Duplicate attribute POSITION in object class Root");
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { leaf->addAttribute(9, "position", 1, 1, 0); }),
              "\"RtiFedObjectClass\", line 485:  Duplicate attribute position in object class hierarchy at class "
              "Root.Sub.Leaf");
    EXPECT_EQ(leaf->getNumberOfAttributes(), 1u);
    root.addAttribute(9, "flag", 1, 1, 0); // subclasses are not checked
    root.addAttribute(4, "late", 1, 1, 0); // handles may descend and repeat
    root.addAttribute(9, "twin", 1, 1, 0);
    EXPECT_EQ(root.find(1)->getName() + root.find(4)->getName() + root.find(9)->getName(), "Positionlateflag");
    EXPECT_NE(dumpOf(root).find("size _attributeHandleMap=``3''\nsize _attributeVector=``4''\n"), std::string::npos);
}

TEST_F(ObjectClassTest, GetsASubclassByItsHandleAndMakesTheMissing) {
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { root.getSubclass(1); }), "\"RtiFedObjectClass\", line 283: ");
    EXPECT_EQ(root.getSubclass(0), nullptr);
    EXPECT_EQ(root.getNumberOfSubclasses(), 2u);
    root.addObjectClass(2, "Root.Two");
    EXPECT_EQ(root.getSubclass(2)->getName(), "Root.Two");
    EXPECT_EQ(root.getNumberOfSubclasses(), 3u);

    // Walks over the tree skip the empty entry.
    RtiFedObjectClass same(1, "Root", nullptr);
    const unsigned long before = same.getChecksum();
    same.addObjectClass(7, "Root.Seven");
    const unsigned long with = same.getChecksum();
    same.getSubclass(0);
    EXPECT_EQ(same.getChecksum(), with);
    EXPECT_NE(with, before);
    RtiBuffer image = imageOf(same);
    EXPECT_EQ(RtiFedObjectClass(image).getNumberOfSubclasses(), 1u);
}

TEST_F(ObjectClassTest, AnnouncesDescendantsToAllAbove) {
    leaf->addChildClassToAll(8);
    EXPECT_TRUE(root.hasDerrivedClass(8));
    EXPECT_TRUE(sub->hasDerrivedClass(8));
    EXPECT_FALSE(root.hasDerrivedClass(5)); // it was not announced
    root.addChildClass(5);
    EXPECT_EQ(root.getChildrenClasses(), std::set<RtiObjectClassHandle>{5});
    EXPECT_FALSE(root.hasDerrivedClass(5));
}

TEST_F(ObjectClassTest, KeepsItsAvailableSets) {
    auto set = std::make_unique<RtiAttributeHandleSet>(1);
    RtiAttributeHandleSet *held = set.get();
    leaf->setAvailableAttributes(std::move(set));
    leaf->setAvailableAttributes(std::unique_ptr<RtiAttributeHandleSet>(held)); // the same set: it is kept
    EXPECT_EQ(leaf->getAvailableAttributes(), held);
    EXPECT_EQ(leaf->publishAvailableAttributes(std::make_unique<RtiAttributeHandleSet>(1)), held);
    leaf->setAvailableFedAttributes(std::make_unique<std::set<RtiFedAttribute *>>());
    EXPECT_TRUE(leaf->getAvailableFedAttributes()->empty());
    RtiBuffer image = imageOf(*leaf);
    leaf->restore(image);
    EXPECT_EQ(leaf->getAvailableAttributes(), nullptr);
    EXPECT_EQ(leaf->getAvailableFedAttributes(), nullptr);
    EXPECT_EQ(leaf->getParentClass(), nullptr);
}

// Each constant is the XOR of the CRC-32 of the names and of the handles' four bytes, least significant first.
TEST_F(ObjectClassTest, ChecksumIsTheXorOfItsTerms) {
    EXPECT_EQ(RtiFedObjectClass(6, "Root.Sub.Leaf", nullptr).getChecksum(), 0x572BED74U);
    EXPECT_EQ(leaf->getChecksum(), 0xEAE326DDU);
    EXPECT_EQ(sub->getChecksum() ^ leaf->getChecksum(), 0x450DB0C4U); // a subclass is one more term
}

TEST_F(ObjectClassTest, ImageHoldsTheWholeSubtree) {
    leaf->addChildClass(8);
    leaf->addChildClassToAll(8);
    EXPECT_EQ(bytesOf(*leaf), "\0\0\0\15Root.Sub.Leaf\0\0\0\0"
                              "\0\0\0\1\0\0\0\4Flag\0\0\0\2\0\0\0\2\xFF\xFF\xFF\xFF\0\0\0\3"
                              "\0\0\0\1\0\0\0\10\0\0\0\1\0\0\0\10\0\0\0\6\0\0\0\5"s);
    RtiBuffer image = imageOf(root);
    RtiFedObjectClass restored(image);
    EXPECT_EQ(bytesOf(restored), bytesOf(root));
    EXPECT_EQ(restored.getChecksum(), root.getChecksum());
    EXPECT_EQ(diffOf(restored, root), "");
    EXPECT_TRUE(restored.hasDerrivedClass(8));
}

TEST_F(ObjectClassTest, DumpsAndComparesSizes) {
    root.addChildClassToAll(5);
    EXPECT_EQ(dumpOf(root), "_theHandle=``1''\n_parentObjectClassHandle=``0''\nsize _subClassHandleToPtrMap=``1''\n"
                            "size _attributeNameMap=``1''\nsize _attributeHandleMap=``1''\n"
                            "size _attributeVector=``1''\nsize _childrenClasses=``0''\n"
                            "size _allChildrenClasses=``1''\n");
    RtiFedObjectClass other(2, "Other", leaf);
    other.addChildClass(9);
    EXPECT_EQ(diffOf(root, other), "old _theHandle=``1'', new _theHandle=``2''\n"
                                   "old _parentObjectClassHandle=``0'', new _parentObjectClassHandle=``6''\n"
                                   "old size _subClassHandleToPtrMap=``1'', new size _subClassHandleToPtrMap=``0''\n"
                                   "old size _attributeNameMap=``1'', new size _attributeNameMap=``0''\n"
                                   "old size _attributeHandleMap=``1'', new size _attributeHandleMap=``0''\n"
                                   "old size _attributeVector=``1'', new size _attributeVector=``0''\n"
                                   "old size _childrenClasses=``0'', new size _childrenClasses=``1''\n"
                                   "old size _allChildrenClasses=``1'', new size _allChildrenClasses=``0''\n");
}

TEST(ObjectClass, NestsToABound) {
    RtiFedObjectClass root(1, "c", nullptr);
    RtiFedObjectClass *node = &root;
    for (unsigned level = 2; level <= kMaxClassNesting; ++level)
        node = node->addObjectClass(level, "c");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { node->addObjectClass(999, "deep"); }),
              "\"RtiFedClassNode\", line 60: the class deep is nested deeper than 256 levels");
    RtiBuffer image = imageOf(root);
    EXPECT_EQ(RtiFedObjectClass(image).getChecksum(), root.getChecksum());

    // The beginning of a class with one subclass, repeated.
    std::string nested;
    for (unsigned level = 0; level < 100000; ++level)
        nested += "\0\0\0\1c\0\0\0\1"s;
    RtiBuffer hostile(nested.data(), nested.size());
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { RtiFedObjectClass{hostile}; }),
              "image byte 2304: a class nested deeper than 256 levels");
}
