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
    };
    for (const auto &[fed, fom] : names) {
        EXPECT_EQ(fomName(fed), fom);
        EXPECT_EQ(fedName(fom), fed);
    }
    // Escapes that no name of FED has: of legal characters, of what FED cannot hold, in the wrong letter case.
    for (const char *foreign : {"_x0041_", "_x0022_", "_x000A_", "a_x00e9_", "_xD800_", "_xFFFFFF_", "_xDC41_"})
        EXPECT_EQ(fedName(foreign), foreign);
}

TEST(FomNamesTest, DimensionsKeepTheirSpace) {
    EXPECT_EQ(fomDimension("Area", "east"), "Area.east");
    EXPECT_EQ(fomDimension("A.B", "1 C.D"), "A_x002E_B.1_x0020_C_x002E_D");
    EXPECT_EQ(fomEmptySpace("A.B"), "A_x002E_B");
    for (const char *foreign : {"east", "a.b.c", "a.", ".a", "Area._x0041_"})
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
