#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

#include <cstring>

using namespace std::string_literals;

namespace {

/// A small database with everything that an image can hold.
std::unique_ptr<RtiFedDatabase> smallDatabase() {
    auto db = emptyDatabase("s.fed");
    db->setFederateName("F");
    db->setFederateVersion("v");
    RtiFedSpace *space = db->addSpace("S");
    db->addSpaceDimension(space, "X");
    db->addObjectClassAttribute(db->addObjectClass("R"), "a", 2, 1, 1);
    db->addObjectClassAttribute(db->addObjectClass("R.C"), "b", 1, 2, 0);
    db->addInteractionClass("I", 2, 2, 1)->addParameter(db->createParameterHandle(), "p");
    db->addInteractionClass("I.J", 1, 1, 0);
    return db;
}

std::string refusal(const std::string &image) {
    try {
        restored(image);
    } catch (const RTI::Exception &refused) {
        return refused._reason;
    }
    return "accepted";
}

} // namespace

TEST(Image, IsTheseBytes) {
    EXPECT_EQ(bytesOf(*smallDatabase()),
              "\0\0\0\1F\0\0\0\1v"
              "\0\0\0\2" // object classes
              "\0\0\0\1R\0\0\0\0\0\0\0\1\0\0\0\1a\0\0\0\2\0\0\0\1\0\0\0\1\0\0\0\1"
              "\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\0"
              "\0\0\0\3R.C\0\0\0\0\0\0\0\1\0\0\0\1b\0\0\0\1\0\0\0\2\0\0\0\0\0\0\0\2"
              "\0\0\0\0\0\0\0\0\0\0\0\2\0\0\0\1"
              "\0\0\0\2" // interaction classes
              "\0\0\0\1I\0\0\0\0\0\0\0\1\0\0\0\1p\0\0\0\1\0\0\0\1\0\0\0\2\0\0\0\2\0\0\0\2\0\0\0\1\0\0\0\1\0\0\0\0"
              "\0\0\0\3I.J\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0\0\0\0\0\2\0\0\0\1"
              "\0\0\0\1\0\0\0\1S\0\0\0\1\0\0\0\1X\0\0\0\0\0\0\0\1\0\0\0\1"
              "\0\0\0\2\0\0\0\1\0\0\0\1\0\0\0\2\0\0\0\2"
              "\0\0\0\1\0\0\0\2\0\0\0\2\0\0\0\2\0\0\0\1\0\0\0\5s.fed"s);
    EXPECT_EQ(smallDatabase()->getChecksum(), 2050910980UL);
    EXPECT_EQ(load(example("minimal.fed"))->getChecksum(), 2525501266UL);
}

TEST(Image, RestoresToADatabaseThatAnswersAlike) {
    for (const char *name : {"minimal.fed", "harbour.fed", "tolerances.fed"}) {
        const auto origin = load(example(name));
        const auto copy = restored(bytesOf(*origin));
        EXPECT_EQ(answers(*copy), answers(*origin));
        EXPECT_EQ(bytesOf(*copy), bytesOf(*origin));
        EXPECT_EQ(diffOf(*origin, *copy), "");
    }
    EXPECT_EQ(bytesOf(*restored(bytesOf(*emptyDatabase("e")))), std::string(47, '\0') + "\1e"s);
}

TEST(Image, ComparesFieldByField) {
    const auto live = smallDatabase();
    auto other = smallDatabase();
    other->setFederateName("G");
    other->setFederateVersion("w");
    other->addSpace("T");
    other->addObjectClass("R.D");
    other->createAttributeHandle();
    other->addInteractionClass("I.K", 1, 1, 0);
    other->createParameterHandle();
    EXPECT_EQ(diffOf(*other, *live),
              "old _fedName=``G'', new _fedName=``F''\nold _fedVersion=``w'', new _fedVersion=``v''\n"
              "old size _objectClassNameMap=``3'', new size _objectClassNameMap=``2''\n"
              "old size _objectClassHandleMap=``3'', new size _objectClassHandleMap=``2''\n"
              "old size _interactionClassNameMap=``3'', new size _interactionClassNameMap=``2''\n"
              "old size _interactionClassHandleMap=``3'', new size _interactionClassHandleMap=``2''\n"
              "old size _spaceNameMap=``2'', new size _spaceNameMap=``1''\n"
              "old size _spaceHandleMap=``2'', new size _spaceHandleMap=``1''\n"
              "old _nextSpaceHandle=``2'', new _nextSpaceHandle=``1''\n"
              "old _nextObjectClassHandle=``3'', new _nextObjectClassHandle=``2''\n"
              "old _nextAttributeHandle=``3'', new _nextAttributeHandle=``2''\n"
              "old _nextInteractionClassHandle=``3'', new _nextInteractionClassHandle=``2''\n"
              "old _nextParameterHandle=``2'', new _nextParameterHandle=``1''\n");
    const TemporaryFile one(example("harbour.fed")), two(example("harbour.fed"));
    const RtiFedDatabase first(RtiFedDatabaseConstructorArg(one.path(), RTI_true));
    const RtiFedDatabase second(RtiFedDatabaseConstructorArg(two.path(), RTI_true));
    EXPECT_EQ(first.getChecksum(), second.getChecksum());
    EXPECT_EQ(diffOf(first, second), "old _fileName=``" + one.path() + "'', new _fileName=``" + two.path() + "''\n");
}

TEST(Image, LeavesOutASpaceWhoseNameIsInUse) {
    const auto origin = smallDatabase();
    const unsigned long checksum = origin->getChecksum();
    origin->addSpace("s");
    EXPECT_EQ(origin->getChecksum(), checksum);
    const auto copy = restored(bytesOf(*origin));
    EXPECT_EQ(copy->getChecksum(), checksum);
    EXPECT_EQ(copy->createSpaceHandle(), 3); // its handle is not issued again
    EXPECT_EQ(diffOf(*copy, *origin), "old size _spaceHandleMap=``1'', new size _spaceHandleMap=``2''\n"
                                      "old _nextSpaceHandle=``3'', new _nextSpaceHandle=``2''\n");
}

TEST(Image, MayHaveAClassBeforeItsParent) {
    const auto origin = emptyDatabase("e");
    origin->addObjectClass("ObjectRoot");
    RtiFedObjectClass *ball = origin->addObjectClass("ObjectRoot.Ball");
    origin->addObjectClass("Ball.Red"); // named without the root prefix, so it sorts before its parent
    ASSERT_EQ(ball->getChildrenClasses().size(), 1U);
    const std::string image = bytesOf(*origin);
    const auto copy = restored(image);
    EXPECT_EQ(bytesOf(*copy), image);
    EXPECT_EQ(copy->find(RtiObjectClassHandle(3))->getParentClass(), copy->find(RtiObjectClassHandle(2)));
}

TEST(Image, RefusesWhatNoDatabaseWrote) {
    const std::string image = bytesOf(*smallDatabase());
    const auto with = [&image](const std::string &what, const std::string &replacement) {
        return refusal(replaced(image, what, replacement));
    };
    EXPECT_EQ(with("v\0\0\0\2"s, "v\0\0\xFF\0"s),
              "image byte 10: 65280 object classes need 28 bytes each, 282 are left");
    EXPECT_EQ(with("R.C", "r\0C"s), "accepted"); // any name will do
    EXPECT_EQ(with("\0\0\0\3R.C"s, "\0\0\0\1r"s), "image byte 72: duplicate class name r");
    EXPECT_EQ(with("\0\0\0\3I.J"s, "\0\0\0\1i"s), "image byte 178: duplicate class name i");
    // The second class: children, descendants, handle, parent.
    const std::string links = "\0\0\0\2\0\0\0\0\0\0\0\0\0\0\0\2\0\0\0\1"s;
    EXPECT_EQ(with(links, "\0\0\0\2\0\0\0\0\0\0\0\0\0\0\0\1\0\0\0\1"s),
              "image byte 72: the handle of the class R.C is 0 or a duplicate");
    EXPECT_EQ(with(links, "\0\0\0\2\0\0\0\0\0\0\0\0\0\0\0\2\0\0\0\2"s),
              "image byte 72: the class R.C is nested in a cycle or deeper than 256 levels");
    // The attributes and their classes.
    const std::string pairs = "\0\0\0\2\0\0\0\1\0\0\0\1\0\0\0\2\0\0\0\2"s;
    EXPECT_EQ(with(pairs, "\0\0\0\2\0\0\0\2\0\0\0\2\0\0\0\1\0\0\0\1"s),
              "image byte 259: the attribute handle 1 follows 2");
}

TEST(Image, RefusesACounterBelowAHandleInUse) {
    const std::string image = bytesOf(*smallDatabase());
    for (const std::size_t counter : {5U, 4U, 2U}) { // from the end: of spaces, object and interaction classes
        std::string damaged = image;
        --damaged[image.size() - 9 - 4 * counter + 3];
        EXPECT_EQ(refusal(damaged), "image byte " + std::to_string(image.size() - 29) +
                                        ": the counter of a handle is less than a handle in use");
    }
}

TEST(Image, CountersOverflowAtTheirLastHandle) {
    std::string image = bytesOf(*smallDatabase());
    const auto counter = [&image](std::size_t fromEnd) { return image.size() - 9 - 4 * fromEnd; };
    image.replace(counter(5), 12, "\x7F\xFF\xFF\xFF\xFF\xFF\xFF\xFF\0\0\0\0"s); // spaces, object classes, attributes
    const auto database = restored(image);
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { database->addObjectClass("Z"); }),
              "\"RtiFedDatabase\", line 125: the handle 0 is in use or no handle: none is left");
    reasonOf<RTI::RTIinternalError>([&] { database->addObjectClass("Z"); });
    reasonOf<RTI::RTIinternalError>([&] { database->addSpace("Z"); });
    RtiFedObjectClass *node = database->find(RtiObjectClassHandle(2));
    reasonOf<RTI::ErrorReadingFED>([&] { database->addObjectClassAttribute(node, "b", 1, 1, 0); }); // handle 1 again
    EXPECT_EQ(database->getRealObjectClassHandle(0, 1), 1);
}

// Tables with an element for each handle would need gigabytes.
TEST(Image, OfHandlesThatAreFarApartIsAskedWithoutTables) {
    std::string image = bytesOf(*smallDatabase());
    image.replace(image.size() - 9 - 4 * 4, 4, "\xFF\xFF\xFF\xFE"s); // of object classes
    const auto database = restored(image);
    database->addObjectClassAttribute(database->addObjectClass("R.Far"), "far", 1, 1, 0);
    const RtiObjectClassHandle last(0xFFFFFFFF);
    RtiAttributeHandleSet inherited(1), unknown(1);
    inherited.add(1);
    unknown.add(2);
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(database->getObjectClassHandle("r.far"), last);
        ASSERT_EQ(database->getAttributeHandle("far", last), 3);
        ASSERT_EQ(database->getAttributeHandle("A", last), 1);
        ASSERT_TRUE(database->verifyAvailableAttributes(last, inherited));
        ASSERT_FALSE(database->verifyAvailableAttributes(last, unknown));
    }
    EXPECT_EQ(bytesOf(*restored(bytesOf(*database))), bytesOf(*database));
}

// A host may add members to a class directly, with handles of its own that do not ascend.
TEST(Image, KeepsMembersInTheOrderOfTheirAddition) {
    const auto origin = smallDatabase();
    RtiFedInteractionClass *node = origin->find(RtiInteractionClassHandle(2));
    for (int i = 0; i < 40; ++i)
        origin->createParameterHandle();
    for (unsigned long handle = 40; handle > 1; --handle)
        node->addParameter(handle, "p" + std::to_string(handle));
    origin->find(RtiObjectClassHandle(1))->addAttribute(origin->createAttributeHandle(), "past", 1, 1, 0);
    const auto copy = restored(bytesOf(*origin));
    EXPECT_EQ(bytesOf(*copy), bytesOf(*origin));
    EXPECT_EQ(answers(*copy), answers(*origin));
    EXPECT_EQ(copy->find(RtiInteractionClassHandle(2))->getParameter(0)->getHandle(), 40);
    EXPECT_EQ(copy->getParameterHandle("P2", 2), 2);
    EXPECT_EQ(copy->getParameterName(40, 2), "p40");
    reasonOf<RTI::InteractionParameterNotDefined>([&] { copy->getParameterName(41, 2); });
    EXPECT_NE(refusal(replaced(bytesOf(*origin), "p2\0"s, "P9\0"s)).find(": duplicate name among the parameters"),
              std::string::npos);
}

TEST(Image, SurvivesAnyCutAndAnyByte) {
    const std::string image = bytesOf(*load(example("minimal.fed")));
    for (std::size_t length = 0; length < image.size(); ++length)
        ASSERT_NE(refusal(image.substr(0, length)), "accepted") << length;

    std::size_t accepted = 0;
    const std::string small = bytesOf(*smallDatabase());
    const std::size_t step = 256 / rounds(256);
    for (std::size_t at = 0; at < small.size(); ++at)
        for (std::size_t value = at % step; value < 256; value += step) {
            std::string damaged = small;
            damaged[at] = static_cast<char>(value);
            RtiBuffer buffer(damaged.data(), damaged.size());
            try {
                const RtiFedDatabase database(buffer);
                ++accepted;
                const std::string again = bytesOf(database);
                ASSERT_EQ(bytesOf(*restored(again)), again) << at << ' ' << value;
                database.getChecksum();
                try {
                    answers(database);
                } catch (const RTI::Exception &) { // as a listing throws for an unknown space
                }
            } catch (const RTI::Exception &refused) {
                ASSERT_STRNE(refused._reason, "");
            }
        }
    EXPECT_GT(accepted, small.size() / step);
}

TEST(Image, RefusesCycles) {
    // Classes named A, B, C ... with handles from 1 and the given parents and children.
    const auto image = [](const std::vector<unsigned long> &parents, const std::vector<unsigned long> &children) {
        RtiBuffer bytes;
        for (const unsigned long number : {0UL, 0UL, static_cast<unsigned long>(parents.size())})
            bytes.put(number);
        for (std::size_t i = 0; i < parents.size(); ++i) {
            const unsigned long handle = i + 1;
            RtiStringUtility::putString(std::string(1 + i / 26, static_cast<char>('A' + i % 26)), bytes);
            bytes.put(0UL);
            bytes.put(0UL);
            bytes.put(children[i] ? 1UL : 0UL);
            if (children[i])
                bytes.put(children[i]);
            bytes.put(0UL);
            bytes.put(handle);
            bytes.put(parents[i]);
        }
        for (const unsigned long number :
             {0UL, 0UL, 0UL, 0UL, static_cast<unsigned long>(parents.size()), 0UL, 0UL, 0UL, 0UL})
            bytes.put(number);
        return std::string(reinterpret_cast<const char *>(bytes.data()), bytes.size());
    };
    EXPECT_EQ(refusal(image({0, 0, 0}, {0, 0, 0})), "accepted");
    EXPECT_EQ(refusal(image({7, 0, 0}, {0, 0, 0})), "accepted"); // an unknown parent is no parent
    EXPECT_EQ(refusal(image({3, 1, 2}, {2, 3, 1})),
              "image byte 12: the class A is nested in a cycle or deeper than 256 levels");
    EXPECT_EQ(refusal(image({1, 0, 0}, {1, 0, 0})),
              "image byte 12: the class A is nested in a cycle or deeper than 256 levels");
    EXPECT_EQ(refusal(image({2, 0, 1}, {2, 3, 0})), "accepted"); // parents after their children
    EXPECT_EQ(refusal(image({0, 1, 0}, {0, 0, 0})), "accepted"); // a class that its parent does not list
    EXPECT_EQ(refusal(image({0, 0, 0}, {3, 3, 9})), "accepted"); // a child of two classes, and an unknown one
    EXPECT_EQ(refusal(image({0, 0, 0}, {0, 3, 2})), "image byte 41: the class B is in or below a cycle of children");
    EXPECT_EQ(refusal(image({0, 0, 0}, {1, 0, 0})), "image byte 12: the class A is in or below a cycle of children");
    EXPECT_EQ(refusal(image({0, 1, 2}, {2, 3, 1})), "image byte 12: the class A is in or below a cycle of children");

    std::vector<unsigned long> parents, children;
    for (unsigned long level = 0; level < 257; ++level) {
        parents.push_back(level);
        children.push_back(level < 256 ? level + 2 : 0);
    }
    EXPECT_NE(refusal(image(parents, children)).find("is nested in a cycle or deeper than 256 levels"),
              std::string::npos);
}

// The walks end although children form cycles and classes are reached in several ways.
TEST(Image, RefusesTheCyclesThatDerivationGoesAlong) {
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

TEST(Image, RefusesDuplicates) {
    const auto database = smallDatabase();
    RtiFedObjectClass *node = database->find(RtiObjectClassHandle(1));
    database->addObjectClassAttribute(node, "z", 1, 1, 0);
    RtiFedSpace *space = database->addSpace("T");
    for (const char *dimension : {"D", "E"})
        database->addSpaceDimension(space, dimension);
    node->addObjectClass(98, "Own1");
    node->addObjectClass(99, "Own2");
    const std::string image = bytesOf(*database);
    EXPECT_EQ(bytesOf(*restored(image)), image);
    const auto with = [&image](const std::string &what, const std::string &replacement) {
        return refusal(replaced(image, what, replacement));
    };
    const std::string own1 = "\0\0\0\x62\0\0\0\1"s, own2 = "\0\0\0\x63\0\0\0\1"s; // handle and parent
    EXPECT_EQ(with(own2, own1), "image byte 55: duplicate handle 98 among the subclasses of the class R");
    EXPECT_EQ(with("\0\0\0\1z"s, "\0\0\0\1A"s), "image byte 133: duplicate name among the attributes of the class R");
    EXPECT_EQ(with("\0\0\0\1T"s, "\0\0\0\1s"s), "image byte 332: duplicate space name s");
    // The handle of the second dimension, that of the space, and the next one of a dimension.
    const std::string handles = "\0\0\0\1E\0\0\0\1\0\0\0\2\0\0\0\2"s;
    EXPECT_EQ(with(handles, "\0\0\0\1E\0\0\0\1\0\0\0\1\0\0\0\2"s),
              "image byte 332: the handle of the space T is less than 1 or a duplicate");
    EXPECT_EQ(with(handles, "\0\0\0\1E\0\0\0\0\0\0\0\2\0\0\0\2"s),
              "image byte 363: duplicate dimension handle in the space T");
}

// A code generator keeps no pointer to a record that a restore has freed.
TEST(Image, IsRestoredWhileACodeGeneratorLives) {
    const auto database = smallDatabase();
    RtiBuffer image = imageOf(*database);
    RtiFedDatabaseCodegen codegen(database.get());
    codegen.addSpace("T");
    codegen.addObjectClass("R.D");
    codegen.addInteractionClass("I.K", "reliable", "receive", "T");
    database->restore(image);
    reasonOf<RTI::RTIinternalError>([&] { codegen.addDimension("X"); });
    reasonOf<RTI::RTIinternalError>([&] { codegen.addObjectClassAttribute("c", "reliable", "receive", "S"); });
    reasonOf<RTI::RTIinternalError>([&] { codegen.addParameter("q"); });
    codegen.addObjectClass("R.D");
    codegen.addObjectClassAttribute("c", "reliable", "receive", "S");
    EXPECT_EQ(database->getAttributeName(3, 3), "c");
}

TEST(Image, LeavesNothingOfAFailedRestore) {
    const auto database = smallDatabase();
    RtiFedObjectClass *node = database->find(RtiObjectClassHandle(2));
    database->getAvailableFedAttributes(node, 0);
    const std::string cut = bytesOf(*node).substr(0, 30);
    RtiBuffer shortBuffer(cut.data(), cut.size());
    EXPECT_ANY_THROW(node->restore(shortBuffer));
    EXPECT_EQ(node->getAvailableFedAttributes(), nullptr);

    const std::string image = bytesOf(*smallDatabase());
    RtiBuffer half(image.data(), image.size() / 2);
    EXPECT_ANY_THROW(database->restore(half));
    EXPECT_TRUE(database->getObjectClassHandleSet().empty());
    EXPECT_EQ(dumpOf(*database), dumpOf(*emptyDatabase("s.fed"))); // not even the names
    RtiBuffer whole(image.data(), image.size());
    database->restore(whole);
    EXPECT_EQ(bytesOf(*database), image);
}
