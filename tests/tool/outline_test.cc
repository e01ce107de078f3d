#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/model/DeliveryWords.hh"

namespace {

/// Fails unless handles, parents, spaces and the rest are those that the library gives for the names.
void expectAsInLibrary(const Outline &outline, const RtiFedDatabase &db) {
    const auto spaceOf = [&db](const Outline::Properties &properties) {
        return properties.space.empty() ? RtiSpaceHandle(0) : db.getRoutingSpaceHandle(properties.space);
    };
    EXPECT_TRUE(outline.loads);
    EXPECT_EQ(outline.spaces.size(), db.getRoutingSpaceHandleSet().size());
    EXPECT_EQ(outline.objects.size(), db.numObjectClasses());
    EXPECT_EQ(outline.interactions.size(), db.numInteractionClasses());
    for (const Outline::Space &space : outline.spaces)
        for (const Outline::Member &dimension : space.dimensions)
            EXPECT_EQ(db.getDimensionHandle(dimension.name, db.getRoutingSpaceHandle(space.name)), dimension.handle);
    std::size_t numAttributes = 0;
    for (const Outline::Class &node : outline.objects) {
        const RtiObjectClassHandle handle = db.getObjectClassHandle(node.name);
        EXPECT_EQ(handle, node.handle);
        EXPECT_EQ(db.find(handle)->getParentClassHandle(),
                  node.parent == Outline::kNone ? 0 : outline.objects.at(node.parent).handle);
        EXPECT_EQ(db.find(handle)->descendants().size(), node.numDescendants);
        numAttributes += node.members.size();
        for (const Outline::Member &attribute : node.members) {
            EXPECT_EQ(db.getAttributeHandle(attribute.name, handle), attribute.handle);
            const RtiFedAttribute &record = *db.find(handle)->find(RtiAttributeHandle(attribute.handle));
            EXPECT_EQ(record.getTransport(), db.getTransportationHandle(attribute.properties.transportation));
            EXPECT_EQ(record.getOrdering(), db.getOrderingHandle(attribute.properties.ordering));
            EXPECT_EQ(record.getSpace(), spaceOf(attribute.properties));
        }
    }
    EXPECT_EQ(numAttributes, db.getAttributeHandleSet().size());
    for (const Outline::Class &node : outline.interactions) {
        const RtiInteractionClassHandle handle = db.getInteractionClassHandle(node.name);
        const RtiFedInteractionClass &record = *db.find(handle);
        EXPECT_EQ(handle, node.handle);
        EXPECT_EQ(record.getDefaultTransport(), db.getTransportationHandle(node.properties.transportation));
        EXPECT_EQ(record.getDefaultOrdering(), db.getOrderingHandle(node.properties.ordering));
        EXPECT_EQ(record.getDefaultSpace(), spaceOf(node.properties));
        EXPECT_EQ(record.getNumberOfParameters(), node.members.size());
        for (const Outline::Member &parameter : node.members)
            EXPECT_EQ(db.getParameterHandle(parameter.name, handle), parameter.handle);
    }
}

} // namespace

TEST(Outline, IsThatOfTheLibrary) {
    for (const char *name : {"minimal.fed", "harbour.fed", "tolerances.fed"}) {
        SCOPED_TRACE(name);
        const std::string text = example(name);
        const auto database = load(text);
        expectAsInLibrary(readOutline({name, text}), *database);
        expectAsInLibrary(readOutline({name, bytesOf(*database)}), *database);
    }
}

TEST(Outline, HasEachClassAfterItsSuperclassWhateverTheirHandles) {
    const auto database = emptyDatabase("");
    database->addObjectClass("A");
    database->addObjectClass("A.B");
    std::string image = bytesOf(*database);
    for (const std::size_t handle : {32U, 40U, 75U}) // of child, descendant and child itself
        image.at(handle) = 1;
    for (const std::size_t handle : {44U, 79U}) // of the parent
        image.at(handle) = 2;
    expectAsInLibrary(readOutline({"a.img", image}), *restored(image));
}

TEST(Outline, HasTheWordsOfTheLibrary) {
    const auto database = emptyDatabase("");
    for (const DeliveryWord &word : kTransportations) {
        EXPECT_EQ(database->getTransportationName(word.handle), word.longForm);
        EXPECT_EQ(database->getTransportationHandle(word.shortForm), word.handle);
    }
    EXPECT_THROW(database->getTransportationName(kTransportations.size() + 1), RTI::InvalidTransportationHandle);
    for (const DeliveryWord &word : kOrderings) {
        EXPECT_EQ(database->getOrderingName(word.handle), word.longForm);
        EXPECT_EQ(database->getOrderingHandle(word.shortForm), word.handle);
    }
    EXPECT_THROW(database->getOrderingName(kOrderings.size() + 1), RTI::InvalidOrderingHandle);
    EXPECT_EQ(RtiStringUtility::toupper(kObjectTree.root) + ".", RtiFedObjectClass::_rootPrefix);
    EXPECT_EQ(RtiStringUtility::toupper(kInteractionTree.root) + ".", RtiFedInteractionClass::_rootPrefix);
}
