#include "tests/Support.hh"

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

namespace {

using Classes = std::set<RtiObjectClassHandle>;

/// ObjectRoot 1 {r 1}, A 2 {a 2}, A.B 3 {b 3}, A.B.C 4, D 5 {d 4}; InteractionRoot 1 {p 1}, I 2 {q 2}, I.J 3
struct SetsTest : testing::Test {
    SetsTest() : database(emptyDatabase()) {
        const auto attribute = [this](RtiFedObjectClass *owner, const char *name) {
            database->addObjectClassAttribute(owner, name, 2, 2, 0);
        };
        attribute(database->addObjectClass("ObjectRoot"), "r");
        attribute(database->addObjectClass("ObjectRoot.A"), "a");
        attribute(database->addObjectClass("ObjectRoot.A.B"), "b");
        database->addObjectClass("ObjectRoot.A.B.C");
        attribute(database->addObjectClass("ObjectRoot.D"), "d");
        const auto interaction = [this](const char *name) { return database->addInteractionClass(name, 2, 2, 0); };
        interaction("InteractionRoot")->addParameter(database->createParameterHandle(), "p");
        interaction("InteractionRoot.I")->addParameter(database->createParameterHandle(), "q");
        interaction("InteractionRoot.I.J");
    }

    Classes derived(unsigned long handle, Classes into = {}) const {
        database->getDerivedObjectClassHandleSet(handle, into);
        return into;
    }
    Classes childless(unsigned long handle) const {
        Classes into;
        database->getChildlessDerivedObjectClassHandleSet(handle, into);
        return into;
    }
    static RtiAttributeHandleSet setOf(std::initializer_list<unsigned long> handles) {
        RtiAttributeHandleSet set(0);
        for (const unsigned long handle : handles)
            set.add(handle);
        return set;
    }

    std::unique_ptr<RtiFedDatabase> database;
};

} // namespace

TEST_F(SetsTest, WholeFederation) {
    EXPECT_EQ(database->getObjectClassHandleSet(), (Classes{1, 2, 3, 4, 5}));
    EXPECT_EQ(database->getAttributeHandleSet(), (std::set<RtiAttributeHandle>{1, 2, 3, 4}));
    EXPECT_EQ(database->getInteractionClassHandleSet(), (std::set<RtiInteractionClassHandle>{1, 2, 3}));
    EXPECT_TRUE(emptyDatabase()->getAttributeHandleSet().empty());
}

TEST_F(SetsTest, Subtrees) {
    EXPECT_EQ(derived(2), (Classes{2, 3, 4}));
    EXPECT_EQ(derived(1), (Classes{1, 2, 3, 4, 5}));
    EXPECT_EQ(derived(3, {1}), (Classes{1, 3, 4}));
    EXPECT_EQ(derived(99, {1}), (Classes{1}));
    EXPECT_EQ(childless(4), (Classes{4}));
    EXPECT_EQ(childless(2), (Classes{3, 4})); // the inner class too, but not the class itself
    EXPECT_EQ(childless(99), Classes{});
    std::set<RtiInteractionClassHandle> interactions;
    database->getDerivedInteractionClassHandleSet(2, interactions);
    EXPECT_EQ(interactions, (std::set<RtiInteractionClassHandle>{2, 3}));
}

TEST_F(SetsTest, DeclaringClass) {
    EXPECT_EQ(database->getRealObjectClassHandle(4, 2), 2);
    EXPECT_EQ(database->getRealObjectClassHandle(99, 4), 5);
    EXPECT_EQ(database->getRealObjectClassHandle(2, 99), 0);
}

TEST_F(SetsTest, AvailableMembers) {
    EXPECT_EQ(database->getAvailableInteractionClassHandles(3), (std::set<RtiParameterHandle>{1, 2}));
    EXPECT_TRUE(database->getAvailableInteractionClassHandles(99).empty());

    const auto *attributes = database->getAvailableFedAttributes(RtiObjectClassHandle(4), 0);
    EXPECT_EQ(attributes->size(), 3u);
    EXPECT_EQ(attributes->count(database->find(RtiObjectClassHandle(2))->getAttribute(0)), 1u);
    EXPECT_EQ(database->getAvailableFedAttributes(database->find(RtiObjectClassHandle(4)), 1), attributes);
    const auto *handles = database->getAvailableAttributeHandles(RtiObjectClassHandle(4), 0);
    ASSERT_EQ(handles->size(), 3u);
    EXPECT_EQ(handles->getHandle(2), 3);
    database->addObjectClassAttribute(database->find(RtiObjectClassHandle(4)), "late", 2, 2, 0);
    EXPECT_EQ(database->getAvailableAttributeHandles(RtiObjectClassHandle(4), 0), handles);
    EXPECT_EQ(handles->size(), 3u); // as at the first call

    reasonOf<RTI::ObjectClassNotDefined>([&] { database->getAvailableFedAttributes(RtiObjectClassHandle(99), 0); });
    reasonOf<RTI::ObjectClassNotDefined>(
        [&] { database->getAvailableAttributeHandles(static_cast<const RtiFedObjectClass *>(nullptr), 0); });
}

TEST_F(SetsTest, VerifiesAttributesOfAClass) {
    EXPECT_TRUE(database->verifyAvailableAttributes(2, setOf({})));
    EXPECT_TRUE(database->verifyAvailableAttributes(4, setOf({1, 3})));
    EXPECT_FALSE(database->verifyAvailableAttributes(4, setOf({1, 4})));
    reasonOf<RTI::ObjectClassNotDefined>([&] { database->verifyAvailableAttributes(99, setOf({})); });
}

/// The first checks ask the sets of the classes, later ones the index that is made in between.
TEST_F(SetsTest, VerifiesRepeatedlyAsTheSetOfTheClassSays) {
    constexpr unsigned long kWide = 1UL << 31;
    std::mt19937 random(3);
    const auto randomSet = [&random](std::size_t size, unsigned long below) {
        RtiAttributeHandleSet set(0);
        while (size-- > 0)
            set.add(random() % 50 ? 1 + random() % below : kWide - 2 + random() % 3);
        return set;
    };
    for (int round = 0; round < 100; ++round) {
        for (unsigned long handle = 1; handle <= 5; ++handle) // some of up to eight runs, some of more
            database->find(RtiObjectClassHandle(handle))
                ->setAvailableAttributes(std::make_unique<RtiAttributeHandleSet>(randomSet(random() % 60, 80)));
        if (round % 10 == 0)
            database->addObjectClass("ObjectRoot.N" +
                                     std::to_string(round)); // more classes than the index was made for
        for (int check = 0; check < 60; ++check) {
            const unsigned long handle = 1 + random() % database->numObjectClasses();
            const RtiAttributeHandleSet asked = randomSet(random() % 4, 80);
            const auto *available = database->getAvailableAttributeHandles(RtiObjectClassHandle(handle), 0);
            ASSERT_EQ(database->verifyAvailableAttributes(handle, asked), available->containsAll(asked));
            ASSERT_TRUE(database->verifyAvailableAttributes(handle, *available));
        }
        reasonOf<RTI::ObjectClassNotDefined>([&] { database->verifyAvailableAttributes(99, setOf({})); });
    }
}

TEST(Threads, AskAColdDatabaseTogether) {
    constexpr std::size_t kThreads = 4;
    const auto loaded = load(example("harbour.fed")), copy = restored(bytesOf(*loaded));
    for (const RtiFedDatabase *database : {loaded.get(), copy.get()}) {
        std::vector<std::vector<const void *>> seen(kThreads);
        std::vector<std::string> answered(kThreads);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < kThreads; ++i)
            threads.emplace_back([&, i] {
                for (const RtiObjectClassHandle &handle : database->getObjectClassHandleSet()) {
                    seen[i].push_back(database->getAvailableFedAttributes(handle, 0));
                    seen[i].push_back(database->getAvailableAttributeHandles(handle, 0));
                }
                answered[i] = answers(*database) + answers(*database); // the second time, by the indexes
            });
        for (std::thread &thread : threads)
            thread.join();
        EXPECT_EQ(std::count(seen.begin(), seen.end(), seen[0]), kThreads);
        EXPECT_EQ(std::count(answered.begin(), answered.end(), answered[0]), kThreads);
    }
}
