// Names and handles as constants. tests/data/constants.txt has cases; constants_test.py compiles what the program
// writes.

#include "fuzz/Modules.hh"
#include "tests/Support.hh"
#include "tool/commands/Commands.hh"
#include "tool/constants/Characters.hh"
#include "tool/model/Model.hh"

#include <random>

namespace {

std::string constantsOf(const std::string &text, const ConstantLanguage &language, bool handles = false) {
    const TemporaryFile file(text);
    std::ostringstream out, err;
    const Status status = constants({file.path(), &language, "", "-", handles}, Console{out, err});
    const std::string name = file.path().substr(file.path().rfind('/') + 1);
    return status == cannotWork ? err.str() : replaced(out.str(), name, "test.fed");
}

const Keywords kFewWords = {"class", "x_"};

} // namespace

TEST(Constants, AreWrittenInEachLanguage) {
    forEachCase("constants.txt", [](const std::string &text) {
        std::string all;
        for (const ConstantLanguage *language : {&kCppConstants, &kJavaConstants, &kPythonConstants})
            all += constantsOf("(FED (Federation \"My Model\") (FEDversion v)\n" + text + ")", *language);
        return all;
    });
}

TEST(Constants, HaveLegalAndUniqueIdentifiers) {
    for (const auto &[name, identifier] : std::vector<std::pair<std::string, std::string>>{{"Position", "Position"},
                                                                                           {"a b", "a_b"},
                                                                                           {"a-_.b", "a_b"},
                                                                                           {"3D", "x_3D"},
                                                                                           {"_Foo", "x_Foo"},
                                                                                           {"__init__", "x_init_"},
                                                                                           {"class", "class_"},
                                                                                           {"Class", "Class"},
                                                                                           {"", "x__"},
                                                                                           {"\xC3\xBC"
                                                                                            "ber",
                                                                                            "x_ber"},
                                                                                           {"Gr\xC3\xB6\xC3\x9F"
                                                                                            "e",
                                                                                            "Gr_e"},
                                                                                           {"a\xFF"
                                                                                            "b",
                                                                                            "a_b"},
                                                                                           {"a\n", "a_"}})
        EXPECT_EQ(identifierFor(name, kFewWords), identifier) << name;
    Identifiers identifiers(kFewWords);
    EXPECT_TRUE(identifiers.reserve("a"));
    for (const auto &[name, identifier] : std::vector<std::pair<std::string, std::string>>{
             {"a", "a_2"}, {"A", "A"}, {"a_3", "a_3"}, {"a", "a_4"}, {"class", "class_"}, {"class", "class_2"}})
        EXPECT_EQ(identifiers.add(name), identifier);
}

TEST(Constants, ReadCharactersOfUtf8Only) {
    const auto charactersOf = [](const std::string &text) {
        std::string all;
        forEachCharacter(
            text, [&all](char32_t character, bool isText) { all += (isText ? "+" : "-") + hexadecimal(character, 6); });
        return all;
    };
    EXPECT_EQ(charactersOf("a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\x80"), "+000061+0000e9+0020ac+01f680");
    for (const char *const bad :
         {"\xC3", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8", "\x80"})
        EXPECT_EQ(charactersOf(bad).find('+'), std::string::npos) << charactersOf(bad);
    EXPECT_EQ(charactersOf("\xE2\x82"
                           "A"),
              "-0000e2-000082+000041");
}

TEST(Constants, ComeWithTheFingerprintOfTheModelOfTheHandles) {
    const std::string text = example("harbour.fed");
    const std::string written = constantsOf(text, kPythonConstants, true);
    EXPECT_NE(written.find("\nfingerprint = \"" + fingerprint(*load(text)) + "\"\n"), std::string::npos);
    EXPECT_NE(written.find("\nclass handles:\n"), std::string::npos);
    EXPECT_EQ(constantsOf(text, kPythonConstants).find("fingerprint"), std::string::npos);
    const TemporaryFile refused(replaced(text, "(class RTIprivate)", "(attribute x reliable nothing)")), output("old");
    std::ostringstream out, err;
    EXPECT_EQ(constants({refused.path(), &kCppConstants, "", output.path(), true}, Console{out, err}), wrong);
    EXPECT_EQ(readFile(output.path()), "old");
    EXPECT_EQ(constants({refused.path(), &kCppConstants, "a.b", output.path()}, Console{out, err}), wrong);
    EXPECT_NE(readFile(output.path()).find("namespace a {\nnamespace b {\n"), std::string::npos);
    EXPECT_THROW(constants({refused.path(), &kJavaConstants, "a.B", output.path()}, Console{out, err}), CannotWork);
    EXPECT_THROW(constants({refused.path(), &kCppConstants, "a.class", "-"}, Console{out, err}), CannotWork);
}

TEST(Constants, HaveLegalAndUniqueIdentifiersForAnyNames) {
    std::mt19937 random(2);
    const std::vector<std::string> names = {"a b",    "a_b",     "a  b",      "class", "class_",  "class_2",
                                            "spaces", "handles", "className", "_",     "__",      "\xFF",
                                            "3",      "x_3",     "String",    "None",  "\xC3\xA9"};
    const auto name = [&] { return '"' + names[random() % names.size()] + '"'; };
    for (int i = 0; i < 200; ++i) {
        std::string text = "(FED (Federation " + name() + ") (FEDversion v) (spaces (space " + name() + " (dimension " +
                           name() + ")) (space " + name() + ")) (objects (class ObjectRoot";
        int depth = 2;
        for (int n = 0; n < 40; ++n) {
            const auto choice = random() % 4;
            if (choice == 0 && depth > 2)
                text += ')';
            else
                text += choice == 1 ? " (class " + name() : " (attribute " + name() + " reliable receive)";
            depth += choice == 1 ? 1 : choice == 0 && depth > 2 ? -1 : 0;
        }
        EXPECT_EQ(faultOfConstants(text + std::string(static_cast<std::size_t>(depth) + 1, ')')), "") << text;
    }
}
