#include "fed/RtiTypeWrapper.hh"
#include "fed/storage/RtiFedHandleMap.hh"
#include "fed/storage/RtiFedHandleSet.hh"
#include "fed/storage/RtiFedNameMap.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

// Both containers against a plain model: std::map, and upper-cased keys for names.

namespace {

/// Short and long names of letters, of the bytes next to the letters in ASCII, and of others.
std::string randomName(std::mt19937 &random) {
    static constexpr char kLetters[] = "aAzZ.[{`@\xE4\xFF";
    std::string name(random() % 16 ? random() % 4 : random() % 40, ' ');
    for (char &c : name)
        c = kLetters[random() % (sizeof kLetters)];
    return name;
}

} // namespace

TEST(Name, IsComparedInUpperCase) {
    std::mt19937 random(5);
    for (int i = 0; i < 100000; ++i) {
        const std::string a = randomName(random);
        std::string b = random() % 2 ? RtiStringUtility::toupper(a) : a;
        if (!b.empty() && random() % 2)
            b[random() % b.size()] = static_cast<char>(random());
        const std::string upperA = RtiStringUtility::toupper(a), upperB = RtiStringUtility::toupper(b);
        ASSERT_EQ(RtiFedName::equal(a, b), upperA == upperB) << a << " " << b;
        ASSERT_EQ(RtiFedName::equalUpper(a, upperB), upperA == upperB) << a << " " << b;
        ASSERT_TRUE(upperA != upperB || RtiFedName(a).hash() == RtiFedName(b).hash()) << a;
    }
}

// Names that differ in few places, chosen so that a weak hash function gives most of them one hash. The seed
// differs in each run; with some seeds a few collide, at most a dozen in 20000.
TEST(Name, HashesOfLikeNamesDiffer) {
    for (const char *rest : {"47:14&4Z_____", "XYZ_________", "", "ObjectRoot.Manager.Federate."})
        for (const std::size_t place : {0U, 3U, 8U, 13U}) {
            std::set<std::uint32_t> hashes;
            std::set<std::string> names;
            for (unsigned i = 1; i < 60000; i += 3) {
                std::string name = rest;
                const char varying[] = {static_cast<char>(i), static_cast<char>(i >> 8 | 0x80), 'X'};
                name.insert(std::min(place, name.size()), varying, sizeof varying);
                hashes.insert(static_cast<std::uint32_t>(RtiFedName(name).hash()));
                names.insert(RtiStringUtility::toupper(name));
            }
            EXPECT_GT(hashes.size() * 100, names.size() * 99) << rest << " " << place;
        }
}

TEST(NameMap, AgreesWithAPlainModel) {
    std::mt19937 random(1);
    RtiFedNameMap<int> map;
    std::map<std::string, int> model;
    for (int i = 1; i < 40000; ++i) {
        const std::string name = randomName(random), key = RtiStringUtility::toupper(name);
        const auto expected = model.find(key);
        ASSERT_EQ(map.find(name), expected == model.end() ? 0 : expected->second) << name;
        if (i % 4 == 0) {
            ASSERT_EQ(map.insert(name, i), model.emplace(key, i).second);
        } else if (i % 64 == 1 && expected != model.end()) {
            map.replace(name, i);
            expected->second = i;
        } else if (i == 20001) {
            map.reserve(3 * map.size());
            map.reserve(1);
            map.reserveEntries(100, 10);
        }
        ASSERT_EQ(map.size(), model.size());
    }
    const auto sorted = map.sorted();
    EXPECT_TRUE(std::equal(sorted.begin(), sorted.end(), model.begin(), model.end(),
                           [](const auto &a, const auto &b) { return a.first == b.first && a.second == b.second; }));
}

// Names that agree in the bits that choose a bucket: from the eighth on they overflow into the next ones.
TEST(NameMap, FindsNamesOfOneBucket) {
    RtiFedNameMap<int> map;
    std::vector<std::string> names;
    for (int i = 0; names.size() < 40; ++i)
        if (const std::string name = "name" + std::to_string(i); RtiFedName(name).hash() % 1024 == 1023)
            names.push_back(name);
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_TRUE(map.insert(names[i], static_cast<int>(i) + 1));
    map.reserve(5000);
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(map.find(names[i]), static_cast<int>(i) + 1);
    EXPECT_EQ(map.find(std::string("name")), 0);
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
        restored.insert(4294967000UL); // which the image replaces
        RtiFedImageReader reader(image);
        restored.restore(reader);
        EXPECT_EQ(restored.toSet(), model);
        EXPECT_TRUE(set.containsAll(restored)); // as runs that were joined, whatever came between
    }
}

TEST(HandleSet, RefusesAnImageThatDoesNotAscend) {
    for (const unsigned long second : {5UL, 3UL}) {
        RtiBuffer image;
        image.put(2UL);
        for (const unsigned long handle : {5UL, second})
            writeHandle(image, RtiObjectClassHandle(handle));
        RtiFedImageReader reader(image);
        RtiFedHandleSet<RtiObjectClassHandle> set;
        const std::string reason = reasonOf<RTI::RTIinternalError>([&] { set.restore(reader); });
        EXPECT_NE(reason.find("the handle " + std::to_string(second) + " follows 5"), std::string::npos) << reason;
    }
}

TEST(HandleMap, AgreesWithAPlainModel) {
    for (const unsigned long range : {20UL, 2000UL, 2000000000UL}) {
        std::mt19937 random(2);
        RtiFedHandleMap<RtiSpaceHandle, int> map;
        std::map<long, int> model;
        for (int i = 0; i < 20000; ++i) {
            const long handle = static_cast<long>(random() % 4 ? random() % 50 : random() % range) - 9;
            const auto expected = model.find(handle);
            const int *found = map.find(handle);
            ASSERT_EQ(found ? *found : -1, expected == model.end() ? -1 : expected->second) << handle;
            if (i % 8 == 0) {
                const int value = static_cast<int>(random() % 3); // 0 marks an empty element of the vector
                ASSERT_EQ(map.insert(handle, value), model.emplace(handle, value).second);
            } else if (i % 32 == 1) {
                map.erase(handle);
                model.erase(handle);
            }
            ASSERT_EQ(map.size(), model.size());
            ASSERT_EQ(map.greatest()._value, model.empty() ? 0 : std::max(0L, model.rbegin()->first));
        }
        auto expected = model.begin();
        map.forEach([&expected](const RtiSpaceHandle &handle, int value) {
            EXPECT_EQ(handle._value, expected->first);
            EXPECT_EQ(value, (expected++)->second);
        });
        EXPECT_EQ(expected, model.end());
    }
}

// In an emptied map, the capacity of the vector decides whether a handle is put there.
TEST(HandleMap, TakesTheNextHandleWhenEmptied) {
    for (unsigned long size = 0; size < 200; ++size) {
        RtiFedHandleMap<RtiObjectClassHandle, int> map;
        for (unsigned long handle = 0; handle < size; ++handle)
            map.insert(handle, 1);
        for (unsigned long handle = 0; handle < size; ++handle)
            map.erase(handle);
        EXPECT_TRUE(map.insert(size, 7));
        EXPECT_EQ(*map.find(size), 7);
        EXPECT_EQ(map.greatest(), size);
    }
}
