#include "tests/Support.hh"
#include "tool/commands/Commands.hh"

namespace {

constexpr const char *kCoast = R"((FED (Federation Coast) (FEDversion v1.3)
 (spaces (space Sea (dimension x) (dimension y)) (space "Höhe über Grund"))
 (objects
  (class Base (attribute Id reliable timestamp)
   (class Ship (attribute Course best_effort receive sea)
    (class Tug (attribute Pull reliable timestamp)))
   (class Buoy (class Tug))))
 (interactions
  (class Call reliable receive
   (parameter Text)
   (class Ship best_effort timestamp Sea (parameter Cause)))))
)";

/// The complaint about a file that the library refuses, with the errors replaced by "ERRORS".
const std::string kRefused = "! rtifed: FILE: the library refuses this file, so that only what can be understood is "
                             "shown: ERRORS; see rtifed check FILE\n";

void setFile(FindOptions &options, const std::string &path) {
    options.files = {path};
}

template <class Options>
void setFile(Options &options, const std::string &path) {
    options.fileName = path;
}

/// Returns the output of a command on a text: its results, "! " and its complaints, if any, and its status.
template <class Options, class Command>
std::string said(const std::string &text, Options options, Command command, std::size_t width = 0, bool unicode = false,
                 bool color = false) {
    const TemporaryFile file(text);
    setFile(options, file.path());
    std::ostringstream out, err;
    const Status status = command(options, Console{out, err, color, unicode, width});
    std::string all = out.str() + (err.str().empty() ? "" : "! " + err.str()) + std::to_string(status);
    for (std::size_t at = 0; (at = all.find(file.path(), at)) != std::string::npos;)
        all.replace(at, file.path().size(), "FILE");
    const std::size_t errors = all.find(" shown: ") + 8;
    if (errors >= 8 && all.find("; see", errors) != std::string::npos)
        all.replace(errors, all.find("; see", errors) - errors, "ERRORS");
    return all;
}

std::string found(const std::string &text, const std::string &name, bool all = false, bool quiet = false) {
    return said(text, FindOptions{{}, name, all, quiet}, find);
}

} // namespace

TEST(Tree, ShowsTheModel) {
    EXPECT_EQ(said(kCoast, TreeOptions(), tree), std::string(R"(Federation Coast, version v1.3

Routing spaces
|-- Sea
|         x
|         y
`-- Höhe über Grund

Object classes
`-- Base
    |     Id            reliable     timestamp
    |-- Ship
    |   |     Course    best_effort  receive    Sea
    |   `-- Tug
    |             Pull  reliable     timestamp
    `-- Buoy
        `-- Tug

Interaction classes
`-- Call      reliable     receive
    |     Text
    `-- Ship  best_effort  timestamp  Sea
              Cause
)") + kRefused + "1");
    EXPECT_EQ(said("(FED (Federation \"\x1b[2J\") (FEDversion v))", TreeOptions(), tree),
              "Federation \\x1b[2J, version v\n" + kRefused + "1");
}

TEST(Tree, AlignsWhatIsInherited) {
    EXPECT_EQ(said(kCoast, TreeOptions{"", "Ship", true}, tree), std::string(R"(Base.Ship
|     Id          reliable     timestamp       from Base
|     Course      best_effort  receive    Sea
`-- Tug
          Id      reliable     timestamp       from Base
          Course  best_effort  receive    Sea  from Ship
          Pull    reliable     timestamp

Call.Ship   best_effort  timestamp  Sea
      Text  from Call
      Cause
)") + kRefused + "1");
}

TEST(Tree, FitsTheTerminal) {
    EXPECT_EQ(said(kCoast, TreeOptions{"", "base", true}, tree, 42, true), std::string(R"(Base
│     Id              reliable     time...
├── Ship
│   │     Id          reliable     time...
│   │     Course      best_effort  rece...
│   └── Tug
│             Id      reliable     time...
│             Course  best_effort  rece...
│             Pull    reliable     time...
└── Buoy
    │     Id          reliable     time...
    └── Tug
              Id      reliable     time...
)") + kRefused + "1");
    EXPECT_EQ(said(kCoast, TreeOptions{"", "Base.Buoy.Tug"}, tree, 2), "..\n" + kRefused + "1");
    EXPECT_EQ(said(kCoast, TreeOptions{"", "SHIP", false, false, 1}, tree, 0, true, true),
              "\033[1mBase.Ship\033[0m  \033[2m(1 class below)\033[0m\n\033[2m      \033[0mCourse  "
              "\033[2mbest_effort\033[0m  \033[2mreceive\033[0m    Sea\n\n\033[1mCall.Ship\033[0m  "
              "\033[2mbest_effort\033[0m  \033[2mtimestamp\033[0m  Sea\n\033[2m      \033[0mCause\n" +
                  kRefused + "1");
}

TEST(Tree, AlignsWhatFitsAndCutsAtADepth) {
    // By the width of the terminal: how wide the column of names can become.
    using Widths = std::pair<std::size_t, std::size_t>;
    for (const auto &[width, furthest] : {Widths(0, 60), Widths(60, 36), Widths(80, 44)})
        for (const std::size_t more : {0U, 1U}) {
            const std::string name(furthest - 8 + more, 'n');
            const std::string model =
                "(FED (objects (class R (attribute " + name + " reliable receive) (attribute x reliable receive))))";
            const std::string shown = said(model, TreeOptions{"", "R"}, tree, width);
            EXPECT_NE(shown.find("\n      " + name + "  reliable     receive"), std::string::npos) << shown;
            EXPECT_NE(shown.find("\n      x" + std::string(more == 0 ? furthest - 7 : 2, ' ') + "reli"),
                      std::string::npos)
                << shown;
        }
    const std::string inherits = "(FED (objects (class R (attribute a reliable receive) (class S "
                                 "(attribute longername reliable receive)))))";
    for (const auto &[width, line] : {std::pair(48U, "      a           reliable     receive    from R\n"),
                                      std::pair(47U, "      a           reliable     receive  from R\n")})
        EXPECT_NE(said(inherits, TreeOptions{"", "S", true}, tree, width).find(line), std::string::npos)
            << said(inherits, TreeOptions{"", "S", true}, tree, width);
    EXPECT_NE(said(kCoast, TreeOptions{"", "", false, true, 2}, tree)
                  .find("`-- Base\n    |-- Ship  (1 class below)\n    `-- Buoy  (1 class below)\n"),
              std::string::npos);
}

TEST(Tree, TakesANameForOneClass) {
    const std::string text = example("minimal.fed");
    for (const auto &[name, expected] :
         {std::pair("manager.federation", "ObjectRoot.Manager.Federation\n0"),
          std::pair("federation", "ObjectRoot.Manager.Federation\n0"),
          std::pair("Federatoin", "! FILE: there is no class \"Federatoin\"; did you mean \"Federation\"?\n1")})
        EXPECT_EQ(said(text, TreeOptions{"", name, false, true}, tree), expected);
    EXPECT_EQ(said(kCoast, TreeOptions{"", "tug"}, tree),
              kRefused +
                  "FILE: there are 2 classes \"tug\", such as \"Base.Ship.Tug\" and \"Base.Buoy.Tug\"; give more of "
                  "the name\n1");
}

TEST(Find, FindsEachKindOfDeclaration) {
    const std::string refused = kRefused + "0";
    EXPECT_EQ(found(kCoast, "SHIP"), "FILE:5:11: object class Base.Ship: 1 attribute, 1 inherited, 1 class below\n"
                                     "FILE:11:11: interaction class Call.Ship: best_effort timestamp, space Sea, 1 "
                                     "parameter, 1 inherited\n" +
                                         refused);
    EXPECT_EQ(found(kCoast, "base"), "FILE:4:10: object class Base: 1 attribute, 4 classes below\n" + refused);
    EXPECT_EQ(found(kCoast, "ship.course"), "FILE:5:27: attribute Base.Ship.Course: best_effort receive, space Sea\n"
                                            "    inherited by 1 class:\n        Base.Ship.Tug\n" +
                                                refused);
    EXPECT_EQ(found(kCoast, "sea"),
              "FILE:2:17: space Sea: 2 dimensions, used by 1 attribute and 1 interaction class\n" + refused);
    EXPECT_EQ(found(kCoast, "Sea.y"), "FILE:2:46: dimension Sea.y\n" + refused);
    EXPECT_EQ(found(kCoast, "Tug.Course"), found(kCoast, "Course")); // which it inherits
    EXPECT_EQ(found("(FED (Federation F) (FEDversion v) (objects (class R (attribute a reliable receive)\n"
                    "(class S (attribute A reliable receive)))))",
                    "r.a"),
              "FILE:1:65: attribute R.a: reliable receive\n"
              "    declared again, which the library refuses, at 2:21\n"
              "    inherited by 1 class:\n        R.S\n" +
                  refused);
    EXPECT_EQ(found(kCoast, "Ship.Curse"),
              "! FILE: nothing is called \"Ship.Curse\"; did you mean \"Ship.Course\"?\n1");
}

TEST(Find, ListsWhatInherits) {
    const std::string classes = "(class R (attribute at reliable receive) (class A (class B)) (class C (class D)) "
                                "(class E) (class F) (class G)) (class H (attribute at reliable receive) "
                                "(class Q) (class Q2) (class Q3) (class Q4) (class Q5) (class Q6))";
    const std::string text = withMom(classes, "", "(space T) (space t)");
    const std::string head = "FILE:19:45: attribute ObjectRoot.R.at, handle 2: reliable receive\n"
                             "    inherited by 7 classes:\n";
    const std::string five = "        ObjectRoot.R.A\n        ObjectRoot.R.A.B\n        ObjectRoot.R.C\n"
                             "        ObjectRoot.R.C.D\n        ObjectRoot.R.E\n";
    EXPECT_EQ(found(text, "r.at"), head + five + "        ... and 2 more (--all)\n0");
    EXPECT_EQ(found(text, "R.E.at", true), head + five + "        ObjectRoot.R.F\n        ObjectRoot.R.G\n0");
    EXPECT_NE(found(text, "H.at").find("        ObjectRoot.H.Q6\n0"), std::string::npos);
    EXPECT_EQ(found(text, "t"),
              "FILE:8:18: space T, handle 1: 0 dimensions, used by 0 attributes and 0 interaction classes\n"
              "FILE:8:28: space t, handle 2: 0 dimensions, found by its handle only, because an earlier space has its "
              "name\n0");
}

TEST(Find, MatchesPatterns) {
    const std::string text =
        "(FED (Federation F) (FEDversion v) (spaces (space Bay (dimension Bee)))"
        "(objects (class Base (attribute \"a.b\" reliable receive) (attribute Böe reliable receive)"
        "(class Bow (class Bowl)))))";
    for (const auto &[pattern, expected] :
         {std::pair("b*", "Bay Bay.Bee Base Base.Böe Base.Bow Base.Bow.Bowl "), std::pair("b?e", "Bay.Bee Base.Böe "),
          std::pair("b*.b*", "Bay.Bee Base.Böe Base.Bow Base.Bow.Bowl "), std::pair("*.b*.*l", "Base.Bow.Bowl "),
          std::pair("*o*w*", "Base.Bow Base.Bow.Bowl "), std::pair("a?b", ""), std::pair("*e.a.?", "Base.a.b "),
          std::pair("Bowl.B*", "Base.Böe "), std::pair("**b**w*?", "Base.Bow.Bowl "), std::pair("", "")}) {
        std::string hits;
        std::istringstream lines(said(text, FindOptions{{}, pattern, false, false, true}, find));
        for (std::string word, before; lines >> word; before = word)
            if (before == "space" || before == "dimension" || before == "attribute" ||
                (before == "class" && word != "below"))
                hits += word.substr(0, word.find(':')) + ' ';
        EXPECT_EQ(hits, expected) << pattern;
    }
}
