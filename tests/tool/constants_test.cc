// Names and handles as constants. tests/data/constants.txt has cases; constants_test.py compiles what the program
// writes.

#include "fuzz/Modules.hh"
#include "tests/Support.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Text.hh"
#include "tool/console/Utf8.hh"
#include "tool/constants/Characters.hh"
#include "tool/model/Model.hh"

#include <random>
#include <regex>
#include <set>

namespace {

std::string constantsOf(const std::string &text, const ConstantLanguage &language, bool handles = false) {
    const TemporaryFile file(text);
    std::ostringstream out, err;
    const Status status = constants({file.path(), &language, "", "-", handles}, Console{out, err});
    return (status == cannotWork ? err : out).str();
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
    for (const char32_t code : {U'\0', U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\uFFFF', U'\U00010000', U'\U0010FFFF'})
        EXPECT_EQ(charactersOf(utf8Of(code)), '+' + hexadecimal(code, 6));
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
    EXPECT_NE(written.find("\nclass handles:\n    \"\"\"The handles, in the same scopes as the names."),
              std::string::npos);
    EXPECT_NE(constantsOf(text, kJavaConstants, true)
                  .find("\";\n\n    /**\n     * Whether the handles are those of the model"),
              std::string::npos);
    EXPECT_EQ(constantsOf(text, kPythonConstants).find("fingerprint"), std::string::npos);
    const TemporaryFile refused(replaced(text, "(class RTIprivate)", "(attribute x reliable nothing)")), output("old");
    std::ostringstream out, err;
    EXPECT_EQ(constants({refused.path(), &kCppConstants, "", output.path(), true}, Console{out, err}), wrong);
    EXPECT_EQ(readFile(output.path()), "old");
    EXPECT_EQ(constants({refused.path(), &kCppConstants, "a.b", output.path()}, Console{out, err}), wrong);
    EXPECT_NE(readFile(output.path()).find("namespace a {\nnamespace b {\n"), std::string::npos);
    EXPECT_THROW(constants({refused.path(), &kJavaConstants, "a.B", output.path()}, Console{out, err}), CannotWork);
    EXPECT_THROW(constants({refused.path(), &kJavaConstants, "", output.path()}, Console{out, err}), CannotWork);
}

TEST(Constants, AreInLegalScopes) {
    struct Case {
        const ConstantLanguage *language;
        const char *scope;
        bool isLegal;
    };
    for (const auto &[language, scope, isLegal] : {Case{&kCppConstants, "sim.federation", true},
                                                   {&kCppConstants, "digits", true},
                                                   {&kCppConstants, "a.time", true},
                                                   {&kCppConstants, "a.class", false},
                                                   {&kCppConstants, "a__b", false},
                                                   {&kCppConstants, "std.a", false},
                                                   {&kJavaConstants, "org.federation.Harbour", true},
                                                   {&kJavaConstants, "org.spaces.my__pkg.record.Names", true},
                                                   {&kJavaConstants, "org.3d.Names", false},
                                                   {&kJavaConstants, "org.class.Names", false},
                                                   {&kJavaConstants, "org.record", false},
                                                   {&kJavaConstants, "org..spaces", false}}) {
        std::string fault;
        EXPECT_EQ(areScopes(split(scope, '.'), *language, fault), isLegal) << scope;
        EXPECT_EQ(fault.empty(), isLegal || scope == std::string("org..spaces"));
    }
    for (const auto &[federation, scope] : std::vector<std::pair<const char *, const char *>>{
             {"std", "Std"}, {"class", "Class"}, {"3d", "X_3d"}, {"a B", "a_B"}, {"FILE", "FILE_2"}, {"", "X_"}})
        EXPECT_EQ(scopeFor(federation, kCppConstants), scope);
    EXPECT_EQ(scopeFor("time", kJavaConstants), "time");
    std::ostringstream written;
    kJavaConstants.write({{"org", "harbour", "Names"}, "The title", {}}, written);
    EXPECT_NE(written.str().find("\n\npackage org.harbour;\n\n/** The title */\npublic final class Names {"),
              std::string::npos);
    // Scopes that are not in each other may have the same identifier.
    EXPECT_EQ(
        constantsOf(
            "(FED (Federation F) (FEDversion v) (spaces (space S)) (objects (class A (class B) (class C (class B) "
            "(class spaces)))))",
            kJavaConstants)
            .find("_2"),
        std::string::npos);
}

TEST(Constants, EscapeCharactersInJava) {
    EXPECT_NE(
        constantsOf("(FED (Federation F) (FEDversion v) (objects (class \"\x1F\u0080\U00010000\")))", kJavaConstants)
            .find("\"\\037\\u0080\\ud800\\udc00\""),
        std::string::npos);
}

TEST(Constants, HaveOneIncludeGuardForEachScope) {
    std::set<std::string> guards;
    const std::vector<std::vector<std::string>> paths = {{"a", "b"}, {"a_b"}, {"A", "b"}, {"a_", "b"}, {"a", "b_"}};
    for (const std::vector<std::string> &path : paths) {
        std::ostringstream written;
        kCppConstants.write({path, "", {}}, written);
        std::smatch guard;
        const std::string text = written.str();
        ASSERT_TRUE(std::regex_search(text, guard, std::regex("#define (.*)")));
        guards.insert(guard[1]);
    }
    EXPECT_EQ(guards.size(), paths.size());
}

TEST(Constants, FitInTheClassFilesOfJava) {
    const auto isWritten = [](std::size_t numConstants, std::size_t numScopes, std::size_t nameLength = 1) {
        ConstantScope outer{"A", "A", ""}, inner{std::string(nameLength, 'a'), "a", ""};
        inner.constants.assign(numConstants, {"a", 1UL, ""});
        outer.scopes = {inner};
        ConstantScope all;
        all.scopes.assign(numScopes - 1, ConstantScope{"B", "B", ""});
        all.scopes.back() = outer;
        std::ostringstream written;
        try {
            kJavaConstants.write({{"F"}, "", all}, written);
            return true;
        } catch (const CannotWork &) {
            return false;
        }
    };
    EXPECT_TRUE(isWritten(20000, 2) && isWritten(1, 20000) && isWritten(1, 2, 245));
    EXPECT_FALSE(isWritten(20001, 2) || isWritten(1, 20001) || isWritten(1, 2, 246));
    const std::string model =
        "(FED (Federation F) (FEDversion v) (objects (class A (attribute aa reliable receive) (attribute b "
        "reliable receive) (class B (attribute c reliable receive)))))";
    const ConstantsSize size = sizeOfConstants(readOutline({"a.fed", model}));
    EXPECT_EQ(size.constants, 7U); // two classes, with three members and two that are inherited
    EXPECT_EQ(size.bytes, 3 * (40 + 4) + 2 * 3 + 1 + 4 * (40 + 8) + 2 * 4 + 3U);
}

TEST(Constants, OfModelsThatAreTooLargeAreRefused) {
    const auto nested = [](int depth, int members, const std::string &names = "a") {
        std::string text = "(FED (Federation F) (FEDversion v) (objects (class ObjectRoot", ends = ")))";
        for (int i = 1; i < depth; ++i, ends += ')') {
            text += " (class C" + std::to_string(i);
            for (int member = 0; member < members; ++member)
                text +=
                    " (attribute " + names + std::to_string(i) + '_' + std::to_string(member) + " reliable receive)";
        }
        return text + ends;
    };
    const auto refusal = [](const std::string &text, const ConstantLanguage &language) -> std::string {
        const TemporaryFile file(text), output("old");
        std::ostringstream out, err;
        try {
            constants({file.path(), &language, "", language.packages == nullptr ? output.path() : "-"}, {out, err});
        } catch (const CannotWork &refused) {
            EXPECT_EQ(readFile(output.path()) + out.str(), "old");
            return std::regex_replace(refused.what(), std::regex(file.path()), "a.fed");
        }
        return "";
    };
    EXPECT_EQ(refusal(nested(99, 0), kPythonConstants), "");
    EXPECT_EQ(refusal(nested(100, 0), kPythonConstants),
              "the classes are too deep for Python: 100 would be in each other, and 99 may be");
    EXPECT_EQ(refusal(nested(40, 0), kJavaConstants), "");
    EXPECT_EQ(
        refusal(nested(120, 0), kJavaConstants),
        "the classes are too deep for Java: the name of a class file would have 505 characters, and may have 255");
    EXPECT_EQ(refusal(nested(120, 1), kCppConstants), "");
    EXPECT_EQ(refusal(nested(120, 80), kCppConstants),
              "a.fed: the classes would have 571320 constants, since each has those of its superclasses too; at most "
              "500000 are written");
    EXPECT_EQ(refusal(nested(250, 12, std::string(55, 'n')), kCppConstants),
              "a.fed: the constants of the classes would take some 309 MB, since each has those of its superclasses "
              "too; at most 100 MB are written");
    EXPECT_EQ(refusal(nested(2, 19990), kJavaConstants), "");
    EXPECT_EQ(refusal(nested(2, 20001), kJavaConstants),
              "a class would have 20002 constants, and in Java may have 20000");
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
