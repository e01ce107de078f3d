#include "fed/RtiFedHandleMap.hh"
#include "fed/RtiFedHandleSet.hh"
#include "fed/RtiFedNameMap.hh"
#include "fed/RtiTypeWrapper.hh"

#include <gtest/gtest.h>

#include <map>
#include <random>

// Both containers against a plain model: std::map, and upper-cased keys for names.

TEST(NameMap, AgreesWithAPlainModel) {
    std::mt19937 random(1);
    const auto randomName = [&random] {
        static constexpr char kLetters[] = "aAbB.z{`@\xE4";
        std::string name(random() % 4, ' ');
        for (char &c : name)
            c = kLetters[random() % (sizeof kLetters - 1)];
        return name;
    };
    RtiFedNameMap<int> map;
    std::map<std::string, int> model;
    for (int i = 0; i < 20000; ++i) {
        const std::string name = randomName(), prefix = randomName(), key = RtiStringUtility::toupper(name);
        const auto expected = model.find(key);
        const int *found = map.find(name);
        ASSERT_EQ(found != nullptr, expected != model.end()) << name;
        if (found) {
            ASSERT_EQ(*found, expected->second);
        }
        const auto joined = model.find(RtiStringUtility::toupper(prefix + name));
        const int *foundJoined = map.find(prefix, name);
        ASSERT_EQ(foundJoined ? *foundJoined : -1, joined == model.end() ? -1 : joined->second) << prefix << name;
        ASSERT_EQ(map.findUpperCase(name) != nullptr, model.count(name) == 1) << name;
        switch (random() % 16) {
        case 0:
            map.erase(name);
            model.erase(key);
            break;
        case 1:
        case 2:
            ASSERT_EQ(map.insert(name, i), model.emplace(key, i).second);
            break;
        default:
            break;
        }
        ASSERT_EQ(map.size(), model.size());
    }
    auto expected = model.begin();
    for (const auto &[name, value] : map)
        EXPECT_EQ(value, (expected++)->second) << name;
    EXPECT_EQ(expected, model.end());
}

TEST(HandleSet, AgreesWithAPlainModel) {
    std::mt19937 random(4);
    for (const unsigned long range : {3UL, 40UL, 4000UL}) {
        RtiFedHandleSet<RtiObjectClassHandle> set;
        std::set<RtiObjectClassHandle> model;
        for (int i = 0; i < 400; ++i) {
            const unsigned long handle = random() % 8 ? random() % range : 4294967295UL - random() % 3;
            ASSERT_EQ(set.contains(handle), model.count(handle) == 1);
            set.insert(handle);
            model.insert(handle);
            ASSERT_EQ(set.size(), model.size());
        }
        EXPECT_EQ(set.toSet(), model);
        RtiBuffer image;
        set.save(image);
        RtiFedHandleSet<RtiObjectClassHandle> restored;
        restored.restore(image);
        EXPECT_EQ(restored.toSet(), model);
    }
}

TEST(HandleMap, AgreesWithAPlainModel) {
    std::mt19937 random(2);
    RtiFedHandleMap<RtiSpaceHandle, int> map;
    std::map<long, int> model;
    for (int i = 0; i < 20000; ++i) {
        const long handle = static_cast<long>(random() % 2000) - 20;
        const auto expected = model.find(handle);
        const int *found = map.find(handle);
        ASSERT_EQ(found ? *found : -1, expected == model.end() ? -1 : expected->second) << handle;
        if (i % 8 == 0) {
            ASSERT_EQ(map.insert(handle, i), model.emplace(handle, i).second);
        }
    }
    ASSERT_EQ(map.size(), model.size());
    auto expected = model.begin();
    for (const auto &[handle, value] : map) {
        EXPECT_EQ(handle._value, expected->first);
        EXPECT_EQ(value, (expected++)->second);
    }
    map.clear();
    EXPECT_EQ(map.size(), 0u);
}
