// Memory that runs out: every single allocation of an action fails in its turn. Whatever fails, std::bad_alloc comes
// out, and nothing stays allocated or open. This is an executable of its own, since it replaces the allocator.

#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "infrastructure/RtiDump.hh"
#include "infrastructure/RtiFedParser.hh"
#include "infrastructure/RtiMemoryManager.hh"
#include "tests/Support.hh"

#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <new>

// ---- The allocator: malloc, with a counter and a failure to order, so that sanitizers keep their own checks.

namespace {

long liveAllocations = 0;
unsigned long allocationsToFailure = 0; // 0: none will fail

void *allocate(std::size_t size) noexcept {
    void *memory = std::malloc(size > 0 ? size : 1);
    liveAllocations += memory ? 1 : 0;
    return memory;
}

void *allocateOrFail(std::size_t size) noexcept {
    return allocationsToFailure > 0 && --allocationsToFailure == 0 ? nullptr : allocate(size);
}

void *allocateOrThrow(std::size_t size) {
    if (void *memory = allocateOrFail(size))
        return memory;
    throw std::bad_alloc();
}

void release(void *memory) noexcept {
    liveAllocations -= memory ? 1 : 0;
    std::free(memory);
}

} // namespace

// clang-format off
void *operator new(std::size_t size) { return allocateOrThrow(size); }
void *operator new[](std::size_t size) { return allocateOrThrow(size); }
// Not to fail by order: whoever calls this, as std::stable_sort does, may do without.
void *operator new(std::size_t size, const std::nothrow_t &) noexcept { return allocate(size); }
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept { return allocate(size); }
void operator delete(void *memory) noexcept { release(memory); }
void operator delete[](void *memory) noexcept { release(memory); }
void operator delete(void *memory, std::size_t) noexcept { release(memory); }
void operator delete[](void *memory, std::size_t) noexcept { release(memory); }
void operator delete(void *memory, const std::nothrow_t &) noexcept { release(memory); }
void operator delete[](void *memory, const std::nothrow_t &) noexcept { release(memory); }

// The same for the infrastructure's allocator: the program's definition stands before that of the shared library.
void *RtiMemoryManager::malloc(unsigned long size) noexcept { return allocateOrFail(size); }
void RtiMemoryManager::free(void *memory) noexcept { release(memory); }
// clang-format on

namespace {

/// While this lives, the n-th allocation from its making fails, once.
class FailNthAllocation {
public:
    explicit FailNthAllocation(unsigned long n) { allocationsToFailure = n; }
    ~FailNthAllocation() { allocationsToFailure = 0; }
    FailNthAllocation(const FailNthAllocation &) = delete;
    FailNthAllocation &operator=(const FailNthAllocation &) = delete;
    bool happened() const { return allocationsToFailure == 0; }
};

std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

/// Acts on what `make` returns with the n-th allocation of `action` failing, for n = 1, 2, 3 ... until none fails.
/// After each failure, `inspect` looks at what was acted on. Returns how many failed.
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
        if (testing::Test::HasFailure()) // whose report takes memory itself
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
    db->addInteractionClass("RootOfAllInteractions.CollisionOfVessels", 1, 1, 0);
    return bytesOf(*db);
}

std::unique_ptr<RtiFedDatabase> restored(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    return std::make_unique<RtiFedDatabase>(buffer);
}

/// Asks a database for all that it can say, and returns what does not change when a handle is used up.
std::string askAll(const RtiFedDatabase &db) {
    std::ostringstream os, counters;
    os.exceptions(std::ios::badbit); // a stream keeps the failure to itself otherwise
    counters.exceptions(std::ios::badbit);
    db.dump(counters);
    db.dumpDatabase(&os);
    os << db.getChecksum();
    RtiBuffer image;
    db.save(image);
    db.diff(image, os);
    for (const RtiObjectClassHandle &handle : db.getObjectClassHandleSet()) {
        const RtiFedObjectClass &node = *db.find(handle);
        os << '\n' << db.getObjectClassHandle(db.getObjectClassName(handle))._value;
        std::set<RtiObjectClassHandle> derived;
        db.getDerivedObjectClassHandleSet(handle, derived);
        os << derived.size() << node.getChildrenClasses().size() << node.descendants().size();
        db.getChildlessDerivedObjectClassHandleSet(handle, derived);
        os << derived.size() << db.getAvailableFedAttributes(handle, 0)->size();
        const RtiAttributeHandleSet &available = *db.getAvailableAttributeHandles(handle, 0);
        for (unsigned long i = 0; i < available.size(); ++i) {
            const RtiAttributeHandle attribute = available.getHandle(i);
            os << db.getAttributeHandle(db.getAttributeName(attribute, handle), handle)._value
               << db.getRealObjectClassHandle(handle, attribute)._value;
        }
        os << db.verifyAvailableAttributes(handle, available);
        node.forEachOwned([&os](const RtiFedObjectClass &owned) { os << owned.getName(); });
    }
    for (const RtiInteractionClassHandle &handle : db.getInteractionClassHandleSet()) {
        os << '\n' << db.getInteractionClassHandle(db.getInteractionClassName(handle))._value;
        const RtiFedInteractionClass &node = *db.find(handle);
        node.forEachOwned([&os](const RtiFedInteractionClass &owned) { os << owned.getName(); });
        std::set<RtiInteractionClassHandle> derived;
        db.getDerivedInteractionClassHandleSet(handle, derived);
        os << derived.size() << node.getChildrenClasses().size();
        for (const RtiParameterHandle &parameter : db.getAvailableInteractionClassHandles(handle))
            os << db.getParameterHandle(db.getParameterName(parameter, handle), handle)._value;
    }
    return os.str();
}

/// A use of a database that is refused, whatever the reason.
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
    EXPECT_GT(failEachAllocation([&file] { loadFile(file.path()); }), 1000u); // else the library's are not counted
}

TEST(Allocation, FailsInALoadThatIsRefused) {
    std::ostream nowhere(nullptr); // takes no memory
    _rtiErrorStream.setOutputStream(nowhere);
    const auto refused = [](const std::string &path) {
        failEachAllocation([&path] { expectRefusal([&path] { loadFile(path); }); });
    };
    refused(RTIFED_EXAMPLES "/no-such-file-whatever-its-name.fed");
    refused(RTIFED_EXAMPLES); // can be opened, but not read
    const auto without = [&refused](const std::string &what, const std::string &with) {
        SCOPED_TRACE(what);
        refused(TemporaryFile(replaced(loadableText(), what, with)).path());
    };
    without("(attribute privilegeToDelete reliable timestamp)", "(attribute)");
    without("reliable timestamp HarbourAndApproaches)", "reliable timestamp AnUnknownRoutingSpace)");
    without("(attribute FederateType reliable receive)", "(attribute FederateHandle reliable receive)");
    without("(class TugOfTheHarbourMaster)", "(class TugOfTheHarbourMaster) (class tugoftheharbourmaster)");
    without("(attribute ROlength reliable receive)", "");
    _rtiErrorStream.setOutputStream(std::cerr);
}

TEST(Allocation, NothingStaysOfAForeignException) {
    struct Thrower : RtiFedDatabaseCodegen {
        using RtiFedDatabaseCodegen::RtiFedDatabaseCodegen;
        void addParameter(std::string) override { throw 7; }
    };
    const TemporaryFile file(loadableText());
    failEachAllocation([&file] {
        const auto db = emptyDatabase();
        Thrower thrower(db.get());
        try {
            RtiFedParser_Class_main(std::fopen(file.path().c_str(), "r"), &thrower);
            ADD_FAILURE() << "nothing was thrown";
        } catch (int) {
        }
    });
}

// ---- Images

TEST(Allocation, FailsInARestore) {
    const TemporaryFile file(loadableText());
    const std::string image = bytesOf(RtiFedDatabase(RtiFedDatabaseConstructorArg(file.path(), RTI_true)));
    EXPECT_GT(failEachAllocation([&image] { restored(image); }), 1000u);
}

TEST(Allocation, FailsInARestoreOfADatabaseInUse) {
    const std::string image = smallImage(), answers = askAll(*restored(image));
    const auto inUse = [&image] {
        auto db = restored(image);
        askAll(*db);
        return db;
    };
    const auto restore = [&image](const std::unique_ptr<RtiFedDatabase> &db) {
        RtiBuffer buffer(image.data(), image.size());
        db->restore(buffer);
    };
    const auto isEmptyOrWhole = [&](const std::unique_ptr<RtiFedDatabase> &db) {
        if (db->numObjectClasses() > 0) // the buffer itself failed
            EXPECT_EQ(askAll(*db), answers);
        else
            EXPECT_EQ(db->numInteractionClasses() + db->numSpaces() + db->getAttributeHandleSet().size(), 0u);
        restore(db);
        EXPECT_EQ(bytesOf(*db), image);
    };
    EXPECT_GT(failEachAllocation(inUse, restore, isEmptyOrWhole), 30u);
}

TEST(Allocation, FailsInARestoreThatIsRefused) {
    const std::string image = smallImage();
    for (std::size_t size = 0; size < image.size(); size += 7)
        failEachAllocation([&] { expectRefusal([&] { restored(image.substr(0, size)); }); });
    for (std::size_t at = 0; at < image.size(); ++at) {
        std::string damaged = image;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        failEachAllocation([&damaged] {
            try {
                restored(damaged);
            } catch (const RTI::Exception &) { // most are refused, for every reason there is
            }
        });
    }
}

// ---- Queries

TEST(Allocation, FailsInAQuery) {
    const std::string image = smallImage(), answers = askAll(*restored(image));
    const auto fresh = [&image] { return restored(image); };
    const auto ask = [](const std::unique_ptr<RtiFedDatabase> &db) { askAll(*db); };
    const auto stillAnswers = [&answers](const std::unique_ptr<RtiFedDatabase> &db) {
        EXPECT_EQ(RtiDump::getTraceMask(), RTI_T_ALL);
        EXPECT_EQ(askAll(*db), answers);
    };
    EXPECT_GT(failEachAllocation(fresh, ask, stillAnswers), 100u);
}

// ---- Building

struct BuildingCall {
    const char *name;
    void (*call)(RtiFedDatabase &);
};

void PrintTo(const BuildingCall &call, std::ostream *os) {
    *os << call.name;
}

class AllocationInBuilding : public testing::TestWithParam<BuildingCall> {};

TEST_P(AllocationInBuilding, ChangesNothingWhenItFails) {
    const auto call = [](const std::unique_ptr<RtiFedDatabase> &db) { GetParam().call(*db); };
    const std::string image = smallImage(), answers = askAll(*restored(image));
    const auto unchanged = [&](const std::unique_ptr<RtiFedDatabase> &db) {
        EXPECT_EQ(askAll(*restored(bytesOf(*db))), answers);
        EXPECT_EQ(listing(*db), listing(*restored(image)));
        call(db); // it can be done again
        EXPECT_EQ(askAll(*db), askAll(*restored(bytesOf(*db))));
    };
    EXPECT_GT(failEachAllocation([&image] { return restored(image); }, call, unchanged), 2u);
}

using Db = RtiFedDatabase;
const BuildingCall kBuildingCalls[] = {
    {"Space", [](Db &db) { db.addSpace("AnotherRoutingSpace"); }},
    {"Dimension", [](Db &db) { db.addSpaceDimension(db.find(RtiSpaceHandle(1)), "NorthingInTheHarbour"); }},
    // With a gap in the handles, so that no set of them just extends a run.
    {"ObjectClassInDepth",
     [](Db &db) {
         db.createObjectClassHandle();
         db.addObjectClass("RootOfAllObjectClasses.Vessel.Tug.Large");
     }},
    {"ObjectClassBeside",
     [](Db &db) {
         db.createObjectClassHandle();
         db.addObjectClass("RootOfAllObjectClasses.Quay");
     }},
    {"Attribute",
     [](Db &db) { db.addObjectClassAttribute(db.find(RtiObjectClassHandle(2)), "LengthOfTheVessel", 1, 1, 1); }},
    {"InteractionClass",
     [](Db &db) { db.addInteractionClass("RootOfAllInteractions.CollisionOfVessels.WithAQuay", 1, 1, 1); }},
    {"Parameter",
     [](Db &db) {
         db.find(RtiInteractionClassHandle(2))->addParameter(db.createParameterHandle(), "SpeedAtTheCollision");
     }},
    {"SubclassOfAnObjectClass",
     [](Db &db) { db.find(RtiObjectClassHandle(3))->addObjectClass(99, "SubclassOfTheClassItself"); }},
    {"SubclassOfAnInteractionClass", [](Db &db) {
         db.find(RtiInteractionClassHandle(2))->addInteractionClass(99, "SubclassOfTheClassItself", 1, 1, 1);
     }}};

INSTANTIATE_TEST_SUITE_P(Of, AllocationInBuilding, testing::ValuesIn(kBuildingCalls),
                         [](const auto &call) { return std::string(call.param.name); });
