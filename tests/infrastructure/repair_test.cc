#include "infrastructure/parser/RtiFedRepair.hh"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

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
    std::size_t places = 0, sum = 0; // of the suspects; the sum of their offsets shows whether any moved

    std::string text() const {
        return std::to_string(right) + ' ' + std::to_string(none) + ' ' + std::to_string(wrong) + " of " +
               std::to_string(places) + " at " + std::to_string(sum);
    }
};

/// Judges the text with each sign, "(" or ")", of it left out, or doubled: whether the line is a place of a suspect.
Judgements judgeEach(const std::string &bytes, char sign, bool doubled) {
    Judgements judgements;
    for (std::size_t at = bytes.find(sign); at < bytes.size(); at = bytes.find(sign, at + 1)) {
        const RtiFedText text(bytes.substr(0, at) + std::string(doubled ? 2 : 0, sign) + bytes.substr(at + 1));
        bool right = false;
        const RtiFedBalance balance(text);
        for (const RtiFedBalance::Suspect &suspect : balance.suspects)
            for (std::size_t i = 0; i < suspect.numPlaces; ++i) {
                right =
                    right || text.position(suspect.places[i]).line == text.position(static_cast<RtiFedOffset>(at)).line;
                ++judgements.places;
                judgements.sum += suspect.places[i];
            }
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
    const char *name;
    std::string text;
    const char *closes, *opens; // of each sign left out and of each doubled: right, not judged, wrong, and the places
};

class RepairLayout : public testing::TestWithParam<std::tuple<Laid, char>> {};

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
    const auto &[laid, sign] = GetParam();
    EXPECT_EQ(judgeEach(laid.text, sign, false).text() + "; " + judgeEach(laid.text, sign, true).text(),
              sign == ')' ? laid.closes : laid.opens);
}

INSTANTIATE_TEST_SUITE_P(
    All, RepairLayout,
    testing::Combine(
        testing::Values(Laid{"blanks", layOut(even(2), ' ', false), "28 0 0 of 28 at 13961; 28 0 0 of 31 at 15618",
                             "0 27 1 of 1 at 880; 27 0 1 of 29 at 12098"},
                        Laid{"tabs", layOut(even(1), '\t', false), "28 0 0 of 28 at 12263; 28 0 0 of 30 at 13152",
                             "0 27 1 of 1 at 767; 24 3 1 of 26 at 9341"},
                        Laid{"run", layOut(even(2), ' ', true), "23 5 0 of 26 at 10883; 28 0 0 of 33 at 15650",
                             "0 27 1 of 1 at 809; 27 1 0 of 27 at 9773"},
                        Laid{"uneven", layOut(uneven, ' ', false), "28 0 0 of 28 at 17471; 28 0 0 of 31 at 19745",
                             "0 27 1 of 1 at 1114; 27 0 1 of 29 at 15217"},
                        Laid{"unevenRun", layOut(uneven, ' ', true), "23 5 0 of 26 at 13204; 28 0 0 of 28 at 15995",
                             "0 27 1 of 1 at 982; 27 1 0 of 27 at 11939"},
                        Laid{"flat", layOut(even(0), ' ', false), "28 0 0 of 32 at 11759; 26 2 0 of 41 at 15039",
                             "0 28 0 of 0 at 0; 27 1 0 of 27 at 7776"},
                        Laid{"flatRun", layOut(even(0), ' ', true), "18 7 3 of 34 at 10448; 27 0 1 of 47 at 18833",
                             "0 27 1 of 3 at 1295; 27 1 0 of 27 at 7677"}),
        testing::Values(')', '(')),
    [](const auto &tested) {
        return std::get<Laid>(tested.param).name + std::string(std::get<char>(tested.param) == ')' ? "Close" : "Open");
    });
