#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"
#include "infrastructure/parser/RtiFedRuns.hh"
#include "tests/Support.hh"

#include <unistd.h>

#include <algorithm>
#include <random>
#include <thread>
#include <utility>
#include <vector>

using namespace std::string_literals;

namespace {

/// The errors of a text as `LINE:COLUMN: TEXT` lines.
std::string errorsOf(const std::string &text) {
    const RtiFedParser parser(text);
    std::string errors;
    for (std::size_t i = 0; i < parser.numErrors(); ++i) {
        const RtiFedParser::Error error = parser.error(i);
        errors += std::to_string(error.position.line) + ":" + std::to_string(error.position.column) + ": " +
                  error.text + "\n";
    }
    return errors;
}

std::string callsOf(std::FILE *file) {
    RtiFedParserCodegen printer;
    testing::internal::CaptureStdout();
    std::string failure;
    try {
        RtiFedParser_Class_main(file, &printer);
    } catch (const std::string &reason) {
        failure = reason;
    }
    return testing::internal::GetCapturedStdout() + failure;
}

std::string callsOf(const std::string &text) {
    return callsOf(std::fopen(TemporaryFile(text).path().c_str(), "r"));
}

const std::string kHead = "(FED (Federation F) (FEDversion v1.3)\n";

const std::string kAllClauses =
    kHead + "(Federate \"a b\" c) ; x\n(spaces (space S (dimension X)))\n(objects (class A (sec_level s) (attribute a "
            "reliable receive S (sec_level t)) (class B)))\n(interactions (class I reliable receive S (parameter p))))";

/// The errors of a text with these sections, which begin in line 2.
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

TEST(Parser, DeliversNothingOfATextWithErrors) {
    EXPECT_EQ(callsOf(kHead + "(objects (class A (attribute a reliable))))"),
              "line 2, column 40: expected an ordering, found \")\"");
    EXPECT_EQ(callsOf(std::fopen("/", "r")), "the file cannot be read: Is a directory");
}

TEST(Parser, LetsTheExceptionsOfCallbacksThrough) {
    struct Refusing : RtiFedParserCodegen {
        void setFederate(std::string) override { throw 7; }
    } refusing;
    const TemporaryFile file(example("minimal.fed"));
    EXPECT_THROW(RtiFedParser_Class_main(std::fopen(file.path().c_str(), "r"), &refusing), int);
}

TEST(Parser, GivesThePositionOfEachArgument) {
    struct Placing : RtiFedParserCodegen {
        explicit Placing(const RtiFedParser &of) : parser(of) {}
        void addObjectClassAttribute(std::string, std::string, std::string, std::string) override {
            for (std::size_t argument = 0; argument < 4; ++argument)
                columns.push_back(parser.position(argument).column);
        }
        const RtiFedParser &parser;
        std::vector<std::size_t> columns;
    };
    RtiFedParser parser(kHead + "(objects (class A (attribute \"a b\" reliable receive Area) (attribute c reliable "
                                "receive))))");
    Placing placing(parser);
    testing::internal::CaptureStdout();
    parser.deliver(placing);
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(placing.columns, (std::vector<std::size_t>{30, 36, 45, 53, 70, 72, 81, 1})); // no space: the "(FED"
    EXPECT_EQ(RtiFedParser(kHead + "(objects (class A (attribute)) (class)))").numLostNames(), 2u);
}

TEST(Parser, SaysWhatItExpectedAndFound) {
    forEachCase("errors.txt", [](std::string text) {
        const std::string errors = errorsOf(text);
        std::replace(text.begin(), text.end(), '\n', '\r'); // a CR ends a line too
        EXPECT_EQ(errorsOf(text), errors);
        return errors;
    });
}

TEST(Parser, ShowsWhatItFoundSafelyForATerminal) {
    EXPECT_EQ(errorsOf(""), "1:1: expected \"(FED\", found the end of the file\n");
    EXPECT_EQ(errorsOf(kHead + "\t(objects\0))"s), "2:10: expected FED text, found a NUL byte\n");
    for (const std::string &text : {"(\0F\0E\0D\0"s, "\0(\0F\0E\0D"s})
        EXPECT_EQ(errorsOf(text), "1:1: expected \"(FED\", found UTF-16 text; save the file as UTF-8\n");
    EXPECT_EQ(errorsOf(kHead + ")\n\x1A"), "3:1: expected FED text, found an end-of-file mark of DOS (U+001A)\n");
    EXPECT_EQ(errorsOf("(\x1B[1m\x7F\xC2\x85\xE9 \xC3\xA9"),
              "1:2: expected \"(FED\", found \"\\x1b[1m\\x7f\\xc2\\x85\\xe9\"\n");
    EXPECT_EQ(RtiFedParser::printable(std::string(59, 'x') + "\xC3\xA9"), std::string(59, 'x') + "...");
    EXPECT_EQ(RtiFedParser::printable("\xF0\x9F\x9A\xA2\xE2\x82\xAC\xED\xA0\x80\xEF\xBB\xBF"),
              "\xF0\x9F\x9A\xA2\xE2\x82\xAC\\xed\\xa0\\x80\\xef\\xbb\\xbf");
    // The first and last character of each length, and the neighbours of the ranges that are not shown.
    for (const char *shown : {" ", "~", "\xC2\xA0", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                              "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "\xE2\x80\xA9", "\xE2\x80\xAF",
                              "\xE2\x81\xA5", "\xE2\x81\xAA", "\xEF\xBB\xBE"})
        EXPECT_EQ(RtiFedParser::printable(shown), shown);
    for (const char *escaped : {"\x1F", "\x7F", "\x80", "\xC1\xBF", "\xC2\x9F", "\xC3", "\xC3(", "\xE0\x9F\xBF",
                                "\xED\xBF\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80", "\xF5\x80\x80\x80",
                                "\xE2\x80\xAA", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9", "\xE2\x82"})
        EXPECT_EQ(RtiFedParser::printable(escaped).substr(0, 2), "\\x") << RtiFedParser::printable(escaped);
}

TEST(Parser, KnowsEachLetterOfAKeyword) {
    for (std::size_t open = 0; open != std::string::npos; open = kAllClauses.find('(', open + 1))
        for (std::size_t at = open + 1; kAllClauses[at] > ' '; ++at) {
            std::string text = kAllClauses;
            text[at] = text[at] == 'x' ? 'y' : 'x';
            EXPECT_NE(errorsOf(text), "") << text.substr(open, at - open + 1);
        }
}

TEST(Parser, GivesOneErrorForATextCutAnywhere) {
    const std::string &text = kAllClauses;
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

TEST(Parser, EndsATextAtItsFirstNulByte) {
    const std::string text = kHead + "(objects (class \"A b\" (attribute a reliable receive) ; x\n))(other (x y)))";
    for (const char *rest : {"", ")", "(x"}) // the parentheses then balance, are one ")" too many, one too few
        for (std::uint32_t length = 0; length <= text.size(); ++length) {
            const std::string cut = text.substr(0, length) + "\0"s + text.substr(length) + rest;
            const RtiFedParser parser(cut);
            const RtiFedParser::Error last = parser.error(parser.numErrors() - 1);
            EXPECT_TRUE(last.text.find("found a NUL byte") != std::string::npos || length == 2 || length == 3)
                << errorsOf(cut);
            EXPECT_EQ(parser.positionAt(length).line, last.position.line);
            EXPECT_LE(parser.numErrors(), 3u) << errorsOf(cut);
        }
}

TEST(Parser, CountsLinesOfAnyKindInAnyOrderOfOffsets) {
    std::mt19937 random(7); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts in each run
    for (const std::string &bytes : {"ab\n"s, "a\r\n"s, "\n"s, "abcdefghij"s}) {
        std::string text(random() % 2 == 0 ? "" : "\xEF\xBB\xBF");
        const auto mark = static_cast<std::uint32_t>(text.size());
        while (text.size() < 13000)
            text += bytes[random() % bytes.size()];
        const RtiFedParser parser(text);
        std::vector<RtiFedPosition> expected;
        RtiFedPosition here{1, 1};
        for (std::uint32_t at = 0; at <= text.size(); ++at) {
            expected.push_back(here);
            if (at >= mark)
                ++here.column;
            if (text[at] == '\n' || (text[at] == '\r' && text[at + 1] != '\n'))
                here = {here.line + 1, 1};
        }
        for (int i = 0; i < 2000; ++i) {
            const auto at = mark + static_cast<std::uint32_t>(random() % (expected.size() - mark));
            const RtiFedPosition found = parser.positionAt(at);
            ASSERT_EQ(std::pair(found.line, found.column), std::pair(expected[at].line, expected[at].column)) << at;
        }
    }
}

TEST(Parser, ReadsLongFilesAndPipes) {
    std::string text = kHead + "(objects";
    while (text.size() < 200000)
        text += "(class C)";
    text += "))";
    const std::string calls = callsOf(text);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), '\n'),
              static_cast<std::ptrdiff_t>(2 + 2 * (text.size() - kHead.size() - 10) / 9));
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::thread writer([&text, end = ends[1]] {
        EXPECT_EQ(write(end, text.data(), text.size()), static_cast<ssize_t>(text.size()));
        close(end);
    });
    EXPECT_EQ(callsOf(fdopen(ends[0], "r")), calls);
    writer.join();
}

TEST(Parser, IsBoundedOnHostileText) {
    const auto countOf = [](const std::string &text) { return RtiFedParser(text).numErrors(); };
    EXPECT_EQ(countOf(std::string(100000, '(')), 1u);
    EXPECT_EQ(countOf(std::string(5000000, 'x')), 1u);
    EXPECT_EQ(countOf("(FED)" + std::string(300, '(') + std::string(300, ')') + ")"), 1u);
    std::string wrong, strayQuotes, classes;
    for (std::size_t i = 0; i <= kMaxErrors; ++i) {
        wrong += "(x)";
        strayQuotes += "x\n\"\n";
    }
    const RtiFedParser bounded(kHead + wrong + ")");
    ASSERT_EQ(bounded.numErrors(), kMaxErrors + 1);
    EXPECT_EQ(bounded.error(kMaxErrors).text,
              "expected at most 100000 errors, found more; the rest of the text was not read");
    EXPECT_EQ(countOf(kHead + strayQuotes + ")"), kMaxErrors + 1);
    for (int i = 0; i < 100000; ++i)
        classes += "(class c ";
    EXPECT_EQ(countOf(kHead + "(objects " + classes + std::string(100002, ')')), 1u);
    EXPECT_EQ(countOf(kHead + "(objects " + classes), 2u); // too deep, and left open
    EXPECT_EQ(countOf(kHead + "(objects " + classes + std::string(100001, ')') + "(oops))"), 2u);
    std::string siblings;
    for (std::size_t i = 0; i < kMaxFullNames / 16000; ++i)
        siblings += "(class a)";
    EXPECT_EQ(countOf(kHead + "(objects (class " + std::string(15990, 'n') + siblings + ")))"), 0u);
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(16000, 'n') + siblings + "))").substr(0, 80),
              "2:53745: expected full class names of at most 67108864 bytes together, found mor");
}

TEST(Parser, LimitsTheLengthOfANameAndOfAFullName) {
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(kMaxNameLength, 'n') + "))"), "");
    EXPECT_EQ(sectionErrors("(objects (class ab (class " + std::string(kMaxNameLength - 3, 'n') + ")))"), "");
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(kMaxNameLength + 1, 'n') + " (class a)))"),
              "2:17: expected a name of at most 16384 bytes, found one of 16385\n");
    EXPECT_EQ(sectionErrors("(objects (class " + std::string(kMaxNameLength, 'n') + " (class a)))"),
              "2:16409: expected a full class name of at most 16384 bytes, found one of 16386\n");
}

TEST(Parser, CountsLinesAndColumns) {
    // LF, CR LF and CR each end a line once; a tab is one column; a leading byte order mark is none.
    EXPECT_EQ(errorsOf("\xEF\xBB\xBF(fad"), "1:2: expected \"(FED\", found \"fad\"\n");
    EXPECT_EQ(errorsOf("\r\n\r\n\n\r\r\t\xC3\xA9 ("), "6:2: expected \"(FED\", found \"\xC3\xA9\"\n");
    EXPECT_EQ(errorsOf(std::string(10000, '\n') + std::string(9000, ' ') + "x"),
              "10001:9001: expected \"(FED\", found \"x\"\n");
}

TEST(FedParser, SaysFirstHowMuchItDelivers) {
    struct Counter : RtiFedParserCodegen {
        void expectDeclarations(const RtiFedDeclarationCounts &counts) override {
            for (const auto &classes : {counts.objects, counts.interactions})
                calls += std::to_string(classes.number) + " " + std::to_string(classes.numLetters) + " " +
                         std::to_string(classes.numMembers) + ", ";
        }
        void setFederate(std::string name) override { calls += name; }
        void setFederateVersion(std::string) override {}
        void declareObjectClass(std::string_view, std::size_t) override {}
        void declareObjectClassAttribute(std::string_view, std::string_view, std::string_view,
                                         std::string_view) override {}
        void declareInteractionClass(std::string_view, std::string_view, std::string_view, std::string_view,
                                     std::size_t) override {}
        std::string calls;
    } counter;
    RtiFedParser("(FED (Federation F) (FEDversion v) (objects (class A (class Bc (attribute d reliable receive)"
                 "(attribute e reliable receive)) (class D))) (interactions (class I reliable receive)))")
        .deliver(counter);
    EXPECT_EQ(counter.calls, "3 8 2, 1 1 0, F"); // A, A.Bc, A.D
}

TEST(FedRuns, EndWhereAPlainSearchEnds) {
    constexpr std::string_view kBlanks = " \t\n\v\f\r";
    const std::string kEnds = std::string(kBlanks) + "()\";\0"s;
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        std::string bytes;
        const std::size_t size = random() % 300;
        while (bytes.size() < size) { // runs that cross the ends of blocks
            const bool any = random() % 4 == 0;
            const char byte = any ? static_cast<char>(random()) : kEnds[random() % kEnds.size()];
            bytes.append(random() % (random() % 3 ? 12 : 150), random() % 2 ? 'x' : byte);
        }
        const RtiFedText text(bytes);
        RtiFedRuns runs(text);
        for (std::size_t at = 0; at < bytes.size(); at += random() % 9) {
            const std::size_t from = random() % 8 ? at : random() % bytes.size();
            const auto offset = static_cast<RtiFedOffset>(from);
            EXPECT_EQ(runs.endOfWord(offset), std::min(bytes.find_first_of(kEnds, from), bytes.size()));
            EXPECT_EQ(runs.endOfBlanks(offset), std::min(bytes.find_first_not_of(kBlanks, from), bytes.size()));
        }
    }
}
