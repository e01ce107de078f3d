// What save writes, restore accepts: after any use of the public interface, the image of the database restores, saves
// to the same bytes again, and answers the same.

#include "tests/Support.hh"

#include <functional>
#include <random>
#include <vector>

namespace {

/// Calls random building operations, of the database and of its records directly.
class RandomHost {
public:
    explicit RandomHost(unsigned seed) : _random(seed) {}

    std::unique_ptr<RtiFedDatabase> build() {
        for (unsigned long left = 5 + below(60); left > 0; --left) {
            try {
                act();
            } catch (const RTI::Exception &) { // a refused call uses up a handle at most
            }
        }
        return std::move(_db);
    }

private:
    unsigned long below(unsigned long bound) {
        return std::uniform_int_distribution<unsigned long>(0, bound - 1)(_random);
    }
    template <class T>
    T any(const std::vector<T> &values) {
        return values[below(values.size())];
    }
    std::string name() {
        return any<std::string>(
            {"a", "A", "b", "ObjectRoot", "objectroot.a", "InteractionRoot", "\xE4{", "", "Long_name_of_a_member"});
    }
    /// A handle that a counter might issue, or one that a host chose.
    unsigned long handle() { return any<unsigned long>({0, 1 + below(9), 5000 + below(3), 0xFFFFFFFFUL}); }

    std::string className() {
        std::string full = name();
        while (below(3) > 0)
            full += "." + name();
        return full;
    }

    void act() {
        const std::function<void()> operations[] = {
            [&] { _db->setFederateName(name()); },
            [&] { _db->setFederateVersion(name()); },
            [&] { _db->createAttributeHandle(); },
            [&] { _db->createObjectClassHandle(); },
            [&] { _db->createInteractionClassHandle(); },
            [&] { _db->createParameterHandle(); },
            [&] { _db->createSpaceHandle(); },
            [&] { _db->createMomDefaultSpace(); },
            [&] { _db->setMomDefaultSpaceForAttributes(any(_objects), 3); },
            [&] { _db->setMomDefaultSpaceForInteractionClasses(any(_interactions), 3); },
            [&] { _spaces.push_back(_db->addSpace(name())); },
            [&] { _db->addSpaceDimension(any(_spaces), name()); },
            [&] { any(_spaces)->createDimensionHandle(); },
            [&] { _objects.push_back(_db->addObjectClass(className())); },
            [&] { _objects.push_back(_db->addObjectClass(RtiDottedClassname(className()))); },
            [&] { _objects.push_back(any(_objects)->addObjectClass(handle(), name())); },
            [&] { _db->addObjectClassAttribute(any(_objects), name(), handle(), handle(), 1); },
            [&] { any(_objects)->addAttribute(handle(), name(), 1, 1, -1); },
            [&] { any(_objects)->getAttribute(0)->setSpace(-5); },
            [&] { any(_objects)->addChildClassToAll(handle()); },
            [&] { announce(any(_objects)); },
            [&] { announce(any(_interactions)); },
            [&] { _interactions.push_back(_db->addInteractionClass(className(), handle(), handle(), 0)); },
            [&] { _interactions.push_back(any(_interactions)->addInteractionClass(handle(), name(), 1, 2, 0)); },
            [&] { any(_interactions)->addParameter(handle(), name()); },
            [&] { any(_interactions)->setDefaultSpace(7); },
        };
        operations[below(std::size(operations))]();
    }

    /// Announces a child with a greater handle, so that no cycle arises. It may be a child of another class or
    /// unknown.
    template <class Node>
    void announce(Node *node) {
        const unsigned long child = handle();
        if (child > node->getHandle()._value)
            node->addChildClass(child);
    }

    std::mt19937 _random;
    std::unique_ptr<RtiFedDatabase> _db = emptyDatabase();
    std::vector<RtiFedSpace *> _spaces{_db->addSpace("S")};
    std::vector<RtiFedObjectClass *> _objects{_db->addObjectClass("ObjectRoot")};
    std::vector<RtiFedInteractionClass *> _interactions{_db->addInteractionClass("InteractionRoot", 1, 1, 0)};
};

template <class Answer>
std::string textOf(Answer answer) {
    try {
        return answer();
    } catch (const RTI::Exception &refused) {
        return refused._reason;
    }
}

template <class Set>
void print(std::ostream &os, const Set &handles) {
    for (const auto &handle : handles)
        os << handle._value << ' ';
    os << '\n';
}

/// The answers about classes and members.
std::string structureOf(const RtiFedDatabase &db) {
    std::ostringstream os;
    for (const RtiObjectClassHandle &handle : db.getObjectClassHandleSet()) {
        std::set<RtiObjectClassHandle> derived;
        db.getDerivedObjectClassHandleSet(handle, derived);
        print(os, derived);
        print(os, db.find(handle)->getChildrenClasses());
        print(os, db.find(handle)->descendants().toSet());
        os << db.getObjectClassName(handle) << dumpOf(*db.find(handle));
        db.find(handle)->forEachOwned([&os](const RtiFedObjectClass &owned) {
            os << dumpOf(owned) << owned.getParentClass()->getName() << owned.attributeIsInherited("A")
               << owned.getAttributeHandleRecursive("b")._value << '\n';
        });
        for (unsigned long attribute : {0UL, 1UL, 2UL, 3UL, 5000UL, 5001UL, 0xFFFFFFFFUL})
            os << db.getRealObjectClassHandle(handle, attribute)._value << ' '
               << textOf([&] { return db.getAttributeName(attribute, handle); }) << '\n';
        for (const char *name : {"A", "B", "", "long_NAME_of_a_member"})
            os << textOf([&] { return toString(db.getAttributeHandle(name, handle)._value); }) << '\n';
    }
    for (const RtiInteractionClassHandle &handle : db.getInteractionClassHandleSet()) {
        std::set<RtiInteractionClassHandle> derived;
        db.getDerivedInteractionClassHandleSet(handle, derived);
        print(os, derived);
        print(os, db.getAvailableInteractionClassHandles(handle));
        os << db.getInteractionClassName(handle) << dumpOf(*db.find(handle));
    }
    return os.str();
}

} // namespace

TEST(ImageProperty, WhatSaveWritesRestoreTakes) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const auto origin = RandomHost(seed).build();
        const std::string image = bytesOf(*origin);
        const auto copy = restored(image);
        ASSERT_EQ(bytesOf(*copy), image);
        ASSERT_EQ(copy->getChecksum(), origin->getChecksum());
        ASSERT_EQ(structureOf(*copy), structureOf(*origin));
        if (copy->getRoutingSpaceHandleSet() == origin->getRoutingSpaceHandleSet()) {
            const auto list = [](const RtiFedDatabase &db) { return textOf([&db] { return listing(db); }); };
            ASSERT_EQ(list(*copy), list(*origin));
        }
    }
}

// The walks end although children form cycles and classes are reached in several ways.
TEST(ImageProperty, DerivedClassesAreFoundAlongAnyLinks) {
    const auto db = emptyDatabase();
    RtiFedObjectClass *root = db->addObjectClass("R");
    std::string name = "R";
    std::vector<RtiFedObjectClass *> chain{root};
    for (int i = 0; i < 60; ++i)
        chain.push_back(db->addObjectClass(name += ".C"));
    for (RtiFedObjectClass *from : chain)
        for (const RtiFedObjectClass *to : chain)
            from->addChildClass(to->getHandle());
    RtiFedObjectClass *apart = db->addObjectClass("Apart");
    chain.back()->addChildClass(apart->getHandle());
    for (const RtiFedObjectClass *from : {chain.front(), chain.back()}) {
        std::set<RtiObjectClassHandle> derived;
        db->getDerivedObjectClassHandleSet(from->getHandle(), derived);
        EXPECT_EQ(derived.size(), chain.size() + 1);
    }
    RtiBuffer image = imageOf(*db);
    EXPECT_NE(
        reasonOf<RTI::RTIinternalError>([&image] { const RtiFedDatabase copy(image); }).find("a cycle of children"),
        std::string::npos);
}
