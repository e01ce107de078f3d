// Facts that documents repeat from the code.

#include "fed/loading/RtiFedParserCodegen.hh"
#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

#include <regex>
#include <set>

namespace {

using Verifier = RtiFedDatabaseMomVerifier;
using Members = std::map<std::string, std::set<std::string>>; ///< By class; all names in upper case.

std::string document(const std::string &name) {
    return readFile(RTIFED_DOCS "/" + name);
}

std::vector<std::string> allMatches(const std::string &text, const std::string &pattern) {
    std::vector<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        found.push_back((*match)[1]);
    return found;
}

/// The rows `| CLASSES | MEMBERS |` of the first table after `heading`.
Members documentedMembers(const std::string &heading) {
    const std::string page = document("fed-format.md");
    const std::size_t begin = page.find("\n| `", page.find(heading));
    Members members;
    for (const std::string &row : allMatches(page.substr(begin, page.find("\n\n", begin) - begin), "(\\| `.*)")) {
        const std::size_t middle = row.find(" | ");
        const std::vector<std::string> names = allMatches(RtiStringUtility::toupper(row.substr(middle)), "`([^`]+)`");
        for (const std::string &name : allMatches(row.substr(0, middle), "`([^`]+)`"))
            members[RtiStringUtility::toupper(name[0] == '.' ? "Manager.Federate" + name : name)].insert(names.begin(),
                                                                                                         names.end());
    }
    return members;
}

Members requiredMembers(const std::vector<Verifier::Requirement> &requirements) {
    Members members;
    for (const Verifier::Requirement &requirement : requirements) {
        std::set<std::string> &ofClass = members[RtiStringUtility::toupper(requirement.className)];
        for (const std::string &member : requirement.members)
            ofClass.insert(RtiStringUtility::toupper(member));
    }
    return members;
}

} // namespace

TEST(Documents, GiveTheLimitsOfTheCode) {
    for (const auto &[name, value] :
         std::vector<std::pair<std::string, std::size_t>>{{"kMaxTextSize", kMaxTextSize},
                                                          {"kMaxNameLength", kMaxNameLength},
                                                          {"kMaxFullNames", kMaxFullNames},
                                                          {"kMaxClassNesting", kMaxClassNesting},
                                                          {"kMaxErrors", kMaxErrors}})
        EXPECT_NE(document("../SECURITY.md").find("\n| `" + name + "` | " + std::to_string(value) + " |"),
                  std::string::npos)
            << name;
    const std::string levels = std::to_string(kMaxClassNesting) + " levels";
    EXPECT_NE(document("fed-format.md").find(levels), std::string::npos);
    EXPECT_NE(document("image-format.md").find(levels), std::string::npos);
    EXPECT_NE(document("fed-format.md").find(std::to_string(kMaxNameLength) + " bytes"), std::string::npos);
}

TEST(Documents, ListTheManagementObjectModelOfTheCode) {
    const auto empty = emptyDatabase();
    EXPECT_EQ(documentedMembers("\nObject classes, below"), requiredMembers(Verifier::missingObjectClasses(*empty)));
    EXPECT_EQ(documentedMembers("\nInteraction classes, below"),
              requiredMembers(Verifier::missingInteractionClasses(*empty)));
}

TEST(Documents, ShowTheImageAndChecksumOfTheirExample) {
    RtiFedDatabase db(RtiFedDatabaseConstructorArg("s.fed", RTI_false));
    db.setFederateName("Coast");
    db.setFederateVersion("v1.3");
    db.addSpaceDimension(db.addSpace("Sea"), "x");
    db.addObjectClassAttribute(db.addObjectClass("ObjectRoot"), "Id", 2, 1, 0);
    db.addObjectClassAttribute(db.addObjectClass("ObjectRoot.Buoy"), "Lit", 1, 1, 1);
    db.addInteractionClass("InteractionRoot", 2, 2, 0)->addParameter(db.createParameterHandle(), "Text");

    const std::string page = document("image-format.md");
    const std::string bytes = bytesOf(db);
    std::string hexadecimal, documented;
    for (const char byte : bytes)
        for (const int shift : {4, 0})
            hexadecimal += "0123456789abcdef"[(static_cast<unsigned char>(byte) >> shift) & 15];
    for (const std::string &field : allMatches(page, "\n *[0-9]+  (([0-9a-f]{8}) ?([0-9a-f]*))  "))
        for (const char digit : field)
            if (digit != ' ')
                documented += digit;
    EXPECT_EQ(documented, hexadecimal);
    EXPECT_NE(page.find("has " + std::to_string(bytes.size()) + " bytes"), std::string::npos);
    std::ostringstream checksum;
    checksum << "Its checksum is `" << std::hex << db.getChecksum() << "`";
    EXPECT_NE(page.find(checksum.str()), std::string::npos);
}
