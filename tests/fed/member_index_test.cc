// Lookups of attributes by the index, against the walk up the ancestors of the class itself.

#include "tests/Support.hh"

#include <random>

namespace {

struct RandomTree {
    explicit RandomTree(unsigned seed) : random(seed), database(emptyDatabase()) { addClass(); }

    RtiFedObjectClass *anyClass() { return database->find(RtiObjectClassHandle(1 + random() % classes.size())); }
    std::string anyName() { return std::string(1 + random() % 24, 'a') + static_cast<char>('A' + random() % 3); }

    void addClass() {
        const std::string parent = classes.empty() ? "" : classes[random() % classes.size()] + ".";
        if (std::count(parent.begin(), parent.end(), '.') < 40)
            database->addObjectClass(classes.emplace_back(parent + "C" + std::to_string(classes.size())));
    }
    /// Adds attributes, some of them directly to the class: with names of its subclasses, and with handles of the host.
    void addAttribute() {
        try {
            if (random() % 4)
                database->addObjectClassAttribute(anyClass(), anyName(), 1, 1, 0);
            else
                anyClass()->addAttribute(random() % 8 ? 5000000000UL + random() % 9 : 0, anyName(), 1, 1, 0);
        } catch (const RTI::ErrorReadingFED &) { // the class has one of that name
        }
    }
    void restoreAClassAlone() {
        RtiFedObjectClass *restored = anyClass(), *saved = random() % 2 ? restored : anyClass();
        RtiBuffer image;
        try {
            saved->save(image);
        } catch (const RTI::Exception &) { // a handle has more than 32 bits
            return;
        }
        restored->restore(image);
    }
    void moveAClass() {
        RtiFedObjectClass *moved = anyClass(), *parent = anyClass();
        for (const RtiFedObjectClass *node = parent; node; node = node->getParentClass())
            if (node == moved)
                return;
        moved->setParentClass(random() % 4 ? parent : nullptr);
    }
    void compareAnswers() {
        const std::string name = anyName();
        const RtiObjectClassHandle handle = 1 + random() % classes.size();
        unsigned long expected = 0;
        for (const auto *node = database->find(handle); node && expected == 0; node = node->getParentClass())
            expected = node->getAttributeHandle(name)._value;
        unsigned long answer = 0;
        try {
            answer = database->getAttributeHandle(name, handle)._value;
        } catch (const RTI::NameNotFound &) {
        }
        ASSERT_EQ(answer, expected) << name << " of class " << handle._value;
    }

    std::mt19937 random;
    std::unique_ptr<RtiFedDatabase> database;
    std::vector<std::string> classes;
};

} // namespace

// Some 300 walks make the index, which each change drops.
TEST(MemberIndex, AnswersLikeAWalk) {
    for (unsigned seed = 0; seed < 15; ++seed) {
        RandomTree tree(seed);
        for (int i = 0; i < 60; ++i)
            tree.addClass();
        for (int round = 0; round < 12; ++round) {
            for (int i = 0; i < 20; ++i)
                tree.addAttribute();
            for (int i = 0; i < 1500; ++i)
                tree.compareAnswers();
            if (seed % 3 == 1)
                tree.moveAClass();
            if (seed % 3 == 2)
                tree.restoreAClassAlone();
            tree.addClass();
            for (int i = 0; i < 100; ++i)
                tree.compareAnswers();
        }
        reasonOf<RTI::ObjectClassNotDefined>([&] { tree.database->getAttributeHandle("a", 99999); });
    }
}
