// The canonical layout. tests/data/format.txt has the cases.

#include "fuzz/Syntax.hh"
#include "tests/Support.hh"
#include "tests/tool/FormattedText.hh"
#include "tool/format/Columns.hh"

#include <random>
#include <regex>

namespace {

/// With a byte order mark and CR LF.
std::string inOtherLines(const std::string &text) {
    return "\xEF\xBB\xBF" + std::regex_replace(text, std::regex("\n"), "\r\n");
}

/// A text that means the same, with other spaces and further comments.
std::string untidy(const std::string &text, std::mt19937 &random) {
    static const char *const kSpaces[] = {" ", "\n", "\r\n", "\n\n\n  ", "\t", " ;; c\n", "\n; own \n", " ;t\n   ;t\n"};
    const RtiFedParser parser(text);
    const SyntaxTree tree(parser);
    std::string result;
    for (SyntaxTree::Index token = 0; token < tree.numTokens(); ++token) {
        result += tree.bytes(token);
        if (random() % 12 == 0)
            result += tree.kind(token) == SyntaxTree::Kind::comment ? "\n" : kSpaces[random() % std::size(kSpaces)];
    }
    return result;
}

} // namespace

TEST(Format, WritesTheCanonicalLayout) {
    forEachCase("format.txt", [](const std::string &text) {
        EXPECT_EQ(faultOfFormat(text), "");
        EXPECT_EQ(formattedText(inOtherLines(text + '\n')), inOtherLines(formattedText(text)));
        return formattedText(text);
    });
}

TEST(Format, IsTheOneOfItsDocument) {
    const std::string page = readFile(RTIFED_DOCS "/formatting.md");
    std::vector<std::string> samples;
    for (std::size_t begin = page.find("```lisp\n"); begin != std::string::npos;
         begin = page.find("```lisp\n", begin)) {
        begin += 8;
        samples.push_back(page.substr(begin, page.find("```", begin) - begin));
    }
    ASSERT_EQ(samples.size(), 2U);
    EXPECT_EQ(formattedText(samples[0]), samples[1]);
    EXPECT_NE(page.find(std::to_string(kLineLimit) + " characters"), std::string::npos);
}

TEST(Format, KeepsModelAndCommentsOfAnyLayout) {
    std::mt19937 random(7);
    for (const char *const name : {"minimal.fed", "harbour.fed", "tolerances.fed"})
        for (int i = 0; i < 8; ++i) {
            const std::string text = untidy(example(name), random);
            const std::size_t line = random() % 300;
            EXPECT_EQ(faultOfTree(text), "");
            EXPECT_EQ(faultOfFormat(text, {random() % kMaxIndentation + 1, {}}), "");
            EXPECT_EQ(faultOfFormat(text, {2, LineRange{line, line + 9}}), "");
            EXPECT_EQ(formattedText(text, {2, LineRange{1, text.size()}}), formattedText(text));
        }
}

TEST(Format, ChangesOnlyTheClausesThatBeginInTheLines) {
    const std::string text = "(fed (federation F)\n (fedversion v)  ( spaces\n(SPACE  S)) ;; s\n )\n";
    EXPECT_EQ(formattedText(text, {2, LineRange{3, 3}}),
              replaced(text, "\n(SPACE  S)) ;; s", "\n    (space S)  ;; s\n  )"));
    EXPECT_EQ(formattedText(text, {2, LineRange{9, 9}}), text);
    // Comments move with the clauses that they are about.
    const std::string more =
        "(FED (Federation F) (FEDversion v) (objects\n (class A\n   (class B\n (class C))) ; t\n  ; own\n"
        "  ; next\n (class D)) ; x\n            ; y\n (interactions))";
    EXPECT_EQ(formattedText(more, {2, LineRange{2, 2}}),
              replaced(replaced(more, " (class A", "    (class A"), "))) ; t", "))\n    )  ; t"));
    EXPECT_EQ(formattedText(more, {2, LineRange{7, 7}}),
              replaced(more, "  ; own\n  ; next\n (class D)) ; x\n            ; y",
                       "    ; own\n    ; next\n    (class D)  ; x\n               ; y\n  )"));
    EXPECT_EQ(formattedText(more, {2, LineRange{9, 9}}), replaced(more, " (interactions", "  (interactions"));
}
