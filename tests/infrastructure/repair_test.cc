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
