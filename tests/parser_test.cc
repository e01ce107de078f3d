#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

namespace {

/// The errors of a text as `LINE:COLUMN: TEXT` lines.
std::string errorsOf(const std::string &text) {
    const RtiFedParser parser(text);
    std::string errors;
    for (std::size_t i = 0; i < parser.numErrors(); ++i) {
        const auto [position, description] = parser.error(i);
        errors += std::to_string(position.line) + ":" + std::to_string(position.column) + ": " + description + "\n";
    }
    return errors;
}

std::string callsOf(const std::string &text) {
    const TemporaryFile file(text);
    RtiFedParserCodegen printer;
    testing::internal::CaptureStdout();
    std::string failure;
    try {
        RtiFedParser_Class_main(std::fopen(file.path().c_str(), "r"), &printer);
    } catch (const std::string &reason) {
        failure = reason;
    }
    return testing::internal::GetCapturedStdout() + failure;
}

const std::string kHead = "(FED (Federation F) (FEDversion v1.3)\n";

/// The errors in a text with these sections, which begin at line 2.
std::string sectionErrors(const std::string &sections) {
    return errorsOf(kHead + sections + ")");
}

} // namespace

TEST(Parser, DeliversInItsOwnOrder) {
    EXPECT_EQ(callsOf("\xEF\xBB\xBF(fed\r"
                      "(INTERACTIONS (Class Root reliable timestamp Area (sec_level secret)\r\n"
                      "  (class Sub best_effort receive) (parameter Parameter)))\n"
                      "; a comment ) with a \" in it\r"
                      "(objects (class Aside) (class Root (sec_level x) (class Sub (attribute b reliable receive))\n"
                      "  (attribute \"an (odd) ;name\" reliable timestamp Area (sec_level y))\n"
                      "  (attribute \xC3\xA9 RELIABLE fast (sec_level y))))\n"
                      "(Federate one two)(spaces (space Area (dimension X) (dimension x)) (space \"\"))\n"
                      "(federation \"a b\")(fedVERSION any)(Federate three\"four\")) ; end"),
              "setFederate(\"a b\");\nsetFederateVersion(\"any\");\n"
              "\naddSpace(\"Area\");\naddDimension(\"X\");\naddDimension(\"x\");\n\naddSpace(\"\");\n"
              "\naddObjectClass(\"Aside\");\n"
              "\naddObjectClass(\"Root\");\n"
              "addObjectClassAttribute(\"an (odd) ;name\", \"reliable\", \"timestamp\", \"Area\");\n"
              "addObjectClassAttribute(\"\xC3\xA9\", \"RELIABLE\", \"fast\", \"\");\n"
              "\naddObjectClass(\"Root.Sub\");\n"
              "addObjectClassAttribute(\"b\", \"reliable\", \"receive\", \"\");\n"
              "\naddInteractionClass(\"Root\", \"reliable\", \"timestamp\", \"Area\");\naddParameter(\"Parameter\");\n"
              "\naddInteractionClass(\"Root.Sub\", \"best_effort\", \"receive\", \"\");\n");
    EXPECT_EQ(callsOf(kHead + ")"), "setFederate(\"F\");\nsetFederateVersion(\"v1.3\");\n");
}

TEST(Parser, DeliversNothingOfAWrongText) {
    EXPECT_EQ(callsOf(kHead + "(objects (class A (attribute a reliable))))"),
              "line 2, column 40: expected an ordering, found \")\"");
    RtiFedParserCodegen printer;
    try {
        RtiFedParser_Class_main(std::fopen("/", "r"), &printer);
        FAIL();
    } catch (const std::string &reason) {
        EXPECT_EQ(reason, "the file cannot be read: Is a directory");
    }
}

TEST(Parser, LetsTheExceptionsOfCallbacksThrough) {
    struct Refusing : RtiFedParserCodegen {
        void setFederate(std::string) override { throw 7; }
    } refusing;
    const TemporaryFile file(example("minimal.fed"));
    EXPECT_THROW(RtiFedParser_Class_main(std::fopen(file.path().c_str(), "r"), &refusing), int);
}

TEST(Parser, SaysWhatItExpectedAndFound) {
    EXPECT_EQ(errorsOf(""), "1:1: expected \"(FED\", found the end of the file\n");
    EXPECT_EQ(errorsOf("\n (feed)"), "2:3: expected \"(FED\", found \"feed\"\n");
    EXPECT_EQ(errorsOf("(\"FED\")"), "1:2: expected \"(FED\", found \"FED\" in quotes\n");
    EXPECT_EQ(errorsOf("(FED\n)"), "2:1: expected a \"Federation\" clause in \"FED\" of 1:1, found \")\"\n"
                                   "2:1: expected a \"FEDversion\" clause in \"FED\" of 1:1, found \")\"\n");
    EXPECT_EQ(
        errorsOf("(FED (Federaton F) (FEDversion v))"),
        "1:7: expected \"Federation\", \"FEDversion\", \"Federate\", \"spaces\", \"objects\" or \"interactions\", "
        "found \"Federaton\"\n");
    EXPECT_EQ(errorsOf(kHead + ") (objects)"),
              "2:3: expected the end of the file, found \"(\": the \")\" of 2:1 closed \"FED\" of 1:1\n");
    EXPECT_EQ(errorsOf(kHead + "(objects)(spaces)\n(objects (oops)))"),
              "3:1: expected one \"objects\" clause, found a second, the first is at 2:1\n");
    EXPECT_EQ(errorsOf(kHead + "\t(objects\0))"s), "2:10: expected FED text, found a NUL byte\n");
    EXPECT_EQ(sectionErrors("(spaces (space))"), "2:15: expected a name, found \")\"\n");
    EXPECT_EQ(sectionErrors("(spaces (space S T (dimension)))"),
              "2:18: expected \"(\" or \")\" in the space \"S\" of 2:9, found \"T\"\n"
              "2:30: expected a name, found \")\"\n");
    EXPECT_EQ(sectionErrors("(objects (class a.b (class)))"),
              "2:17: expected a class name without a dot, found \"a.b\"\n2:27: expected a name, found \")\"\n");
    EXPECT_EQ(sectionErrors("(objects (class A reliable timestamp (atribute x) (attribute y fast)))"),
              "2:19: expected \"(\" or \")\" in the class \"A\" of 2:10, found \"reliable\"\n"
              "2:39: expected \"attribute\", \"class\" or \"sec_level\", found \"atribute\"\n"
              "2:68: expected an ordering, found \")\"\n");
    EXPECT_EQ(sectionErrors("(objects (class A (attribute a reliable receive S T) (sec_level late)))"),
              "2:51: expected \")\" to close the attribute \"a\" of 2:19, found \"T\"\n"
              "2:55: expected \"attribute\" or \"class\", found \"sec_level\"\n");
    EXPECT_EQ(sectionErrors("(interactions (class I (parameter p)) (class J reliable) (parameter q))"),
              "2:24: expected a transportation, found \"(\"\n2:56: expected an ordering, found \")\"\n"
              "2:59: expected \"class\", found \"parameter\"\n");
    EXPECT_EQ(sectionErrors("(objects (class \"A\n (attribute \"b reliable timestamp)))"),
              "2:17: expected a second quote on the line, found the end of the line\n"
              "3:13: expected a second quote on the line, found the end of the line\n");
    EXPECT_EQ(sectionErrors("(objects () (class \x01\x7F))"), "2:11: expected \"class\", found \")\"\n");
    EXPECT_EQ(
        sectionErrors("(" + std::string(59, 'x') + "\xC3\xA9)"),
        "2:2: expected \"Federation\", \"FEDversion\", \"Federate\", \"spaces\", \"objects\" or \"interactions\", "
        "found \"" +
            std::string(59, 'x') + "...\"\n");
}

TEST(Parser, NamesTheClauseThatWasLeftOpen) {
    // A member without its ")" is closed where the next clause begins, and all else is read as meant.
    EXPECT_EQ(sectionErrors("(objects\n  (class A\n    (attribute a reliable timestamp\n    (attribute b reliable "
                            "timestamp)\n    (atribute c)\n  )\n)"),
              "5:5: expected \")\" to close the attribute \"a\" of 4:5, found \"(\"\n"
              "6:6: expected \"attribute\" or \"class\", found \"atribute\"\n");
    // The look of the text tells which class it was.
    EXPECT_EQ(
        errorsOf(kHead + "(objects\n  (class A\n    (class B\n      (attribute b reliable timestamp)\n    (class C"
                         "\n    )\n  )\n)\n(interactions)\n)"),
        "10:1: expected \")\" to close the section \"objects\" of 2:1, found \"(\"; by its look, the class \"B\" of "
        "4:5 was left open: the \"(\" of 6:5 stands just under it\n");
    EXPECT_EQ(errorsOf(kHead + "(objects\n  (class A\n    (class B\n  )\n)\n"),
              "7:1: expected \")\" to close the section \"objects\" of 2:1, found the end of the file; by its look, "
              "the class \"B\" of 4:5 "
              "was left open: the \")\" of 5:3 closes it, but stands under the class \"A\" of 3:3\n");
    // With enough parentheses it is a clause in the wrong place.
    EXPECT_EQ(sectionErrors("(objects (class A (interactions (class B))))"),
              "2:20: expected \"attribute\", \"class\" or \"sec_level\", found \"interactions\"\n");
    EXPECT_EQ(sectionErrors("(objects (class A (attribute a reliable timestamp (class B))))"),
              "2:51: expected \")\" to close the attribute \"a\" of 2:19, found \"(\"\n");
}

TEST(Parser, GivesOneErrorForATextCutAnywhere) {
    const std::string text = kHead +
                             "(Federate \"a b\" c) ; x\n(spaces (space S (dimension X)))\n(objects (class A (sec_level "
                             "s) (attribute a reliable receive S (sec_level t)) (class B)))\n(interactions (class I "
                             "reliable receive S (parameter p))))";
    ASSERT_EQ(errorsOf(text), "");
    for (std::size_t length = 0; length < text.size(); ++length) {
        const RtiFedParser parser(text.substr(0, length));
        ASSERT_EQ(parser.numErrors(), 1u) << length << ": " << errorsOf(text.substr(0, length));
        const std::string error = parser.error(0).text;
        EXPECT_NE(error.find(length == 2 || length == 3 ? "found \"F" : "found the end of the file"), std::string::npos)
            << length << ": " << error;
        EXPECT_FALSE(parser.nestingKnown());
    }
}

TEST(Parser, IsBoundedOnHostileText) {
    const auto countOf = [](const std::string &text) { return RtiFedParser(text).numErrors(); };
    EXPECT_EQ(countOf(std::string(100000, '(')), 1u);
    EXPECT_EQ(countOf(std::string(5000000, 'x')), 1u);
    std::string classes;
    for (int i = 0; i < 100000; ++i)
        classes += "(class c ";
    EXPECT_EQ(countOf(kHead + "(objects " + classes + std::string(100002, ')')), 1u);
    EXPECT_EQ(countOf(kHead + "(objects " + classes), 2u); // too deep, and left open
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(kMaxNameLength + 1, 'n') + " (class a)))"),
              "2:17: expected a name of at most 16384 bytes, found one of 16385\n");
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(kMaxNameLength, 'n') + " (class a)))"),
              "2:16409: expected a full class name of at most 16384 bytes, found one of 16386\n");
    std::string siblings;
    for (std::size_t i = 0; i < kMaxFullNames / 16000; ++i)
        siblings += "(class a)";
    EXPECT_EQ(countOf(kHead + "(objects (class " + std::string(15990, 'n') + siblings + ")))"), 0u);
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(16000, 'n') + siblings + "))").substr(0, 80),
              "2:53745: expected full class names of at most 67108864 bytes together, found mor");
}

TEST(Parser, CountsLinesAndColumns) {
    // LF, CR LF and CR each end a line once; a tab is one column; a mark in front is none.
    EXPECT_EQ(errorsOf("\xEF\xBB\xBF(fad"), "1:2: expected \"(FED\", found \"fad\"\n");
    EXPECT_EQ(errorsOf("\r\n\r\n\n\r\r\t\xC3\xA9 ("), "6:2: expected \"(FED\", found \"\xC3\xA9\"\n");
    EXPECT_EQ(errorsOf(std::string(10000, '\n') + std::string(9000, ' ') + "x"),
              "10001:9001: expected \"(FED\", found \"x\"\n");
}

TEST(Parser, TellsWhereADeclarationStands) {
    struct Places : RtiFedParserCodegen {
        explicit Places(RtiFedParser &p) : parser(p) {}
        void setFederate(std::string) override { add(0); }
        void setFederateVersion(std::string) override { add(0); }
        void addObjectClass(std::string) override { add(0); }
        void addObjectClassAttribute(std::string, std::string, std::string, std::string) override {
            for (std::size_t i = 0; i < 4; ++i)
                add(i);
        }
        void add(std::size_t argument) {
            const RtiFedPosition position = parser.position(argument);
            text += std::to_string(position.line) + ":" + std::to_string(position.column) + " ";
        }
        RtiFedParser &parser;
        std::string text;
    };
    RtiFedParser parser(kHead + "(objects (class A\n (class B) (attribute a reliable receive))))");
    Places places(parser);
    parser.deliver(places);
    EXPECT_EQ(places.text, "1:18 1:33 2:17 3:23 3:25 3:34 1:1 3:9 ");
    EXPECT_EQ(parser.position().column, 1u);
}
