// Edits in rounds, against a text whose bytes know where they were.

#include "tests/Support.hh"
#include "tool/fix/EditedText.hh"

#include <random>

/// Each byte of the text has its own value, so that a kept byte shows its original offset.
TEST(EditedText, KnowsWhereItsPartsWere) {
    std::mt19937 random(1);
    const auto below = [&random](std::size_t limit) { return static_cast<std::uint32_t>(random() % limit); };
    for (int run = 0; run < 2000; ++run) {
        std::string bytes(200, '\0');
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(i + 1);
        EditedText text(bytes);
        for (std::uint32_t round = 0; round <= below(4); ++round) {
            const std::string before = text.text();
            std::vector<bool> touched(before.size() + 1), inserted(before.size() + 1);
            for (int i = 0; i < 5; ++i) {
                const std::uint32_t begin = below(before.size());
                const std::uint32_t length = below(std::min<std::size_t>(9, before.size() - begin + 1));
                bool isFree = !touched[begin];
                for (std::uint32_t at = begin; at < begin + length; ++at)
                    isFree = isFree && !touched[at] && !inserted[at];
                ASSERT_EQ(text.add({{{begin, length}, std::string(below(3), '\0')}}), isFree);
                inserted[begin] = inserted[begin] || (isFree && length == 0);
                for (std::uint32_t at = begin; isFree && at < begin + length; ++at)
                    touched[at] = true;
            }
            text.makeEdits();
            std::string left;
            for (std::size_t i = 0; i < before.size(); ++i)
                if (!touched[i] && before[i] != '\0')
                    left += before[i];
            std::string kept = text.text();
            kept.erase(std::remove(kept.begin(), kept.end(), '\0'), kept.end());
            EXPECT_EQ(kept, left);
        }
        for (std::uint32_t i = 0; i < text.text().size(); ++i)
            EXPECT_TRUE(text.text()[i] == '\0' ||
                        text.originalOffset(i) == static_cast<unsigned char>(text.text()[i]) - 1U);
    }
}
