#include "infrastructure/parser/RtiFedRepair.hh"

#include <gtest/gtest.h>

#include <functional>

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

/// A federation, laid out: `indent` makes the indentation of a level in a line; with `run`, a ")" is never on a line of
/// its own.
std::string layOut(const std::function<std::size_t(std::size_t level, std::size_t line)> &indent, char blank,
                   bool run) {
    std::string text;
    std::size_t level = 0, line = 0;
    for (const char *clause : {"(FED",
                               "(Federation F)",
                               "(FEDversion v)",
                               "(spaces",
                               "(space S",
                               "(dimension X)",
                               ")",
                               ")",
                               "(objects",
                               "(class ObjectRoot",
                               "(attribute privilegeToDelete reliable receive)",
                               "(class Boat",
                               "(attribute Name reliable receive)",
                               "(attribute Length reliable receive)",
                               "(attribute Width reliable receive)",
                               "(class Tug",
                               "(attribute Pull reliable receive)",
                               "(attribute Line reliable receive)",
                               ")",
                               "(class Ferry",
                               "(attribute Ramp reliable receive)",
                               ")",
                               ")",
                               "(class Buoy",
                               "(attribute Light reliable receive)",
                               "(attribute Bell reliable receive)",
                               ")",
                               ")",
                               ")",
                               "(interactions",
                               "(class InteractionRoot reliable receive",
                               "(class Storm reliable receive",
                               "(parameter Force)",
                               "(parameter From)",
                               ")",
                               "(class Tide reliable receive",
                               "(parameter Height)",
                               ")",
                               ")",
                               ")",
                               ")"}) {
        const std::string part = clause;
        const bool closes = part == ")";
        level -= closes ? 1 : 0;
        if (!run || !closes)
            text += (text.empty() ? "" : "\n") + std::string(indent(level, ++line), blank);
        text += part;
        level += part[0] == '(' && part.back() != ')' ? 1 : 0;
    }
    return text + '\n';
}

struct Judgements {
    int right = 0, none = 0, wrong = 0;
};

/// Judges the text with each ")" of it left out, or doubled: whether the line is a place of a suspect.
Judgements judgeEach(const std::string &bytes, bool doubled) {
    Judgements judgements;
    for (std::size_t at = bytes.find(')'); at < bytes.size(); at = bytes.find(')', at + 1)) {
        const RtiFedText text(bytes.substr(0, at) + (doubled ? "))" : "") + bytes.substr(at + 1));
        bool right = false;
        const RtiFedBalance balance(text);
        for (const RtiFedBalance::Suspect &suspect : balance.suspects)
            for (std::size_t i = 0; i < suspect.numPlaces; ++i)
                right =
                    right || text.position(suspect.places[i]).line == text.position(static_cast<RtiFedOffset>(at)).line;
        ++(right ? judgements.right : balance.suspects.empty() ? judgements.none : judgements.wrong);
    }
    return judgements;
}

std::function<std::size_t(std::size_t, std::size_t)> even(std::size_t width) {
    return [width](std::size_t level, std::size_t) { return width * level; };
}

std::size_t uneven(std::size_t level, std::size_t line) {
    return 4 * level + (line % 5 == 0 && level > 0 ? 1 : 0);
}

struct Laid {
    const char *name, *expected; // of 28 missing and of 28 doubled ")": right, not judged, wrong
    std::string text;
};

class RepairLayout : public testing::TestWithParam<Laid> {};

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

TEST_P(RepairLayout, ShowsTheLineOfAParenthesis) {
    std::string judged;
    for (const bool doubled : {false, true}) {
        const Judgements j = judgeEach(GetParam().text, doubled);
        judged += (doubled ? "; " : "") + std::to_string(j.right) + " " + std::to_string(j.none) + " " +
                  std::to_string(j.wrong);
    }
    EXPECT_EQ(judged, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(All, RepairLayout,
                         testing::Values(Laid{"blanks", "28 0 0; 28 0 0", layOut(even(2), ' ', false)},
                                         Laid{"tabs", "28 0 0; 28 0 0", layOut(even(1), '\t', false)},
                                         Laid{"run", "23 5 0; 28 0 0", layOut(even(2), ' ', true)},
                                         Laid{"uneven", "28 0 0; 28 0 0", layOut(uneven, ' ', false)},
                                         Laid{"unevenRun", "23 5 0; 28 0 0", layOut(uneven, ' ', true)},
                                         Laid{"flat", "28 0 0; 26 2 0", layOut(even(0), ' ', false)},
                                         Laid{"flatRun", "18 7 3; 27 0 1", layOut(even(0), ' ', true)}),
                         [](const auto &laid) { return std::string(laid.param.name); });
