// What an editor asks of a document. In the texts of the cases, ^ is the cursor.

#include "tests/Support.hh"
#include "tool/language/Completion.hh"
#include "tool/language/Document.hh"
#include "tool/language/DocumentSymbols.hh"
#include "tool/language/Hints.hh"
#include "tool/language/Hover.hh"
#include "tool/language/NameUses.hh"
#include "tool/language/Ranges.hh"
#include "tool/language/Rename.hh"
#include "tool/language/SemanticTokens.hh"
#include "tool/language/TypeHierarchy.hh"

namespace {

/// A small model with much of what matters to an editor.
constexpr const char *kHarbour = R"((FED
  (Federation Harbour)
  (FEDversion v1.3)
  (spaces
    (space Area ; where something floats
      (dimension Easting)))
  (objects
    (class ObjectRoot
      (attribute privilegeToDelete reliable timestamp)
      (class RTIprivate)

      ; What floats.
      ; ------------
      ;
      ; See Craft.Position and Tug.Position.
      (class Craft
        (attribute Position best_effort receive Area) ; easting, <northing>
        (class Tug
          (attribute "Bollard Pull" reliable timestamp)))))
  (interactions
    (class InteractionRoot reliable timestamp
      (class Call reliable receive area
        (parameter Channel)
      )
    )
  )
)
)";

/// A document and a place in it.
struct Question {
    explicit Question(std::string text)
        : offset(static_cast<std::uint32_t>(std::min(text.find('^'), text.size()))),
          document("a.fed", text.erase(offset, offset < text.size() ? 1 : 0), Settings()) {}

    std::string_view at(RtiFedSpan span) const { return document.text().substr(span.begin, span.length); }

    std::uint32_t offset;
    Document document;
};

/// A question about the small model, whose cursor is in this place of it.
Question inHarbour(const std::string &place) {
    return Question(replaced(kHarbour, replaced(place, "^", ""), place));
}

std::string hover(const Question &asked, Markup markup = Markup::markdown) {
    const auto shown = hoverAt(asked.document, asked.offset, markup);
    if (!shown)
        return "nothing";
    std::string text = shown->text;
    std::replace(text.begin(), text.end(), '\n', '/');
    return std::string(asked.at(shown->span)) + " => " + text;
}

} // namespace

TEST(Language, OutlinesEachText) {
    const auto outline = [](const std::string &text) {
        const Question asked(text);
        std::string lines;
        std::vector<std::size_t> depths;
        for (const DocumentSymbol &symbol : documentSymbols(asked.document)) {
            depths.push_back(symbol.parent == DocumentSymbol::kNone ? 0 : depths.at(symbol.parent) + 1);
            lines += std::string(2 * depths.back(), ' ') + formOf(symbol.kind).noun + " " + symbol.name +
                     (symbol.detail.empty() ? "" : ": " + symbol.detail) + "\n";
        }
        return lines;
    };
    EXPECT_EQ(outline(kHarbour), R"(federation Harbour
section spaces
  routing space Area
    dimension Easting
section objects
  object class ObjectRoot
    attribute privilegeToDelete: reliable timestamp
    object class RTIprivate
    object class Craft
      attribute Position: best_effort receive Area
      object class Tug
        attribute Bollard Pull: reliable timestamp
section interactions
  interaction class InteractionRoot: reliable timestamp
    interaction class Call: reliable receive area
      parameter Channel
)");
    EXPECT_EQ(
        outline("(FED (objects (klass X) (attribute)) (Class (class (class \"\x1B"),
        "section objects\n  attribute attribute\nobject class class\n  object class class\n    object class \\x1b\n");
}

TEST(Language, LimitsTheDepthOfItsAnswers) {
    std::string text = "(objects";
    for (int i = 0; i < 20000; ++i)
        text += "(class C";
    const Question asked(text + '^');
    std::vector<std::size_t> depths;
    for (const DocumentSymbol &symbol : documentSymbols(asked.document))
        depths.push_back(symbol.parent == DocumentSymbol::kNone ? 1 : depths.at(symbol.parent) + 1);
    EXPECT_EQ(depths.size(), 20001u);
    EXPECT_EQ(*std::max_element(depths.begin(), depths.end()), DocumentSymbol::kMaxDepth);
    EXPECT_LT(selectionAt(asked.document, asked.offset).size(), 1000u);
    EXPECT_TRUE(hoverAt(asked.document, 10, Markup::none));
}

TEST(Language, FoldsClausesAndComments) {
    const auto folded = [](const std::string &text) {
        const Question asked(text);
        std::string lines;
        for (const FoldingRange &range : foldingRanges(asked.document)) {
            const std::uint32_t last = range.span.begin + range.span.length - 1;
            lines += std::to_string(asked.document.parser().positionAt(range.span.begin).line) + "-" +
                     std::to_string(asked.document.parser().positionAt(last).line) + (range.isComment ? "; " : " ");
        }
        return lines;
    };
    EXPECT_EQ(folded(kHarbour), "1-26 4-6 5-6 7-19 8-19 12-15; 16-19 18-19 20-25 21-24 22-23 ");
    EXPECT_EQ(folded("(a\n(b\n\n)\n\n"), "1-4 ");
    EXPECT_EQ(folded("(a ; c\n ; c\n\n ; c\n ; c\n(b))"), "1-6 4-5; ");
}

TEST(Language, ExpandsASelection) {
    const auto selected = [](const std::string &text) {
        const Question asked(text);
        std::string spans;
        for (const RtiFedSpan &span : selectionAt(asked.document, asked.offset))
            spans += "[" + std::string(asked.at(span)) + "]";
        return spans;
    };
    EXPECT_EQ(
        selected("(a (b \"c^ d\" e (f)))"),
        "[c d][\"c d\"][b \"c d\" e][b \"c d\" e (f)][(b \"c d\" e (f))][a (b \"c d\" e (f))][(a (b \"c d\" e (f)))]");
    EXPECT_EQ(selected("; a b.^c d\n; e\n(x)"), "[b.c][; a b.c d][; a b.c d\n; e][; a b.c d\n; e\n(x)]");
    EXPECT_EQ(selected("(x) ;\ta^\t;"), "[a][;\ta\t;][(x) ;\ta\t;]");
    EXPECT_EQ(selected("(a ^)"), "[a][a ][(a )]");
    EXPECT_EQ(selected("^"), "");
}

TEST(Language, GivesEachTokenItsType) {
    const auto tokens = [](const std::string &text) {
        const Question asked(text);
        std::string all;
        for (const SemanticToken &token : semanticTokens(asked.document)) {
            all += std::string(asked.at(token.span)) + ":" + kTokenTypeNames.at(static_cast<std::size_t>(token.type));
            for (std::size_t i = 0; i < kTokenModifierNames.size(); ++i)
                all += (token.modifiers >> i & 1U) != 0 ? std::string("+") + kTokenModifierNames.at(i)[0] : "";
            all += " ";
        }
        return all;
    };
    EXPECT_EQ(
        tokens("(fed (Federation F) (FEDversion v) (spaces (space S (dimension \"D d\"))) ; c\n"
               "(objects (class ObjectRoot (class Manager (class Own)) (attribute PrivilegeToDelete reliable late S)"),
        "fed:keyword Federation:keyword F:type+d FEDversion:keyword v:string spaces:keyword space:keyword "
        "S:namespace+d dimension:keyword \"D d\":variable+d ; c:comment objects:keyword class:keyword "
        "ObjectRoot:class+d+r+d class:keyword Manager:class+d+r+d class:keyword Own:class+d attribute:keyword "
        "PrivilegeToDelete:property+d+r+d reliable:enumMember S:namespace ");
    EXPECT_EQ(tokens("(Federate f F) (attribute x reliable) (sec_level l)"),
              "Federate:keyword f:type+d F:string attribute:keyword x:property+d reliable:enumMember sec_level:keyword "
              "l:string ");
    EXPECT_EQ(tokens("(klass X) (interactions (class C rti_reliable Receive S x (parameter P) y"),
              "interactions:keyword class:keyword C:class+d rti_reliable:enumMember Receive:enumMember S:namespace "
              "parameter:keyword P:parameter+d ");
}

TEST(Language, DescribesWhatIsAtACursor) {
    struct Case {
        const char *place, *text;
    };
    for (const Case &c : {
             Case{
                 "(class Cr^aft",
                 "Craft => **object class** `ObjectRoot.Craft`//1 attribute: `Position`//1 attribute inherited:  /from "
                 "`ObjectRoot`: `privilegeToDelete`//1 subclass: `Tug`//Handle 3, "
                 "provisional: the file does not load//---//What floats.//See Craft.Position and Tug.Position."},
             Case{"Tug.Position^", "Position => **attribute** `ObjectRoot.Craft.Position`//`best_effort`, `receive`, "
                                   "in the routing space "
                                   "`Area`//`ObjectRoot.Craft.Tug` inherits it from `ObjectRoot.Craft`.//Inherited by "
                                   "1 class: `Tug`//Handle 2, provisional: the file does not load//---//easting, "
                                   "\\<northing\\>"},
             Case{"receive ^area",
                  "area => **routing space** `Area`//1 dimension: `Easting`//Handle 1, provisional: the "
                  "file does not load//---//where something floats"},
             Case{"(parameter Channel^", "Channel => **parameter** `InteractionRoot.Call.Channel`//Handle 1, "
                                         "provisional: the file does not load"},
             Case{"(class RTI^private",
                  "RTIprivate => **object class** `ObjectRoot.RTIprivate`//1 attribute inherited: "
                  " /from `ObjectRoot`: `privilegeToDelete`//Handle 2, provisional: the file does "
                  "not load//Reserved for the RTI; federates do not use it."},
             Case{"best_effort re^ceive", "receive => `receive`: delivered in the order of arrival."},
             Case{"(dim^ension",
                  "dimension => `dimension`: A coordinate of the routing space; a region has a range of it."},
             Case{"v1^.3", "v1.3 => The version of the FED format, usually v1.3."},
             Case{"floats.^", "nothing"},
             Case{"; See Craft.Posit^ion",
                  "Position => **attribute** `ObjectRoot.Craft.Position`//`best_effort`, `receive`, in the routing "
                  "space `Area`//Inherited by 1 class: `Tug`//Handle 2, provisional: the file does not "
                  "load//---//easting, \\<northing\\>"},
         })
        EXPECT_EQ(hover(inHarbour(c.place)), c.text) << c.place;
    EXPECT_EQ(hover(Question("(FED ())(objects()class)^x)))")),
              "x => **object class** `x`//Handle 1, provisional: the file does not load");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (objects (class A (attribute ^x reliable))) ; A..x")),
              "x => **attribute** `A.x`//`reliable`//Handle 1, provisional: the file does not load//---//A..x");
    EXPECT_EQ(hover(Question("(objects (class A (attribute x reliable))) ; A..^x")), "nothing");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (objects (class S) (class A (attribute x reliable "
                             "receive ^S))))")),
              "nothing");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (spaces (space S) (space ^T (dimension x))))")),
              "T => **routing space** `T`//1 dimension: `x`//Handle 2, provisional: the file does not load");
    EXPECT_EQ(
        hover(Question("(FED (Federation F) (FEDversion 1) (objects (class A (attribute ^x reliable)) (class A)))")),
        "x => **attribute** `A.x`//`reliable`//Handle 1, provisional: the file does not load");
    EXPECT_EQ(
        hover(Question(
            replaced(withMom("(class A (attribute x reliable receive ^HLAMomDefaultSpace))"), "(FED", "(FED ; All."))),
        "HLAMomDefaultSpace => **routing space** `HLAMomDefaultSpace`//Handle 1, provisional: the file does not load");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1)\n(objects\n; # 1_a 1_ A_B z_y_{ Z9_ q_r\n; # x\n; 10. "
                             "x\n; 7. y\n; ) z\n; 2x)\n; +\n(class ^\"`A\")")),
              "\"`A\" => **object class** `` `A ``//Handle 1, provisional: the file does not load//---//\\# 1_a 1\\_ "
              "A_B z_y\\_{ Z9\\_ q_r  /\\# x  /10\\. x  /7\\. y  /) z  /2x)");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (objects (class \"^\"))")),
              "\"\" => **object class** `  `//Handle 1, provisional: the file does not load");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (objects (class \"A`^\"))")),
              "\"A`\" => **object class** `` A` ``//Handle 1, provisional: the file does not load");
    EXPECT_EQ(hover(Question("(FED (Federation F) (FEDversion 1) (objects (class \" A^\"))")),
              "\" A\" => **object class** `  A `//Handle 1, provisional: the file does not load");
    EXPECT_EQ(
        hover(Question(withMom("\n; a_b _c_ 1. `x` [y](z)\n(class \"A`` \\\x01^\")"))),
        "\"A`` \\\x01\" => **object class** ```ObjectRoot.A`` \\\\x01```//1 attribute inherited:  /from `ObjectRoot`: "
        "`privilegeToDelete`//Handle 3//---//a_b \\_c\\_ 1. \\`x\\` \\[y\\](z)");
}

TEST(Language, DescribesWithoutMarkupWhereNoneIsShown) {
    const auto plain = [](const Question &asked) { return hover(asked, Markup::none); };
    EXPECT_EQ(plain(inHarbour("(class Cr^aft")),
              "Craft => object class ObjectRoot.Craft//1 attribute: Position//1 attribute inherited:/from ObjectRoot: "
              "privilegeToDelete//1 subclass: Tug//Handle 3, provisional: the file does not load//What floats.//See "
              "Craft.Position and Tug.Position.");
    EXPECT_EQ(plain(inHarbour("best_effort re^ceive")), "receive => receive: delivered in the order of arrival.");
    EXPECT_EQ(plain(Question(withMom("\n; a_b _c_\n; `x` [y](z)\n(class \"A`` \\\x01^\")"))),
              "\"A`` \\\x01\" => object class ObjectRoot.A`` \\\\x01//1 attribute inherited:/from ObjectRoot: "
              "privilegeToDelete//Handle 3//a_b _c_/`x` [y](z)");
    const Question asked("(FED (spaces (space Area_1)) ; _the_ sea\n(objects (class A (attribute a reliable receive ^");
    for (const Markup markup : {Markup::none, Markup::markdown})
        EXPECT_EQ(completionsAt(asked.document, asked.offset, markup).items.at(0).documentation,
                  markup == Markup::none ? "_the_ sea" : "\\_the\\_ sea");
}

TEST(Language, FindsWhatNamesTheSame) {
    const auto foundIn = [](const Question &asked) {
        const auto text = [&asked](RtiFedSpan span) {
            return std::to_string(asked.document.parser().positionAt(span.begin).line) + ":" +
                   std::string(asked.at(span)) + " ";
        };
        std::string all;
        for (const RtiFedSpan &span : definitionsAt(asked.document, asked.offset))
            all += text(span);
        all += "| ";
        for (const Reference &reference : referencesAt(asked.document, asked.offset))
            all += text(reference.span);
        return all;
    };
    const auto found = [&](const std::string &place) { return foundIn(inHarbour(place)); };
    EXPECT_EQ(found("receive ^Area)"), "5:Area | 5:Area 17:Area 22:area ");
    EXPECT_EQ(found("Tug.^Position"), "17:Position | 15:Position 15:Position 17:Position ");
    EXPECT_EQ(found("^Tug.Position"), "18:Tug | 15:Tug 18:Tug ");
    EXPECT_EQ(found("(dimension East^ing"), "6:Easting | 6:Easting ");
    EXPECT_EQ(found("(class^ Call"), "| ");
    EXPECT_EQ(foundIn(Question("; A.x\n; B.x A.C.x C.x\n(FED (Federation F) (FEDversion 1) (objects (class A "
                               "(attribute ^x reliable receive) (class C\n(attribute x "
                               "reliable receive))) (class B (attribute x reliable receive)))")),
              "3:x | 1:x 2:x 2:x 3:x ");
    const std::string two =
        "(FED (Federation F) (FEDversion 1) (objects (class A (class B\n(attribute x reliable receive)))"
        " (class C (class B\n(attribute x reliable receive)))))";
    EXPECT_EQ(foundIn(Question("; B.^x\n" + two)), "3:x 4:x | 1:x 3:x 4:x ");
    EXPECT_EQ(foundIn(Question("; A.^x\n" + two)), "| ");
    EXPECT_EQ(foundIn(Question("(FED (Federation F) (FEDversion 1) (spaces (space S)\n(space ^S)) (objects (class A "
                               "(attribute x reliable receive S))))")),
              "2:S | 2:S ");
    const std::string ofMom = RtiFedDatabase::_momDefaultSpace;
    EXPECT_EQ(foundIn(Question(withMom("(class A (attribute x reliable receive ^\"" + ofMom + "\"))"))),
              "| 19:\"HLAMomDefaultSpace\" ");
}

TEST(Language, CompletesByThePlace) {
    struct Case {
        const char *text, *items;
    };
    const auto completed = [](const std::string &text) {
        const Question asked(text);
        const Completions offered = completionsAt(asked.document, asked.offset, Markup::markdown);
        std::string all = "[" + std::string(asked.at(offered.replaced)) + "]";
        for (const Completion &item : offered.items)
            all += " " + item.text;
        return all;
    };
    for (const Case &c : {
             Case{"^", "[] (FED"},
             Case{"(^", "[] FED"},
             Case{"(FED (Federation X) (fe^ (objects", "[fe] FEDversion Federate spaces objects interactions"},
             Case{"(FED (FEDversion ^", "[] v1.3"},
             Case{"(spaces (space \"A b\") (space B)) (objects (class (attribute x^y", "[xy]"},
             Case{"(spaces (space \"A b\") (space B)) (objects (class (attribute X rel^iable",
                  "[reliable] reliable best_effort"},
             Case{"(spaces (space \"A b\") (space B)) (objects (class (attribute X reliable^)",
                  "[reliable] reliable best_effort"},
             Case{"(spaces (space \"A b\") (space B)) (objects (class (attribute X reliable ^ (class",
                  "[] timestamp receive"},
             Case{"(fed (spaces (space \"A b\") (space B)) (objects (class C (attribute X reliable receive ^",
                  "[] \"A b\" B (sec_level"},
             Case{"(objects (class C\n at^\n (class D))", "[at] (attribute (class (sec_level"},
             Case{"(objects (class C (sec_level 1) (^)", "[] attribute class"},
             Case{"(interactions (class C reliable\n ^(parameter P)", "[] timestamp receive"},
             Case{"(interactions (class C reliable receive (p^ (parameter P)", "[p] parameter class sec_level"},
             Case{"(objects (class ^", "[] ObjectRoot"},
             Case{"(objects (class ObjectRoot (class rtiPrivate) (class ^)))", "[] Manager"},
             Case{
                 "(objects (class ObjectRoot (class Manager (class Federation (attribute FEDid) (attribute RTIversion) "
                 "(attribute Federa^)",
                 "[Federa] FederationName FederatesInFederation LastSaveName LastSaveTime NextSaveName NextSaveTime"},
             Case{"; (^", "[]"},
             Case{"(class \"a ^", "[\"a ]"},
             Case{"(FED) ^", "[]"},
             Case{"(FED (Federation a) (FEDversion b) (Federate c d) (spaces) (objects) (interactions) ^",
                  "[] (Federate"},
             Case{"(spaces (space A (dimension b) ^", "[] (dimension"},
             Case{"(spaces (space A) ^", "[] (space"},
             Case{"(objects (class C (attribute a) (class b) (sec_level c) ^", "[] (attribute (class"},
             Case{"(interactions (class I reliable receive (parameter p) (class b) ^",
                  "[] (parameter (class (sec_level"},
             Case{"(objects (class ObjectRoot (^ x)", "[] attribute class sec_level"},
             Case{"(objects (class ObjectRoot (class Manager) (^)", "[] attribute class sec_level"},
             Case{"(objects (class ObjectRoot (class Manager (class Federation (attribute FederationName) (attribute "
                  "FederatesInFederation) (attribute RTIversion) (attribute FEDid) (attribute LastSaveName) (attribute "
                  "LastSaveTime) (attribute NextSaveName) (^)",
                  "[] attribute class sec_level attribute NextSaveTime reliable receive"},
         })
        EXPECT_EQ(completed(c.text), c.items) << c.text;
    const auto snippets = [](const std::string &text) {
        const Question asked(text);
        std::string all;
        for (const Completion &item : completionsAt(asked.document, asked.offset, Markup::markdown).items)
            all += item.snippet + ' ';
        std::replace(all.begin(), all.end(), '\n', '/');
        return all;
    };
    const std::string member = "${1:Name} ${2|reliable,best_effort|} ${3|timestamp,receive|}";
    for (const auto &[text, expected] :
         {std::pair<std::string, std::string>{"(objects (class C (^)",
                                              "attribute " + member + " class ${1:Name}/  $0/ sec_level ${1:Level} "},
          {"(objects (class C (a^\n (class D))",
           "attribute " + member + ") class ${1:Name}/  $0/) sec_level ${1:Level}) "},
          {"(FED ^", "(Federation ${1:Name}) (FEDversion ${1:v1.3}) (Federate ${1:Name} ${2:Level}) (spaces/  $0/) "
                     "(objects/  $0/) (interactions/  $0/) "},
          {"(spaces ^", "(space ${1:Name}/  $0/) "},
          {"(spaces (space S ^", "(dimension ${1:Name}) "},
          {"(interactions (class C reliable receive ^",
           "(parameter ${1:Name}) (class " + member + "/  $0/) (sec_level ${1:Level}) "}})
        EXPECT_EQ(snippets(text), expected) << text;
}

TEST(Language, RenamesOrSaysWhyNot) {
    struct Case {
        const char *place, *name, *result;
    };
    const auto renamed = [](const Question &asked, const std::string &name) {
        const Renaming renaming = rename(asked.document, asked.offset, name);
        std::string all = renaming.refusal;
        for (const RenameEdit &edit : renaming.edits)
            all += std::to_string(asked.document.parser().positionAt(edit.replacement.span.begin).line) + ":" +
                   std::string(asked.at(edit.replacement.span)) + "=>" + edit.replacement.text +
                   (edit.isInComment ? "; " : " ");
        return all;
    };
    for (const Case &c : {
             Case{"receive ^area", "Sea", "5:Area=>Sea 17:Area=>Sea 22:area=>Sea "},
             Case{"receive ^area", "Deep sea", "5:Area=>\"Deep sea\" 17:Area=>\"Deep sea\" 22:area=>\"Deep sea\" "},
             Case{"(class Cr^aft", "CRAFT", "15:Craft=>CRAFT; 16:Craft=>CRAFT "},
             Case{"(class Tug^", "craft", "15:Tug=>craft; 18:Tug=>craft "},
             Case{"\"Boll^ard Pull\"", "Pull", "19:\"Bollard Pull\"=>Pull "},
             Case{"Tug.Po^sition", "Place", "15:Position=>Place; 15:Position=>Place; 17:Position=>Place "},
             Case{"Po^sition best", "bollard pull",
                  "it would collide with the attribute \"ObjectRoot.Craft.Tug.Bollard Pull\" in line 19, whose class "
                  "inherits it"},
             Case{"receive ^area", "AREA", "5:Area=>AREA 17:Area=>AREA 22:area=>AREA "},
             Case{"(class Cr^aft", "A\nB", "a name cannot contain a line end or NUL"},
             Case{"(class Cr^aft",
                  "A\xC2\xA0"
                  "B",
                  "the name contains a no-break space (U+00A0), which nobody can tell from a blank"},
             Case{"\"Boll^ard Pull\"", "privilegetodelete",
                  "it would collide with the attribute \"ObjectRoot.privilegeToDelete\" in line 9, which is inherited"},
             Case{"(class Cr^aft", "rtiprivate",
                  "it would collide with the object class \"ObjectRoot.RTIprivate\" in line 10"},
             Case{"(class Cr^aft", "A.B",
                  "the name of a class cannot contain a dot: dots separate it from its superclasses"},
             Case{"(class Cr^aft", "", "a name must not be empty"},
             Case{"(class Cr^aft", "A\"B", "a name cannot contain a quote; quotes around it are added where needed"},
             Case{"(class Cr^aft", "//x", "a name that begins with \"//\" looks like a comment"},
             Case{"(class RTI^private", "X", "the RTI finds the object class \"ObjectRoot.RTIprivate\" by its name"},
             Case{"Harb^our", "X", "there is no name of a class, attribute, parameter, space or dimension here"},
         })
        EXPECT_EQ(renamed(inHarbour(c.place), c.name), c.result) << c.place;
    EXPECT_EQ(renamed(inHarbour("(class Tug^"), std::string(16370, 'x')),
              "the name is too long, a full name may have 16384 bytes");
    const std::string head = "(FED (Federation F) (FEDversion 1) (spaces (space A) (space B)) (objects ";
    const std::string spaces =
        "(FED (Federation F) (FEDversion 1) (spaces (space ^A (dimension x) (dimension y)) (space B)) (objects))";
    EXPECT_EQ(renamed(Question(head + "(class ^X) (class Q (class AnotherLongName))))"), "AnotherLongName"),
              "1:X=>AnotherLongName ");
    EXPECT_EQ(renamed(Question(spaces), "b"), "it would collide with the routing space \"B\" in line 1");
    EXPECT_EQ(renamed(Question(withMom("", "", "(space ^S)")), RtiFedDatabase::_momDefaultSpace),
              "it would collide with the routing space \"HLAMomDefaultSpace\"");
    EXPECT_EQ(renamed(Question(withMom("(class A (attribute x reliable receive ^\"" +
                                       std::string(RtiFedDatabase::_momDefaultSpace) + "\"))")),
                      "x"),
              "the routing space \"HLAMomDefaultSpace\" is not declared in this file, but added by the RTI");
    EXPECT_EQ(renamed(Question(replaced(replaced(spaces, "^", ""), "x)", "^x)")), "Y"),
              "it would collide with the dimension \"A.y\" in line 1");
    EXPECT_EQ(renamed(Question(head + "(class X (attribute ^P reliable receive) (class Y (attribute Q reliable "
                                      "receive)) (class Z (attribute Q reliable receive)))))"),
                      "Q"),
              "it would collide with the attribute \"X.Z.Q\" in line 1, whose class inherits it");
    EXPECT_EQ(
        renamed(Question(head + "(class X)) (interactions (class ^Y reliable receive (class X reliable receive))))"),
                "X"),
        "1:Y=>X ");
    EXPECT_EQ(renamed(Question(head + "(class X (class ^Y)) (class ObjectRoot (class Z))))"), "Z"), "1:Y=>Z ");
    EXPECT_EQ(renamed(Question(head + "(class ^X) (class ObjectRoot (class Z))))"), "z"),
              "it would collide with the object class \"ObjectRoot.Z\" in line 1");
    EXPECT_EQ(
        renamed(Question(head + "(class X (attribute ^P reliable receive) (attribute P reliable receive))))"), "z"),
        "the attribute \"X.P\" is declared again in line 1; fix that first");
    EXPECT_EQ(
        renamed(Question(replaced(head, "(space A)", "(space ^A)") + "(class X (attribute P reliable receive S))))"),
                "s"),
        "line 1 uses a space \"s\", which would mean this space then");
}

TEST(Language, ShowsTheHierarchyAndItsNumbers) {
    const Question asked = inHarbour("\"Bol^lard");
    const auto item = hierarchyItemAt(asked.document, asked.offset);
    ASSERT_TRUE(item);
    EXPECT_EQ(item->fullName + " in " + item->detail, "ObjectRoot.Craft.Tug in ObjectRoot.Craft");
    const auto above = superclassOf(asked.document, item->kind, "objectroot.craft.tug");
    ASSERT_TRUE(above);
    EXPECT_EQ(asked.at(above->span).substr(0, 12), "(class Craft");
    std::string below;
    for (const HierarchyItem &subclass : subclassesOf(asked.document, item->kind, "ObjectRoot"))
        below += subclass.name + " ";
    EXPECT_EQ(below, "RTIprivate Craft ");
    EXPECT_FALSE(superclassOf(asked.document, ClauseKind::interactionClass, "ObjectRoot.Craft"));
    EXPECT_FALSE(superclassOf(asked.document, ClauseKind::objectClass, "ObjectRoot"));
    EXPECT_TRUE(subclassesOf(asked.document, ClauseKind::objectClass, "Nowhere").empty());
    const Question outside("(FED ())(objects()class)^x)))");
    const auto bare = hierarchyItemAt(outside.document, outside.offset);
    ASSERT_TRUE(bare);
    EXPECT_EQ(outside.at(bare->span), "x");
    for (char name = 'a'; name <= 'z'; ++name)
        EXPECT_TRUE(subclassesOf(outside.document, bare->kind, std::string(1, name)).empty());
    EXPECT_EQ(renameAt(outside.document, outside.offset).refusal,
              "it is not known which class is in which while parentheses are missing or superfluous");
    const Question again("(FED (Federation F) (FEDversion 1) (objects (class A (attribute x reliable receive) "
                         "(attribute x reliable receive)) (class A)))");
    EXPECT_EQ(inlayHints(again.document, {0, 200}).size(), 2U) << "none at a duplicate";
    EXPECT_TRUE(codeLenses(again.document).empty());

    std::string hints, lenses;
    for (const InlayHint &hint : inlayHints(asked.document, above->span))
        hints += hint.label + " ";
    EXPECT_EQ(hints, "#3? +1 inherited #2? #4? +2 inherited #3? ");
    const auto tug = static_cast<std::uint32_t>(asked.document.text().find("Tug\n"));
    for (const auto &[span, count] : {std::pair(RtiFedSpan{tug - 5, 5}, 0U), {{tug, 1}, 2U}, {{tug + 3, 1}, 2U}})
        EXPECT_EQ(inlayHints(asked.document, span).size(), count) << span.begin - tug;
    const Question rooted("(FED (objects (class A (class B))))");
    EXPECT_TRUE(superclassOf(rooted.document, ClauseKind::objectClass, "A.B"));
    for (const CodeLens &lens : codeLenses(asked.document))
        lenses += std::string(asked.at(lens.nameSpan)) + ": " + lens.text + "; ";
    EXPECT_EQ(lenses, "ObjectRoot: 3 subclasses; RTIprivate: 1 inherited attribute; Craft: 1 subclass, 1 inherited "
                      "attribute; Tug: 2 inherited attributes; InteractionRoot: 1 subclass; ");
}

TEST(Language, AnswersWhereTheTextDoesNotParse) {
    const std::string broken =
        replaced(kHarbour, "(class RTIprivate)", "(class RTIprivate"); // by the layout, Tug is in Craft
    replaced(kHarbour, "receive Area) ;", "receive Area ;");           // by the layout, Tug is in Craft
    const auto hoverIn = [&](const std::string &place) {
        return hover(Question(replaced(broken, replaced(place, "^", ""), place))).substr(0, 60);
    };
    EXPECT_EQ(hoverIn("(class T^ug"), "Tug => **object class** `ObjectRoot.Craft.Tug`//1 attribute:");
    EXPECT_EQ(hoverIn("receive ar^ea"), "area => **routing space** `Area`//1 dimension: `Easting`//Ha");
    const Question renamed(replaced(broken, "(class Tug", "(class T^ug"));
    EXPECT_EQ(rename(renamed.document, renamed.offset, "X").refusal,
              "it is not known which class is in which while parentheses are missing or superfluous");
    const Question repeated(
        "(FED (Federation F) (FEDversion 1) (objects (class A (attribute B reliable receive) (class C "
        "(attribute ^b reliable receive)))))");
    EXPECT_EQ(hover(repeated),
              "b => **attribute** `A.B`//A duplicate, which the library refuses: it is declared first in "
              "line 1.//`reliable`, `receive`//Inherited by 1 class: `C`//Handle 1, provisional: the file does "
              "not load");
    const Question rootless("(FED (Federation F) (FEDversion 1) (objects (class ObjectRoot (class Cra^ft)) (class "
                            "Craft (class Tug) (class TugOfHarbour))))");
    EXPECT_NE(hover(rootless).find("2 subclasses: `Craft.Tug`, `Craft.TugOfHarbour`"), std::string::npos)
        << hover(rootless);
    EXPECT_EQ(std::string(repeated.at(definitionsAt(repeated.document, repeated.offset).at(0))), "B");
    EXPECT_EQ(renameAt(repeated.document, repeated.offset).refusal,
              "the attribute \"A.B\" is declared again in line 1; fix that first");
}

TEST(Language, SaysWhatMayMeanSeveralThings) {
    const auto numMeanings = [](std::size_t numClasses) {
        std::string text = "(FED (Federation F) (FEDversion 1) ; A.^x\n(objects (class R (attribute x reliable "
                           "receive) (class C (class A)) (class D (class A)))";
        for (std::size_t i = 0; i < numClasses; ++i)
            text += "(class B" + std::to_string(i) + " (class A (attribute x reliable receive)))";
        const Question asked(text + "))");
        return definitionsAt(asked.document, asked.offset).size();
    };
    EXPECT_EQ(numMeanings(0), 1U) << "inherited by two classes of this name";
    EXPECT_EQ(numMeanings(12), 8U);
    EXPECT_EQ(numMeanings(120), 0U);
    const Question asked("(FED (Federation F) (FEDversion 1) ; A.B^\n(objects (class X (class A (class B))) (class A "
                         "(attribute B reliable receive)) (class Y (class A (class B) (class C))))) ; Y.A.B A.C\n");
    EXPECT_EQ(definitionsAt(asked.document, asked.offset).size(), 3u);
    EXPECT_EQ(hover(asked).find("---//**attribute** `A.B`"), 156U) << hover(asked);
    EXPECT_EQ(renameAt(asked.document, asked.offset).refusal,
              "the name can mean several things here; rename it at its declaration");
    const auto last = static_cast<std::uint32_t>(asked.document.text().rfind("(class B)"));
    const Renaming renaming = rename(asked.document, last + 8, "D"); // A.B may be another one, so it stays
    ASSERT_EQ(renaming.edits.size(), 2u) << renaming.refusal;
    EXPECT_TRUE(renaming.edits[1].isInComment);
}
