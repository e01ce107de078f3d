#include "fed/loading/RtiFedDatabaseCodegen.hh"
#include "infrastructure/RtiDump.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tests/Support.hh"

#include <fstream>

TEST(Database, StaysEmptyOnRequest) {
    const auto database = emptyDatabase("/no/such/file");
    EXPECT_EQ(dumpOf(*database),
              "_fedName=``''\n_fedVersion=``''\nsize _objectClassNameMap=``0''\nsize _objectClassHandleMap=``0''\n"
              "size _interactionClassNameMap=``0''\nsize _interactionClassHandleMap=``0''\nsize _spaceNameMap=``0''\n"
              "size _spaceHandleMap=``0''\n_nextSpaceHandle=``0''\n_nextObjectClassHandle=``0''\n"
              "_nextAttributeHandle=``0''\n_nextInteractionClassHandle=``0''\n_nextParameterHandle=``0''\n"
              "_fileName=``/no/such/file''\n");
    EXPECT_EQ(listing(*database), "FED DATABASE\nFederation:  \nVersion: \nRouting Space List:\n\n"
                                  "Object Class Name List:\n\nInteractions List:\n");
}

TEST(Database, ReportsAFileThatCannotBeOpened) {
    const ErrorLines errors;
    const std::string name = "/no/such/file";
    EXPECT_EQ(
        reasonOf<RTI::CouldNotOpenFED>([&] { RtiFedDatabase database(RtiFedDatabaseConstructorArg(name, RTI_true)); }),
        name);
    EXPECT_EQ(errors.text(), "\"RtiFedDatabase\", line 60: \nCould not open FED file /no/such/file\n");
}

TEST(Database, ReportsASyntaxErrorWithItsPlace) {
    const ErrorLines errors;
    const TemporaryFile file("(FED\n  (Federation F)");
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>(
                  [&] { RtiFedDatabase database(RtiFedDatabaseConstructorArg(file.path(), RTI_true)); }),
              file.path());
    EXPECT_EQ(errors.text(),
              "\"RtiFedDatabase\", line 73: \nCould not parse FED file " + file.path() +
                  "\n\"RtiFedDatabase\", line 75: line 1, column 1: expected \")\" to close \"FED\", found the "
                  "end of the file\n");

    const std::string text = errors.text();
    _rtiErrorStream.disable();
    EXPECT_EQ(
        reasonOf<RTI::ErrorReadingFED>([&] { RtiFedDatabase database(RtiFedDatabaseConstructorArg("/", RTI_true)); }),
        "/");
    reasonOf<RTI::CouldNotOpenFED>([&] { RtiFedDatabase database(RtiFedDatabaseConstructorArg("", RTI_true)); });
    reasonOf<RTI::NameNotFound>([] { load(withMom("", "(class A reliable timestamp Nix)")); });
    _rtiErrorStream.enable();
    EXPECT_EQ(errors.text(), text);
}

TEST(Database, ThrowsWhatItSaysWhereTheErrorStreamThrows) {
    struct Refusing : std::streambuf {
        int overflow(int) override { throw RTI::RTIinternalError("the log is gone"); }
    } refusing;
    std::ofstream closed;
    std::ostream gone(&refusing);
    for (std::ostream *failing : {static_cast<std::ostream *>(&closed), &gone}) {
        failing->exceptions(std::ios::badbit);
        _rtiErrorStream.setOutputStream(*failing);
        const auto build = [](const char *name) { RtiFedDatabase(RtiFedDatabaseConstructorArg(name, RTI_true)); };
        EXPECT_EQ(reasonOf<RTI::CouldNotOpenFED>([&] { build("/no/such/file"); }), "/no/such/file");
        EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { build("/"); }), "/");
        reasonOf<RTI::NameNotFound>([] { load(withMom("(class A (attribute a reliable timestamp Nix))")); });
    }
    _rtiErrorStream.setOutputStream(std::cerr);

    EXPECT_THROW(emptyDatabase()->dump(closed), std::ios::failure);
    EXPECT_EQ(RtiDump::getTraceMask(), RTI_T_ALL);
}

TEST(Database, RefusesWhatAFileDeclaresWrongly) {
    const ErrorLines errors;
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([] { load(withMom("(class A (attribute a reliable timestamp Nix))")); }),
              "\"RtiFedDatabase\", line 1651: Routing Space Name: Nix not found in FED file.");
    EXPECT_EQ(errors.text(), "\"RtiFedDatabaseCodegen\", line 85: Invalid Space Name Specified: `Nix` \n");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([] { load(withMom("", "(class A reliable timestamp Nix)")); }),
              "\"RtiFedDatabase\", line 1651: Routing Space Name: Nix not found in FED file.");
    EXPECT_NE(errors.text().find("\"RtiFedDatabaseCodegen\", line 111: Invalid Space Name Specified: `Nix` \n"),
              std::string::npos);
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([] { load(withMom("(class A (attribute a fast timestamp))")); }),
              "\"RtiFedDatabase\", line 1833: Transportation Name: fast not found in FED file.");
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([] { load(withMom("(class A) (class a)")); }),
              "\"RtiFedDatabase\", line 202:  The object class ObjectRoot.a already exists.");
    EXPECT_EQ(
        reasonOf<RTI::ErrorReadingFED>([] { load(replaced(example("minimal.fed"), "(class Manager", "(class M")); }),
        "\"RtiFedDatabase\", line 89:  MOM error: object class: Manager doesn't exist");
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>(
                  [] { load(replaced(example("minimal.fed"), "(class Manager reliable", "(class M reliable")); }),
              "\"RtiFedDatabase\", line 95:  MOM error: interaction class: Manager doesn't exist");
}

TEST(Database, CountsHandlesThroughTheFile) {
    const auto database =
        load(withMom("(class A (attribute a reliable timestamp) (class B (attribute b reliable receive)))",
                     "(class I reliable timestamp S2 (parameter p) (class J best_effort receive "
                     "(parameter q)))",
                     "(space S1 (dimension X)) (space S2 (dimension Y) (dimension Z))"));
    EXPECT_EQ(database->getObjectClassHandle("ObjectRoot"), 1);
    EXPECT_EQ(database->getObjectClassHandle("A.B"), 4);
    EXPECT_EQ(database->getAttributeHandle("a", 3), 2);
    EXPECT_EQ(database->getAttributeHandle("b", 4), 3);
    EXPECT_EQ(database->getInteractionClassHandle("I.J"), 4);
    EXPECT_EQ(database->getParameterHandle("p", 3), 1);
    EXPECT_EQ(database->getParameterHandle("q", 4), 2);
    EXPECT_EQ(database->getRoutingSpaceHandle("HLAMomDefaultSpace"), 3);
    EXPECT_EQ(database->getDimensionHandle("y", 2), 0);
    EXPECT_EQ(database->numSpaces(), 3u);
    EXPECT_EQ(database->getFederateName(), "Minimal");
    EXPECT_EQ(database->getFederateVersion(), "v1.3");
}

TEST(Database, GivesTheMomItsSpace) {
    const auto database = load(withMom("(class A (attribute a reliable timestamp))", "", "(space S)"));
    const auto spaceOf = [&](const char *attribute, const char *objectClass) {
        const auto handle = database->getObjectClassHandle(objectClass);
        return database->getAttributeRoutingSpaceHandle(database->getAttributeHandle(attribute, handle), handle);
    };
    EXPECT_EQ(spaceOf("LBTS", "Manager.Federate"), 2);
    EXPECT_EQ(spaceOf("a", "A"), 0);
    EXPECT_EQ(spaceOf("privilegeToDelete", "Manager"), 0); // the root is not visited
    EXPECT_EQ(database->getInteractionRoutingSpaceHandle(database->getInteractionClassHandle("Manager")), 2);
    EXPECT_EQ(database->getInteractionRoutingSpaceHandle(
                  database->getInteractionClassHandle("Manager.Federate.Service.FlushQueueRequest")),
              2);
    EXPECT_EQ(database->getInteractionRoutingSpaceHandle(1), 0);

    // A class with a space in the file keeps it. A space of that name in the file is the one that is assigned.
    const auto own = load(replaced(withMom("", "", "(space S) (space hlaMOMdefaultspace)"),
                                   "(attribute LBTS                 reliable receive)",
                                   "(attribute LBTS                 reliable receive S)"));
    EXPECT_EQ(own->getAttributeRoutingSpaceHandle(own->getAttributeHandle("LBTS", 4), 4), 1);
    EXPECT_EQ(own->getAttributeRoutingSpaceHandle(own->getAttributeHandle("ROlength", 4), 4), 2);
    EXPECT_EQ(own->numSpaces(), 2u);
    EXPECT_EQ(own->getRoutingSpaceName(3), "HLAMomDefaultSpace");

    EXPECT_EQ(reasonOf<RTI::NameNotFound>([] { emptyDatabase()->setMomDefaultSpace(); }),
              "\"RtiFedDatabase\", line 1651: Routing Space Name: HLAMomDefaultSpace not found in FED file.");
}

TEST(Database, AddsClassesBelowTheirSuperclass) {
    const auto database = emptyDatabase();
    RtiFedObjectClass *root = database->addObjectClass("ObjectRoot");
    RtiFedObjectClass *a = database->addObjectClass("ObjectRoot.A");
    RtiFedObjectClass *b = database->addObjectClass("A.B"); // its superclass is found without the root prefix
    EXPECT_EQ(b->getParentClass(), a);
    EXPECT_EQ(b->getName(), "A.B");
    EXPECT_EQ(root->getChildrenClasses(), std::set<RtiObjectClassHandle>{2});
    EXPECT_TRUE(root->hasDerrivedClass(3));
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { database->addObjectClass("a"); }),
              "\"RtiFedDatabase\", line 202:  The object class a already exists.");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { database->addObjectClass("ObjectRoot.X.Y"); }),
              "\"RtiFedDatabase\", line 1342: Object Class Name: ObjectRoot.X not found in FED file.");
    EXPECT_EQ(database->addObjectClass("Z")->getHandle(), 4); // the refusals used no handle

    RtiFedInteractionClass *top = database->addInteractionClass("InteractionRoot", 2, 2, 0);
    database->addInteractionClass("InteractionRoot.I", 1, 1, 0);
    database->addInteractionClass("InteractionRoot.I.J", 1, 1, 0);
    EXPECT_EQ(top->getChildrenClasses(), std::set<RtiInteractionClassHandle>{2});
    EXPECT_EQ(reasonOf<RTI::ErrorReadingFED>([&] { database->addInteractionClass("i", 1, 1, 0); }),
              "\"RtiFedDatabase\", line 567:  The interaction class i already exists.");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { database->addInteractionClass("X.Y", 1, 1, 0); }),
              "\"RtiFedDatabase\", line 1504: Interaction Class Name: X not found in FED file.");
}

TEST(Database, RefusesMembersWithoutAnOwner) {
    const auto database = emptyDatabase();
    RtiFedDatabaseCodegen codegen(database.get());
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { codegen.addObjectClassAttribute("a", "reliable", "receive", ""); }),
              "\"RtiFedDatabase\", line 523: ");
    EXPECT_EQ(reasonOf<RTI::RTIinternalError>([&] { codegen.addDimension("d"); }), "\"RtiFedDatabase\", line 666: ");
    reasonOf<RTI::RTIinternalError>([&] { codegen.addParameter("p"); });
    EXPECT_EQ(dumpOf(*database), dumpOf(*emptyDatabase()));
}

TEST(Database, BuildsThroughWhoeverOverridesACallback) {
    struct Prefixing : RtiFedDatabaseCodegen {
        using RtiFedDatabaseCodegen::RtiFedDatabaseCodegen;
        void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                     std::string space) override {
            RtiFedDatabaseCodegen::addObjectClassAttribute("my" + name, transportation, ordering, space);
        }
        void addParameter(std::string name) override { RtiFedDatabaseCodegen::addParameter("my" + name); }
    };
    const auto database = emptyDatabase();
    Prefixing codegen(database.get());
    const TemporaryFile file(withMom("(class C (attribute a reliable receive))"));
    RtiFedParser_Class_main(std::fopen(file.path().c_str(), "r"), &codegen);
    EXPECT_TRUE(database->find(database->getObjectClassHandle("C"))->attributeExists("mya"));
    EXPECT_NE(database->getParameterHandle("myFederate", database->getInteractionClassHandle("Manager.Federate")), 0);
}

TEST(Database, FindsTheClassAboveInWhateverOrderClassesCome) {
    const auto database = emptyDatabase();
    RtiFedDatabaseCodegen codegen(database.get());
    for (const char *name : {"ObjectRoot", "ObjectRoot.A", "ObjectRoot.A.B", "ObjectRoot.C", "objectroot.a.D", "A.B.E"})
        codegen.addObjectClass(name);
    const auto parentOf = [&](unsigned long handle) {
        return database->find(RtiObjectClassHandle(handle))->getParentClass();
    };
    EXPECT_EQ(parentOf(4), database->find(RtiObjectClassHandle(1)));
    EXPECT_EQ(parentOf(5), database->find(RtiObjectClassHandle(2)));
    EXPECT_EQ(parentOf(6), database->find(RtiObjectClassHandle(3)));
}

TEST(Database, FindsASpaceOfATakenNameByHandleOnly) {
    const auto database = emptyDatabase();
    database->addSpace("S");
    database->addSpaceDimension(database->addSpace("s"), "X");
    EXPECT_EQ(database->getRoutingSpaceHandle("s"), 1);
    EXPECT_EQ(database->getRoutingSpaceName(2), "s");
    EXPECT_EQ(database->getDimensionName(0, 2), "X");
    EXPECT_EQ(database->numSpaces(), 1u);
}

TEST(Database, NestsClassesToABound) {
    const auto nested = [](unsigned levels) {
        std::string text;
        for (unsigned level = 1; level < levels; ++level) // the root is the first
            text += "(class c ";
        return withMom(text + std::string(levels - 1, ')'));
    };
    EXPECT_EQ(load(nested(kMaxClassNesting))->numObjectClasses(), kMaxClassNesting - 1 + 5);
    const ErrorLines errors;
    reasonOf<RTI::ErrorReadingFED>([&] { load(nested(kMaxClassNesting + 1)); });
    EXPECT_NE(errors.text().find("is nested too deeply"), std::string::npos);
}
