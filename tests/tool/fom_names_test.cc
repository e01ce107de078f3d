#include "tool/fom/FomNames.hh"

#include <gtest/gtest.h>

#include <random>

TEST(FomNamesTest, LegalNamesStayAndOthersAreEscaped) {
    const std::pair<std::string, std::string> names[] = {
        {"Craft", "Craft"},
        {"a.b-c_1", "a.b-c_1"},
        {"pos_x_y_x12_", "pos_x_y_x12_"},
        {"Gr\xC3\xB6\xC3\x9Fte", "Gr\xC3\xB6\xC3\x9Fte"},
        {"Pilot Boat", "Pilot_x0020_Boat"},
        {"3D", "_x0033_D"},
        {"-", "_x002D_"},
        {"", "_x0000_"},
        {"\xE9t\xE9", "_xDCE9_t_xDCE9_"},
        {"\xF0\x9F\x9A\xA2", "_x01F6A2_"},
        {"_x0020_", "_x005F_x0020_"},
        {"_x0041 ", "_x005F_x0041_x0020_"},
        {"_x01F6A2_", "_x005F_x01F6A2_"},
        {"_xG041 ", "_xG041_x0020_"},
        {"_x00412_x0041", "_x00412_x0041"},
        {"\xFF\xEF\xBF\xBF\xF0\x90\x80\x80", "_xDCFF__xFFFF__x010000_"},
    };
    for (const auto &[fed, fom] : names) {
        EXPECT_EQ(fomName(fed), fom);
        EXPECT_EQ(fedName(fom), fed);
    }
    // The first and the last of each range of letters, and the characters after.
    const std::string letters = "\u00C0\u00D6\u00D8\u00F6\u00F8\u0131\u0134\u013E\u0141\u0148\u014A\u017E\u0388\u038A"
                                "\u038E\u03A1\u03A3\u03CE\u0401\u040C\u040E\u044F\u0451\u045C\u045E\u0481\u05D0\u05EA"
                                "\u0621\u063A\u0641\u064A\u0905\u0939\u0E01\u0E2E\u10D0\u10F6\u1E00\u1E9B\u1EA0\u1EF9"
                                "\u3041\u3094\u30A1\u30FA\u4E00\u9FA5\uAC00\uD7A3";
    EXPECT_EQ(fomName(letters), letters);
    EXPECT_EQ(
        fomName("\u00D7\u00F7\u0132\u013F\u0149\u017F\u038B\u03A2\u03CF\u040D\u0450\u045D\u0482\u05EB\u063B"
                "\u064B\u093A\u0E2F\u10F7\u1E9C\u1EFA\u3095\u30FB\u9FA6\uD7A4"),
        "_x00D7__x00F7__x0132__x013F__x0149__x017F__x038B__x03A2__x03CF__x040D__x0450__x045D__x0482__x05EB__x063B_"
        "_x064B__x093A__x0E2F__x10F7__x1E9C__x1EFA__x3095__x30FB__x9FA6__xD7A4_");
    // Escapes that no name of FED has: of legal characters, of what FED cannot hold, in the wrong letter case.
    for (const char *foreign : {"_x0041_", "_x0022_", "_x000A_", "a_x00e9_", "_xD800_", "_xFFFFFF_", "_xDC41_"})
        EXPECT_EQ(fedName(foreign), foreign);
}

TEST(FomNamesTest, DimensionsKeepTheirSpace) {
    EXPECT_EQ(fomDimension("Area", "east"), "Area.east");
    EXPECT_EQ(fomDimension("A.B", "1 C.D"), "A_x002E_B.1_x0020_C_x002E_D");
    EXPECT_EQ(fomEmptySpace("3.B"), "_x0033__x002E_B");
    for (const char *foreign : {"east", "a.b.c", "a.", ".a", "Area._x0041_", "Area._x0022_"})
        EXPECT_FALSE(fedDimension(foreign)) << foreign;
    EXPECT_FALSE(fedEmptySpace("a.b"));
}

TEST(FomNamesTest, EveryNameComesBack) {
    std::mt19937 random(7);
    constexpr std::string_view kBytes = "_x00420FAa. -\xC3\xA9\xE2\x80\xAE:";
    const auto anyName = [&] {
        std::string name;
        for (std::size_t i = random() % 16; i > 0; --i)
            name += kBytes[random() % kBytes.size()];
        return name;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::string one = anyName(), other = anyName();
        EXPECT_EQ(fedName(fomName(one)), one);
        EXPECT_EQ(fedEmptySpace(fomEmptySpace(one)), one);
        EXPECT_EQ(fedDimension(fomDimension(one, other)), std::pair(one, other));
    }
}
