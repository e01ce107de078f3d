// The lossless tree, and edits on it.

#include "fuzz/Syntax.hh"
#include "tests/Support.hh"

using Index = SyntaxTree::Index;

TEST(SyntaxTree, HasEveryByteOfAnyText) {
    using namespace std::string_literals;
    for (const std::string &text :
         {""s, "\xEF\xBB\xBF"s, "\xEF\xBB\xBF(FED\r)\r\n\n\r;"s, "\0(;\0)\0"s, ")))((("s, "(FED \"open\n(x \"y\" \"z)"s,
          "(\xFF\xC3\x28\xEF\xBB\xBF\t\v\f\"\"\"a\")"s, std::string(100000, '('), example("tolerances.fed")})
        EXPECT_EQ(faultOfTree(text), "") << text.substr(0, 40);
    const RtiFedParser parser("(a (x))");
    EXPECT_EQ(SyntaxTree(parser).clauseAt(5), 1U);
    EXPECT_EQ(SyntaxTree(parser).clauseAt(6), 0U); // after the ")" of "x"
}

TEST(SyntaxEdits, KeepLayoutAndComments) {
    struct Case {
        const char *before, *after;
    };
    const auto remove = [](SyntaxEdits &edits, Index clause) { edits.removeClause(clause); };
    const auto add = [](SyntaxEdits &edits, Index clause) { edits.insertAfter(clause, "(b\n  (c)\n)"); };
    const auto addAttributes = [](SyntaxEdits &edits, Index clause) {
        edits.insertAfter(clause, "(attribute \"c  d\"  r)\n(attribute e   r)");
    };
    const auto addInto = [](SyntaxEdits &edits, Index clause) { edits.insertInto(clause, "(c)"); };
    const auto addFirst = [](SyntaxEdits &edits, Index clause) { edits.insertFirst(clause, "(b)"); };
    const auto move = [](SyntaxEdits &edits, Index clause) { edits.moveContents(clause + 2, clause); };
    const auto removeLine = [](SyntaxEdits &edits, Index) { edits.removeLine(6); };
    const auto changeTokens = [](SyntaxEdits &edits, Index) {
        edits.replace({3, 3}, "(w)");
        edits.replaceToken(1, "bb");
        for (const char *inserted : {"y", "z"})
            edits.replace({1, 0}, inserted);
        for (const Index token : {4U, 6U})
            edits.removeToken(token);
    };
    const auto check = [](const Case &c, auto edit) {
        const RtiFedParser parser(c.before);
        const SyntaxTree tree(parser);
        SyntaxEdits edits(tree);
        edit(edits, 1); // the first clause in the outermost one
        EXPECT_EQ(edits.text(), c.after);
    };
    for (const Case &c :
         {Case{"(a\n\t(x 1)\n\t(y))", "(a\n\t(y))"}, Case{"(a\n (x) ; c\n (y))", "(a\n ; c\n\n (y))"},
          Case{"(a\n ; c\n (x)\n ; d\n (y))", "(a\n ; c\n\n ; d\n (y))"},
          Case{"(a\n (x) ; c\n     ; d\n (y))", "(a\n ; c\n     ; d\n\n (y))"},
          Case{"(a\n ; c\n\n (x) (y))", "(a\n ; c\n\n (y))"},
          Case{"(a\r\n ; c\r\n (x) (y))", "(a\r\n ; c\r\n\r\n (y))"}, Case{"(a\n (x ; c\n ) (y))", "(a\n ; c\n\n (y))"},
          Case{"(a\n ; c\n (x)\n\n (y))", "(a\n ; c\n\n (y))"}, Case{"(a ; c\r\n (x)\r\n)", "(a ; c\r\n)"},
          Case{"(a (y) (x))", "(a (x))"}, Case{"(a\n (x ; c\n  (z ;d\n)))", "(a\n ; c\n ;d\n )"},
          Case{"(a\n (x))", "(a)"}, Case{"(a ; c\n (x))", "(a ; c\n )"}, Case{"(a\n (x", "(a\n"},
          Case{"(a\n (x ; c\n (", "(a\n ; c"}, Case{"(a (x) ; c\n       ; d\n (y))", "(a ; c\n       ; d\n\n (y))"}})
        check(c, remove);
    for (const Case &c :
         {Case{"(a\n\t(x) ; c\n)", "(a\n\t(x) ; c\n\t(b\n\t\t(c)\n\t)\n)"},
          Case{"(a\r\n   (x))", "(a\r\n   (x)\r\n   (b\r\n      (c)\r\n   ))"},
          Case{"(a\n (x); c\n)", "(a\n (x); c\n (b\n  (c)\n )\n)"}, Case{"(a\n (x", "(a\n (x\n (b\n  (c)\n )"},
          Case{" (a (x)\n )", " (a (x)\n   (b\n     (c)\n   )\n )"},
          Case{"\n (a (x)\n )", "\n (a (x)\n   (b\n     (c)\n   )\n )"}})
        check(c, add);
    for (const Case &c :
         {Case{"(a\n (attribute a r)\n (ATTRIBUTE bb r))",
               "(a\n (attribute a r)\n (attribute \"c  d\"  r)\n (attribute e r)\n (ATTRIBUTE bb r))"},
          Case{"(a\n (Attribute a  r)\n (attribute bb r))",
               "(a\n (Attribute a  r)\n (Attribute \"c  d\"  r)\n (Attribute e   r)\n (attribute bb r))"}})
        check(c, addAttributes);
    for (const Case &c : {Case{"(a\n\t(x)\n)", "(a\n\t(x\n\t\t(c)\n\t)\n)"},
                          Case{"(a\n\t(x ; c\n\t)\n)", "(a\n\t(x ; c\n\t\t(c)\n\t)\n)"},
                          Case{"(a\n\t(x )\n)", "(a\n\t(x\n\t\t(c)\n\t )\n)"},
                          Case{"(a\n (x)\n (x (y)))", "(a\n (x\n  (c))\n (x (y)))"}})
        check(c, addInto);
    for (const Case &c : {Case{"(a\n (x) (y))", "(a\n (x\n  (b)) (y))"},
                          Case{"(a\n (x 1 ; c\n  (y)))", "(a\n (x 1 ; c\n  (b)\n  (y)))"},
                          Case{"(a\n (x ; c\n  (y)))", "(a\n (x ; c\n  (b)\n  (y)))"},
                          Case{"(a\n (x; c\n  (y)))", "(a\n (x; c\n  (b)\n  (y)))"},
                          Case{"(a\n  (x\n    (y)\n  )\n)", "(a\n  (x\n    (b)\n    (y)\n  )\n)"}})
        check(c, addFirst);
    for (const Case &c : {Case{"(a\n (x\n  (y)\n )\n (x\n  (z) ; c\n )\n)", "(a\n (x\n  (y)\n  (z) ; c\n )\n)"},
                          Case{"(a (x (y)) (x (z)))", "(a (x (y)\n  (z)))"},
                          Case{"(a\n (x (y))\n (x; c\n ))", "(a\n (x (y)\n  ; c\n ))"},
                          Case{"(a (x (y)) (x(z)))", "(a (x (y)\n  (z)))"},
                          Case{"(a (x (y)\nw) (x z; c\n))", "(a (x (y)\nw\n  z; c\n))"},
                          Case{"(a\n (x\n  (y)\n )\n (x))", "(a\n (x\n  (y)\n ))"}})
        check(c, move);
    check({"(a\n)\n ; c\n", "(a\n)\n"}, removeLine);
    check({"(a\n)\n ; c", "(a\n)\n"}, removeLine);
    check({"(a (x))", "(yzbb (w)"}, changeTokens);
}

TEST(SyntaxEdits, WriteAsMostOfTheTextIsWritten) {
    const auto shown = [](const TextStyle &style) {
        std::string all = style.indentation + (style.closesOnOwnLine ? ")" : "") + (style.hasColumns ? "|" : "");
        for (const auto &[usual, spelling] : style.keywords)
            all += usual + '=' + spelling;
        return all + style.lineEnd;
    };
    for (const auto &[text, style] : std::initializer_list<std::pair<const char *, const char *>>{
             {"(a\n(b)\n(c\n\t(d)))", "\t|\n"},
             {"(a\n  (b\n  \t(c)))", "\t|\n"},
             {"(a\n  (b)\n  (c\n  \t(d)))", "  |\n"},
             {"\xEF\xBB\xBF(a\n\t(b)", "\t)|\n"},
             {" (a\n \t(b) (c)\n)", "\t)|\n"},
             {"\xEF\xBB\xBF (a\r \t(b (c))\r)", "\t)|\r"},
             {"(fed (CLASS (class (spaces)))\r\n)", "  |FED=fedclass=CLASS\r\n"},
             {"\r\n(a)", "  )|\r\n"},
             {"(attribute a r)(attribute bb  rr)(attribute ccc r)(attribute d r)", "  )\n"},
             {"(attribute a  rr s)(attribute bb r s)", "  )|\n"},
             {"(attribute a  r)(attribute bb r)(attribute ccc r)", "  )|\n"},
             {"(attribute aa r)(x a r)(x bb r)(attribute aaa)(attribute bb  rr)(attribute cc r)", "  )|\n"}}) {
        const RtiFedParser parser(text);
        EXPECT_EQ(shown(styleOf(SyntaxTree(parser))), style) << text;
    }
}
