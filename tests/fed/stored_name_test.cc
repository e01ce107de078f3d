#include "fed/RtiFedAttribute.hh"
#include "fed/storage/RtiFedStoredName.hh"
#include "tests/Support.hh"

#include <thread>

namespace {

/// Names of all sizes at which the number of letters is stored differently, of bytes that are no letters, too.
std::vector<std::string> names() {
    std::vector<std::string> all = {"", "x", std::string("\0\xFF\1", 3)};
    for (const std::size_t size : {15U, 16U, 253U, 254U, 255U, 256U, 70000U})
        all.emplace_back(size, static_cast<char>('a' + size % 7));
    return all;
}

} // namespace

TEST(StoredName, IsTheSameAsLettersAndAsAString) {
    RtiFedArena arena;
    std::vector<std::unique_ptr<RtiFedStoredName>> stored;
    for (const std::string &name : names()) {
        arena.allocate(8, 64); // the letters go into the gap that this leaves, if they fit
        stored.push_back(std::make_unique<RtiFedStoredName>(RtiFedLetters(name, arena)));
    }
    for (std::size_t i = 0; i < stored.size(); ++i) {
        const std::string name = names()[i];
        const std::string_view letters = stored[i]->text();
        EXPECT_EQ(letters, name);
        const std::string &string = stored[i]->string();
        EXPECT_EQ(string, name);
        EXPECT_EQ(stored[i]->text(), name);
        EXPECT_EQ(letters, name) << "the letters are still there";
        EXPECT_EQ(&stored[i]->string(), &string);
        stored[i]->assign("another, which is longer than a short string");
        EXPECT_EQ(&stored[i]->string(), &string);
        EXPECT_EQ(string, stored[i]->text());
    }
}

TEST(StoredName, OfACopyOutlivesTheArena) {
    std::vector<RtiFedAttribute> copies;
    for (const std::string &name : names()) {
        RtiFedArena arena;
        const RtiFedAttribute original(1, RtiFedLetters(name, arena), 1, 2, 3);
        copies.push_back(original);
        if (name.size() % 2)
            original.getName();
        RtiFedAttribute assigned(2, "x", 1, 2, 3);
        const std::string &reference = assigned.getName();
        assigned = original;
        EXPECT_EQ(reference, name);
    }
    for (std::size_t i = 0; i < copies.size(); ++i)
        EXPECT_EQ(copies[i].getName(), names()[i]);
}

TEST(StoredName, GivesAllThreadsOneString) {
    RtiFedArena arena;
    for (int round = 0; round < 200; ++round) {
        const std::string expected = "PositionOfTheVessel" + std::to_string(round);
        const RtiFedStoredName name(RtiFedLetters(expected, arena));
        const std::string *strings[3] = {};
        std::vector<std::thread> threads;
        for (const std::string *&string : strings)
            threads.emplace_back([&] { string = name.text() == expected ? &name.string() : nullptr; });
        for (std::thread &thread : threads)
            thread.join();
        EXPECT_TRUE(strings[0] == strings[1] && strings[1] == strings[2] && *strings[0] == expected);
    }
}
