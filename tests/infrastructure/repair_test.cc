#include "infrastructure/parser/RtiFedRepair.hh"

#include <gtest/gtest.h>

namespace {

/// The repairs that are allowed: I and D inserts and drops; of several ")" that may be inserted, the number.
std::string allowedBy(RtiFedRepair &repair) {
    std::string allowed;
    std::size_t closes = 0;
    while (repair.mayInsertClose(closes + 1))
        ++closes;
    if (closes > 0)
        allowed += "I)" + std::to_string(closes);
    for (const auto &[may, name] : {std::pair(repair.mayDropOpen(), " D("), std::pair(repair.mayDropClose(), " D)"),
                                    std::pair(repair.mayInsertOpen(), " I(")})
        allowed += may ? name : "";
    return allowed;
}

/// What takeSuspect() returns until nothing is left: each kind of evidence, and the offsets it names.
std::string suspectsOf(const std::string &bytes) {
    const RtiFedText text(bytes);
    RtiFedRepair repair(text);
    std::string suspects;
    while (const auto suspect = repair.takeSuspect(static_cast<RtiFedOffset>(bytes.size())))
        suspects += std::to_string(suspect->evidence) + ": " + std::to_string(suspect->clause) + " " +
                    std::to_string(suspect->at) + " " + std::to_string(suspect->outer) + "; ";
    return suspects;
}

} // namespace

TEST(Repair, IsAllowedAsFarAsTheWholeTextIsOutOfBalance) {
    const RtiFedText tooFew("(a (b (c \")\" ; )\n"), tooMany("(a))) \"(\""), cancelled(") (");
    RtiFedRepair few(tooFew), many(tooMany), none(cancelled);
    EXPECT_EQ(allowedBy(few), "I)3 D(");
    few.insertClose(2);
    EXPECT_EQ(allowedBy(few), "I)1 D(");
    few.dropOpen();
    EXPECT_EQ(allowedBy(few), "");
    EXPECT_EQ(allowedBy(many), " D) I(");
    many.dropClose();
    EXPECT_EQ(allowedBy(many), " D) I(");
    many.insertOpen();
    EXPECT_EQ(allowedBy(many), "");
    EXPECT_EQ(allowedBy(none), "");
}

TEST(Repair, ShowsWhereTheIndentationContradictsTheParentheses) {
    EXPECT_EQ(suspectsOf("(a\n  (b\n    (c\n  )\n)"), "0: 12 17 5; "); // the ")" of c is aligned with b
    EXPECT_EQ(suspectsOf("(a\n  (b\n  (c)\n)"), "1: 5 10 0; ");        // the "(" of c is aligned with b
    EXPECT_EQ(suspectsOf("(a\n  (b))\n  (c)\n)"), "2: 0 8 0; ");       // a continues after its ")"
    EXPECT_EQ(suspectsOf("(a\n  (b))\n  (c))\n  (d)\n)\n("), "");      // two such places, but one ")" too many
    EXPECT_EQ(suspectsOf("(a (b (c))"), "");
    EXPECT_EQ(suspectsOf("(a\n(b\n(c\n"), "");
}

TEST(Repair, TakesASuspectOnceAndOnlyWhereItIsTrusted) {
    const RtiFedText text("(a\n  (b\n    (c\n  )\n  (d\n    (e\n  )\n)");
    RtiFedRepair repair(text);
    EXPECT_FALSE(repair.takeSuspect(17));
    EXPECT_EQ(repair.takeSuspect(18)->at, 17u);
    EXPECT_FALSE(repair.takeSuspect(18));
    EXPECT_TRUE(repair.hasSuspect());
    repair.insertClose(2); // the text is balanced now
    EXPECT_FALSE(repair.takeSuspect(100));
}
