// Running out of memory: each allocation of an action fails in turn. The action must throw std::bad_alloc and leave
// nothing allocated or open.

#include "infrastructure/RtiDump.hh"
#include "tests/FailingAllocator.hh"
#include "tests/Support.hh"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <iterator>
#include <utility>

namespace {

std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/// Applies `action` to what `make` returns while its n-th allocation fails, for n = 1, 2, 3 ... until none fails. After
/// each failure, `inspect` checks the object. Returns the number of failures.
template <class Make, class Action, class Inspect>
unsigned long failEachAllocation(Make make, Action action, Inspect inspect) {
    for (unsigned long n = 1;; ++n) {
        SCOPED_TRACE("allocation " + std::to_string(n));
        const auto filesBefore = openFiles();
        const long liveBefore = liveAllocations;
        bool failed = false, thrown = false;
        try {
            auto subject = make();
            {
                const FailNthAllocation failure(n);
                try {
                    action(subject);
                } catch (const std::bad_alloc &) {
                    thrown = true;
                }
                failed = failure.happened();
            }
            EXPECT_EQ(thrown, failed);
            if (failed)
                inspect(subject);
        } catch (const RTI::Exception &other) {
            ADD_FAILURE() << other._name << ": " << other._reason;
        }
        if (testing::Test::HasFailure()) // its report allocates memory itself
            return n;
        EXPECT_EQ(liveAllocations, liveBefore);
        EXPECT_EQ(openFiles(), filesBefore);
        if (!failed)
            return n - 1;
    }
}

template <class Action>
unsigned long failEachAllocation(Action action) {
    const auto nothing = [] { return nullptr; };
    return failEachAllocation(
        nothing, [&action](std::nullptr_t) { action(); }, [](std::nullptr_t) {});
}

// Names here are long enough to be allocated.

std::string loadableText() {
    return withMom(
        "(class VesselOfAnyKindAtAll (attribute PositionInTheHarbour reliable timestamp HarbourAndApproaches)"
        " (class TugOfTheHarbourMaster))",
        "(class CollisionOfTwoVessels reliable timestamp HarbourAndApproaches (parameter VesselThatWasHit))",
        "(space HarbourAndApproaches (dimension EastingInTheHarbour))");
}

/// The image of a small database with everything that an image can hold.
std::string smallImage() {
    const auto db = emptyDatabase("a-file-name-of-some-length.fed");
    db->setFederateName("A federation of some length");
    db->setFederateVersion("A version of some length too");
    db->addSpaceDimension(db->addSpace("HarbourAndApproaches"), "EastingInTheHarbour");
    db->addObjectClassAttribute(db->addObjectClass("RootOfAllObjectClasses"), "PositionInTheHarbour", 2, 1, 1);
    db->addObjectClassAttribute(db->addObjectClass("RootOfAllObjectClasses.Vessel"), "ColourOfTheVessel", 1, 2, 0);
    db->addObjectClass("RootOfAllObjectClasses.Vessel.Tug");
    db->addInteractionClass("RootOfAllInteractions", 2, 2, 1)->addParameter(db->createParameterHandle(), "VesselHit");
    RtiFedInteractionClass *collision = db->addInteractionClass("RootOfAllInteractions.CollisionOfVessels", 1, 1, 0);
    for (unsigned long handle = 20; handle > 1; --handle) // handles that a host chose; enough to need the maps
        collision->addParameter(handle, "ParameterOfACollision" + std::to_string(handle));
    while (db->createParameterHandle() != 20)
        ;
    return bytesOf(*db);
}

/// A use of a database that is refused.
template <class Use>
void expectRefusal(Use use) {
    try {
        use();
        ADD_FAILURE() << "nothing was thrown";
    } catch (const RTI::Exception &) {
    }
}

void loadFile(const std::string &path) {
    RtiFedDatabase(RtiFedDatabaseConstructorArg(path, RTI_true));
}

} // namespace

// ---- Loading

TEST(Allocation, FailsInALoad) {
    const TemporaryFile file(loadableText());
    EXPECT_GT(failEachAllocation([&file] { loadFile(file.path()); }),
              500u); // otherwise those of the library are not counted
}

TEST(Allocation, FailsInALoadThatIsRefused) {
    std::ostream nowhere(nullptr); // allocates nothing
    _rtiErrorStream.setOutputStream(nowhere);
    const auto refused = [](const std::string &path) {
        failEachAllocation([&path] { expectRefusal([&path] { loadFile(path); }); });
    };
    refused(RTIFED_EXAMPLES "/no-such-file-of-any-name.fed");
    refused(RTIFED_EXAMPLES); // can be opened, but not read
    const auto without = [&refused](const std::string &what, const std::string &with) {
        SCOPED_TRACE(what);
        refused(TemporaryFile(replaced(loadableText(), what, with)).path());
    };
    without("(attribute privilegeToDelete reliable timestamp)", "(attribute)");
    without("reliable timestamp HarbourAndApproaches)", "reliable timestamp AnUnknownRoutingSpace)");
    without("(attribute FederateType ", "(attribute FederateHandle ");
    without("(class TugOfTheHarbourMaster)", "(class TugOfTheHarbourMaster) (class tugoftheharbourmaster)");
    without("(attribute ROlength             reliable receive)", "");
    _rtiErrorStream.setOutputStream(std::cerr);
}

TEST(Allocation, FailsInAClone) {
    const RTI::NameNotFound derived("a reason that is too long to be stored within a string");
    const RTI::Exception base(derived);
    const RtiBufferUnderflow underflow(derived._reason);
    const long liveBefore = liveAllocations;
    for (const RTI::Exception *original :
         {static_cast<const RTI::Exception *>(&derived), &base, static_cast<const RTI::Exception *>(&underflow)})
        for (unsigned long n = 1, failed = 1; failed; ++n) {
            const FailNthAllocation failure(n);
            const std::unique_ptr<RTI::Exception> clone(original->cloneSelf());
            failed = failure.happened();
            ASSERT_EQ(clone == nullptr, failed) << n;
        }
    EXPECT_EQ(liveAllocations, liveBefore);
}

// ---- Images

TEST(Allocation, FailsInARestore) {
    const TemporaryFile file(loadableText());
    const std::string image = bytesOf(RtiFedDatabase(RtiFedDatabaseConstructorArg(file.path(), RTI_true)));
    EXPECT_GT(failEachAllocation([&image] { restored(image); }), 50u);

    // A database that cannot be restored in place is empty.
    const std::string small = smallImage();
    const auto pair = [&] { return std::make_pair(restored(small), RtiBuffer(image.data(), image.size())); };
    using Pair = std::pair<std::unique_ptr<RtiFedDatabase>, RtiBuffer>;
    const auto isEmpty = [](const Pair &subject) {
        EXPECT_EQ(subject.first->getObjectClassHandleSet().size() + subject.first->numSpaces(), 0u);
    };
    failEachAllocation(
        pair, [](Pair &subject) { subject.first->restore(subject.second); }, isEmpty);
}

// ---- Queries

TEST(Allocation, FailsInAQuery) {
    const std::string image = smallImage(), answer = answers(*restored(image));
    const auto fresh = [&image] { return restored(image); };
    const auto ask = [](const std::unique_ptr<RtiFedDatabase> &db) { answers(*db); };
    const auto stillAnswers = [&answer](const std::unique_ptr<RtiFedDatabase> &db) {
        EXPECT_EQ(RtiDump::getTraceMask(), RTI_T_ALL);
        EXPECT_EQ(answers(*db), answer);
    };
    EXPECT_GT(failEachAllocation(fresh, ask, stillAnswers), 200u);

    const auto refused = [](const std::unique_ptr<RtiFedDatabase> &db) {
        expectRefusal([&db] { db->getObjectClassHandle("RootOfAllObjectClasses.Vessel.Barge"); });
        expectRefusal([&db] { db->getAttributeHandle("DraughtOfTheVessel", 2); });
        expectRefusal([&db] { db->getAttributeName(99, 2); });
        expectRefusal([&db] { db->getRoutingSpaceName(-7); });
        expectRefusal([&db] { db->getTransportationName(99); });
    };
    EXPECT_GT(failEachAllocation(fresh, refused, stillAnswers), 10u);
}

TEST(Allocation, IsNotNeededByALookup) {
    const std::string text =
        withMom("(class VesselOfAnyKindAtAll (attribute PositionInTheHarbour reliable timestamp) "
                "(class TugOfTheHarbourMaster (attribute PowerOfTheTugInKilowatts reliable timestamp "
                "HarbourAndApproaches)))",
                "(class CollisionOfTwoVessels reliable timestamp (parameter VesselThatWasHitOrNot))",
                "(space HarbourAndApproaches (dimension EastingInTheHarbour))");
    const auto db = load(text);
    const RtiObjectClassHandle tug = db->getObjectClassHandle("VesselOfAnyKindAtAll.TugOfTheHarbourMaster");
    const RtiInteractionClassHandle collision = db->getInteractionClassHandle("CollisionOfTwoVessels");
    RtiAttributeHandleSet attributes(0);
    attributes.add(db->getAttributeHandle("PositionInTheHarbour", tug));
    attributes.add(db->getAttributeHandle("PowerOfTheTugInKilowatts", tug));
    db->getAvailableAttributeHandles(tug, 0);

    const FailNthAllocation failure(1);
    unsigned long found = db->getObjectClassHandle("objectroot.vesselOfAnyKindAtAll.tugOfTheHarbourMaster") == tug;
    found += db->getObjectClassHandle("VESSELOFANYKINDATALL.TUGOFTHEHARBOURMASTER") == tug;
    found += !db->objectClassExists("VesselOfAnyKindAtAll.TugOfTheHarbourMistress");
    found += db->getInteractionClassHandle("collisionoftwovessels") == collision;
    found += db->getAttributeHandle("positionINTHEharbour", tug) != 0;
    found += db->getParameterHandle("vesselTHATWASHITorNOT", collision) != 0;
    found += db->getRoutingSpaceHandle("harbourANDapproaches") == 1;
    found += db->getDimensionHandle("EASTINGintheHARBOUR", RtiSpaceHandle(1)) == 0;
    found += db->getTransportationHandle("rti_best_effort") == 1;
    found += db->getOrderingHandle("rti_time_stamp_ordering") == 2;
    found += db->find(tug)->attributeIsInherited("positionINTHEharbour");
    found += !db->find(tug)->attributeExists("positionINTHEharbour");
    found += db->find(RtiObjectClassHandle(1))->hasDerrivedClass(tug);
    found += db->getRealObjectClassHandle(tug, attributes.getHandle(1)) == tug;
    found += db->getAttributeRoutingSpaceHandle(attributes.getHandle(1), tug) == 1;
    found += db->verifyAvailableAttributes(tug, attributes) == RTI_true;
    EXPECT_FALSE(failure.happened());
    EXPECT_EQ(found, 16u);
}

// ---- Building

// Many members whose handles do not ascend have a handle map and a name map. A failed addition changes neither.
TEST(Allocation, FailsInATableOfMembers) {
    for (unsigned long size = 16; size < 40; ++size) {
        const auto node = [size] {
            auto made = std::make_unique<RtiFedInteractionClass>(1, "Root", nullptr, 1, 1, 0);
            for (unsigned long handle = size; handle > 0; --handle)
                made->addParameter(handle, "ParameterOfTheRoot" + std::to_string(handle));
            return made;
        };
        const auto add = [](const std::unique_ptr<RtiFedInteractionClass> &of) { of->addParameter(99, "TheNextOne"); };
        failEachAllocation(node, add, [&add](const std::unique_ptr<RtiFedInteractionClass> &of) {
            EXPECT_TRUE(!of->find(99) && !of->parameterExists("TheNextOne"));
            add(of);
            EXPECT_TRUE(of->find(99) == of->getParameter(of->getNumberOfParameters() - 1));
        });
    }
}

TEST(Allocation, FailsInABuildingCall) {
    using Db = RtiFedDatabase;
    // A gap in the handles of the object classes, so that no set only extends a run.
    const auto object = [](const char *name) {
        return [name](Db &db) {
            db.createObjectClassHandle();
            db.addObjectClass(name);
        };
    };
    const std::function<void(Db &)> calls[] = {
        [](Db &db) { db.addSpace("AnotherRoutingSpace"); },
        [](Db &db) { db.addSpaceDimension(db.find(RtiSpaceHandle(1)), "NorthingInTheHarbour"); },
        object("RootOfAllObjectClasses.Vessel.Tug.Large"),
        object("RootOfAllObjectClasses.Quay"),
        [](Db &db) { db.addObjectClassAttribute(db.find(RtiObjectClassHandle(2)), "LengthOfTheVessel", 1, 1, 1); },
        [](Db &db) { db.addInteractionClass("RootOfAllInteractions.CollisionOfVessels.WithAQuay", 1, 1, 1); },
        [](Db &db) {
            db.find(RtiInteractionClassHandle(2))->addParameter(db.createParameterHandle(), "SpeedOfVessel1");
        },
        [](Db &db) { db.find(RtiObjectClassHandle(3))->addObjectClass(99, "SubclassOfTheClassItself"); }};
    const std::string image = smallImage(), answer = answers(*restored(image));
    unsigned long numFailed = 0;
    for (const auto &call : calls) {
        const auto unchanged = [&](const std::unique_ptr<Db> &db) {
            EXPECT_EQ(answers(*restored(bytesOf(*db))), answer);
            EXPECT_EQ(listing(*db), listing(*restored(image)));
            call(*db); // the call can be repeated
            EXPECT_EQ(answers(*db), answers(*restored(bytesOf(*db))));
        };
        const auto act = [&call](const std::unique_ptr<Db> &db) { call(*db); };
        numFailed += failEachAllocation([&image] { return restored(image); }, act, unchanged);
    }
    EXPECT_GT(numFailed, 20u);
}
