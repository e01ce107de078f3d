#include "tests/Support.hh"

TEST(Examples, LoadWithEveryTolerance) {
    const auto tolerances = load(example("tolerances.fed"));
    EXPECT_EQ(tolerances->getFederateName(), "Harbour Drill (night; no moon)");
    EXPECT_EQ(tolerances->numObjectClasses(), 12u);
    EXPECT_EQ(tolerances->numInteractionClasses(), 75u);
    EXPECT_EQ(tolerances->getAttributeHandleSet().size(), 42u);
}

TEST(Examples, ListAsAPersonReadsThem) {
    const std::string text = listing(*load(withMom("(class A (attribute a best_effort receive S) (attribute b reliable "
                                                   "timestamp))",
                                                   "(class I reliable timestamp S (parameter p))"
                                                   "(class J best_effort receive)",
                                                   "(space S (dimension X))")));
    const auto has = [&text](const std::string &lines) { return text.find(lines) != std::string::npos; };
    EXPECT_TRUE(has("FED DATABASE\nFederation:  Minimal\nVersion: v1.3\nRouting Space List:\n  S (HANDLE = 1) \n    X "
                    "(HANDLE = 0) \n  HLAMomDefaultSpace (HANDLE = 2) \n\nObject Class Name List:\n"
                    "  ObjectRoot (HANDLE = 1) \n"))
        << text;
    EXPECT_TRUE(has("  ObjectRoot.A (HANDLE = 3) \n"
                    "    a (HANDLE = 2)  RTI_BEST_EFFORT  RTI_RECEIVE_ORDERING  (space= S\n"
                    "    b (HANDLE = 3)  RTI_RELIABLE  RTI_TIME_STAMP_ORDERING  (spaceHandle= 0\n"))
        << text;
    EXPECT_TRUE(
        has("\n\nInteractions List:\n  InteractionRoot   (HANDLE = 1) RTI_RELIABLE  RTI_TIME_STAMP_ORDERING  \n"))
        << text;
    EXPECT_TRUE(has("  InteractionRoot.I   (HANDLE = 3) RTI_RELIABLE  RTI_TIME_STAMP_ORDERING  (Space= S\n    p\n"
                    "  InteractionRoot.J   (HANDLE = 4) RTI_BEST_EFFORT  RTI_RECEIVE_ORDERING  \n"))
        << text;
}
