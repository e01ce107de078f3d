#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "tests/Support.hh"

namespace {

using Verifier = RtiFedDatabaseMomVerifier;

/// The messages of both verifications of the minimal text after a change. Checks that they agree with the lists of
/// missing members.
std::string verified(const std::string &what, const std::string &with) {
    std::string text = replaced(example("minimal.fed"), what, with);
    const auto database = emptyDatabase();
    try {
        const TemporaryFile file(text);
        database->buildFromFed(std::fopen(file.path().c_str(), "r"));
    } catch (const RTI::ErrorReadingFED &) {
    }
    std::string objects = "<", interactions = ">";
    EXPECT_EQ(database->verifyMomObjectClasses(objects), Verifier::missingObjectClasses(*database).empty());
    EXPECT_EQ(database->verifyMomInteractionClasses(interactions),
              Verifier::missingInteractionClasses(*database).empty());
    return objects + interactions;
}

} // namespace

TEST(Mom, SaysWhatIsMissingFirst) {
    EXPECT_EQ(verified("Minimal", "Same"), "<>");
    EXPECT_EQ(verified("(class Manager\n", "(class Boss\n"), "<object class: Manager doesn't exist>");
    EXPECT_EQ(verified("(class Federation\n", "(class F\n"), "<object class: Manager.Federation doesn't exist>");
    EXPECT_EQ(verified("(attribute LBTS ", "(attribute X "), "<object class: MANAGER.FEDERATE object attribute: LBTS>");
    EXPECT_EQ(verified("(attribute FederateState ", "(attribute X "),
              "<object class: MANAGER.FEDERATE object attribute: Federatestate>");
    EXPECT_EQ(verified("(attribute FederateState ", "(attribute FEDERATESTATE "), "<>");
    EXPECT_EQ(verified("(class ReportInteractionsSent", "(class X"),
              "<>interaction class: Manager.Federate.Report.ReportInteractionsSent");
    EXPECT_EQ(verified("(class ReportUpdatesSent", "(class X"),
              "<>interaction class: Manager.Federate.Report.ReportUpdatesSent doesn't exist");
    EXPECT_EQ(verified("(parameter AlertID)", ""),
              "<>interaction class: MANAGER.FEDERATE.REPORT.ALERT interaction parameter: AlertID");
    // An inherited member is sufficient.
    EXPECT_EQ(
        verified("(class Manager\n        (class Federate\n          (attribute FederateHandle       reliable receive)",
                 "(class Manager (attribute FederateHandle reliable receive) (class Federate"),
        "<>");
}

TEST(Mom, TellsTheFirstInTheOrderOfClassNames) {
    // In the table, Adjust comes before Report.Alert; among the members the names are in ascending order.
    EXPECT_EQ(verified("(parameter FederationTime)\n              (parameter Tag)", ""),
              "<>interaction class: MANAGER.FEDERATE.SERVICE.DELETEOBJECTINSTANCE interaction parameter: "
              "FederationTime");
}

TEST(Mom, ListsAllThatIsMissing) {
    const auto database = emptyDatabase();
    const auto objects = Verifier::missingObjectClasses(*database);
    const auto interactions = Verifier::missingInteractionClasses(*database);
    ASSERT_EQ(objects.size(), 3u);
    EXPECT_EQ(objects[1].className, "Manager.Federate");
    EXPECT_TRUE(objects[1].classMissing);
    EXPECT_EQ(objects[1].members.size(), 23u);
    EXPECT_EQ(objects[2].members.size(), 8u);
    EXPECT_EQ(interactions.size(), 66u);
    std::size_t parameters = 0;
    for (const auto &requirement : interactions)
        parameters += requirement.members.size();
    EXPECT_EQ(parameters, 86u);
}
