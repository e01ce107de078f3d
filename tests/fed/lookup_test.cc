#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

#include <map>
#include <random>
#include <vector>

namespace {

const RtiFedDatabase &harbour() {
    static const auto database = load(withMom(
        "(class Craft (attribute Position reliable timestamp) (class Tug (attribute Power best_effort receive Area) "
        "(class Fast))) (class Berth (attribute Length reliable timestamp))",
        "(class Call reliable timestamp Area (parameter Channel) (class Distress best_effort receive (parameter "
        "Nature)))",
        "(space Area (dimension East) (dimension North))"));
    return *database;
}

} // namespace

TEST(Lookup, FindsAClassWithAndWithoutItsRoot) {
    const RtiFedDatabase &db = harbour();
    const RtiObjectClassHandle tug = db.getObjectClassHandle("ObjectRoot.Craft.Tug");
    for (const char *name : {"craft.tug", "CRAFT.TUG", "objectroot.craft.tug"})
        EXPECT_EQ(db.getObjectClassHandle(name), tug) << name;
    EXPECT_EQ(db.getObjectClassName(tug), "ObjectRoot.Craft.Tug");
    EXPECT_TRUE(db.objectClassExists("Craft"));
    EXPECT_TRUE(db.objectClassExists(tug));
    EXPECT_FALSE(db.objectClassExists("Tug"));
    EXPECT_FALSE(db.objectClassExists(""));
    EXPECT_FALSE(db.objectClassExists(" Craft"));
    EXPECT_FALSE(db.objectClassExists(RtiObjectClassHandle(99)));
    EXPECT_FALSE(db.interactionClassExists("ObjectRoot.Call"));
    EXPECT_TRUE(db.interactionClassExists("call"));
    EXPECT_TRUE(db.interactionClassExists(RtiInteractionClassHandle(1)));
    EXPECT_FALSE(db.interactionClassExists(RtiInteractionClassHandle(99)));
    EXPECT_EQ(db.getInteractionClassName(db.getInteractionClassHandle("CALL.distress")),
              "InteractionRoot.Call.Distress");
    EXPECT_EQ(db.find(tug)->getName(), "ObjectRoot.Craft.Tug");
    EXPECT_EQ(db.find(RtiObjectClassHandle(99)), nullptr);
    EXPECT_EQ(db.find(RtiInteractionClassHandle(99)), nullptr);
    EXPECT_EQ(db.find(RtiSpaceHandle(-1)), nullptr);
}

// Handle 0 means none: an attribute that a host added with it is not found by its name.
TEST(Lookup, FindsNoAttributeOfHandle0) {
    const auto db = emptyDatabase();
    db->addObjectClassAttribute(db->addObjectClass("A"), "a", 1, 1, 0);
    db->addObjectClass("A.B")->addAttribute(0, "b", 1, 1, 0);
    EXPECT_EQ(db->getAttributeHandle("a", 2), 1);
    reasonOf<RTI::NameNotFound>([&] { db->getAttributeHandle("b", 2); });
}

// Names with no, one or two root prefixes, in any case, against a plain map that is asked a second time with the
// prefix; and the order of the image, which is that of the upper-cased full names.
TEST(Lookup, FindsAClassAsAPlainMapAskedTwiceDoes) {
    const std::vector<std::string> words = {"ObjectRoot", "objectroot", "OBJECTROOT", "A", "a", "Nz", "Zz"};
    std::mt19937 random(6);
    const auto word = [&] { return words[random() % words.size()]; };
    for (int round = 0; round < 50; ++round) {
        const auto db = emptyDatabase();
        std::map<std::string, RtiObjectClassHandle> model;
        const auto modelFind = [&model](const std::string &name) {
            auto found = model.find(RtiStringUtility::toupper(name));
            if (found == model.end())
                found = model.find("OBJECTROOT." + RtiStringUtility::toupper(name));
            return found == model.end() ? RtiObjectClassHandle(0) : found->second;
        };
        for (int i = 0; i < 40; ++i) {
            std::string name = word();
            for (std::size_t more = random() % 4; more > 0; --more)
                name += '.' + word();
            const RtiObjectClassHandle expected = modelFind(name);
            ASSERT_EQ(db->objectClassExists(name), expected != 0) << name;
            const std::size_t dot = name.rfind('.');
            if (expected != 0) {
                ASSERT_EQ(db->getObjectClassHandle(name), expected) << name;
            } else if (dot == std::string::npos || modelFind(name.substr(0, dot)) != 0) {
                model[RtiStringUtility::toupper(name)] = db->addObjectClass(name)->getHandle();
            }
        }
        ASSERT_EQ(db->numObjectClasses(), model.size());
        const auto copy = restored(bytesOf(*db));
        EXPECT_EQ(bytesOf(*copy), bytesOf(*db));
        for (const auto &[name, handle] : model)
            ASSERT_EQ(copy->getObjectClassHandle(name), handle) << name;
        std::string image = bytesOf(*db);
        std::size_t at = 0;
        for (const auto &[name, handle] : model) {
            const std::string &saved = db->find(handle)->getName();
            at = image.find(std::string{0, 0, 0, static_cast<char>(saved.size())} + saved, at);
            ASSERT_NE(at, std::string::npos) << name;
        }
    }
}

TEST(Lookup, GoesUpForMembers) {
    const RtiFedDatabase &db = harbour();
    const auto fast = db.getObjectClassHandle("Craft.Tug.Fast"), berth = db.getObjectClassHandle("Berth");
    const auto position = db.getAttributeHandle("POSITION", fast), power = db.getAttributeHandle("power", fast);
    EXPECT_EQ(db.getAttributeName(position, fast), "Position");
    EXPECT_EQ(db.getAttributeRoutingSpaceHandle(power, fast), 1);
    EXPECT_EQ(db.getAttributeRoutingSpaceHandle(position, fast), 0);
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getAttributeHandle("Position", berth); }),
              "\"RtiFedDatabase\", line 1410: Attribute Name: Position of Object Class: " + toString(berth._value) +
                  " not found in FED file.");
    EXPECT_EQ(reasonOf<RTI::AttributeNotDefined>([&] { db.getAttributeName(position, berth); }),
              "\"RtiFedDatabase\", line 1464: ");
    EXPECT_EQ(reasonOf<RTI::AttributeNotDefined>([&] { db.getAttributeRoutingSpaceHandle(position, berth); }),
              "\"RtiFedDatabase\", line 1772: ");

    const auto call = db.getInteractionClassHandle("Call"), distress = db.getInteractionClassHandle("Call.Distress");
    const auto channel = db.getParameterHandle("channel", distress), nature = db.getParameterHandle("nature", distress);
    EXPECT_EQ(db.getParameterName(channel, distress), "Channel");
    EXPECT_EQ(db.getInteractionRoutingSpaceHandle(call), 1);
    EXPECT_EQ(db.getInteractionRoutingSpaceHandle(distress), 0);
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getParameterHandle("Nature", call); }),
              "\"RtiFedDatabase\", line 1579: Parameter Name: Nature of Interaction Class: " + toString(call._value) +
                  " not found in FED file.");
    EXPECT_EQ(reasonOf<RTI::InteractionParameterNotDefined>([&] { db.getParameterName(nature, call); }),
              "\"RtiFedDatabase\", line 1628: ");
}

TEST(Lookup, FindsSpacesAndDimensions) {
    const RtiFedDatabase &db = harbour();
    EXPECT_EQ(db.getRoutingSpaceHandle("AREA"), 1);
    EXPECT_EQ(db.getRoutingSpaceName(1), "Area");
    EXPECT_EQ(db.getDimensionHandle("north", 1), 1);
    EXPECT_EQ(db.getDimensionName(0, 1), "East");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getRoutingSpaceHandle("ObjectRoot.Area"); }),
              "\"RtiFedDatabase\", line 1651: Routing Space Name: ObjectRoot.Area not found in FED file.");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getDimensionHandle("up", 1); }), "\"RtiFedSpace\", line 278: ");
    EXPECT_EQ(reasonOf<RTI::DimensionNotDefined>([&] { db.getDimensionName(2, 1); }), "\"RtiFedSpace\", line 301: ");
}

TEST(Lookup, RefusesUnknownNamesAndHandles) {
    const RtiFedDatabase &db = harbour();
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getObjectClassHandle("Tug"); }),
              "\"RtiFedDatabase\", line 1342: Object Class Name: Tug not found in FED file.");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db.getInteractionClassHandle(""); }),
              "\"RtiFedDatabase\", line 1504: Interaction Class Name:  not found in FED file.");
    const auto at = [](const char *line) { return std::string("\"RtiFedDatabase\", line ") + line + ": "; };
    EXPECT_EQ(reasonOf<RTI::ObjectClassNotDefined>([&] { db.getObjectClassName(0); }), at("1368"));
    EXPECT_EQ(reasonOf<RTI::ObjectClassNotDefined>([&] { db.getAttributeHandle("a", 0); }), at("1397"));
    EXPECT_EQ(reasonOf<RTI::ObjectClassNotDefined>([&] { db.getAttributeName(1, 0); }), at("1450"));
    EXPECT_EQ(reasonOf<RTI::InteractionClassNotDefined>([&] { db.getInteractionClassName(0); }), at("1533"));
    EXPECT_EQ(reasonOf<RTI::InteractionClassNotDefined>([&] { db.getParameterHandle("p", 0); }), at("1562"));
    EXPECT_EQ(reasonOf<RTI::InteractionClassNotDefined>([&] { db.getParameterName(1, 0); }), at("1611"));
    EXPECT_EQ(reasonOf<RTI::SpaceNotDefined>([&] { db.getRoutingSpaceName(0); }), at("1679"));
    EXPECT_EQ(reasonOf<RTI::SpaceNotDefined>([&] { db.getDimensionHandle("d", 0); }), at("1706"));
    EXPECT_EQ(reasonOf<RTI::SpaceNotDefined>([&] { db.getDimensionName(0, 0); }), at("1734"));
    EXPECT_EQ(reasonOf<RTI::ObjectClassNotDefined>([&] { db.getAttributeRoutingSpaceHandle(1, 0); }), at("1767"));
    EXPECT_EQ(reasonOf<RTI::InteractionClassNotDefined>([&] { db.getInteractionRoutingSpaceHandle(0); }), at("1800"));
}

TEST(Lookup, TransportationsAndOrderings) {
    const auto db = emptyDatabase();
    for (const char *name : {"reliable", "Reliable", "RTI_reliable"})
        EXPECT_EQ(db->getTransportationHandle(name), 2) << name;
    for (const char *name : {"best_effort", "RTI_BEST_EFFORT"})
        EXPECT_EQ(db->getTransportationHandle(name), 1) << name;
    for (const char *name : {"timestamp", "rti_time_stamp_ordering"})
        EXPECT_EQ(db->getOrderingHandle(name), 2) << name;
    for (const char *name : {"Receive", "RTI_RECEIVE_ORDERING"})
        EXPECT_EQ(db->getOrderingHandle(name), 1) << name;
    EXPECT_EQ(db->getTransportationName(2), "RTI_RELIABLE");
    EXPECT_EQ(db->getTransportationName(1), "RTI_BEST_EFFORT");
    EXPECT_EQ(db->getOrderingName(2), "RTI_TIME_STAMP_ORDERING");
    EXPECT_EQ(db->getOrderingName(1), "RTI_RECEIVE_ORDERING");
    for (const char *name : {"BESTEFFORT", " RELIABLE", "", "RTI_", "reliabl"})
        EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db->getTransportationHandle(name); }),
                  std::string("\"RtiFedDatabase\", line 1833: Transportation Name: ") + name +
                      " not found in FED file.");
    for (const char *name : {"TIME_STAMP", "RTI_TIMESTAMP", "RTI_RECEIVE", ""})
        EXPECT_EQ(reasonOf<RTI::NameNotFound>([&] { db->getOrderingHandle(name); }),
                  std::string("\"RtiFedDatabase\", line 1899: Ordering Name: ") + name + " not found in FED file.");
    for (const unsigned long handle : {0UL, 3UL}) {
        EXPECT_EQ(reasonOf<RTI::InvalidTransportationHandle>([&] { db->getTransportationName(handle); }),
                  "\"RtiFedDatabase\", line 1867: ");
        EXPECT_EQ(reasonOf<RTI::InvalidOrderingHandle>([&] { db->getOrderingName(handle); }),
                  "\"RtiFedDatabase\", line 1932: ");
    }
}
