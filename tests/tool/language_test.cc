// What an editor asks of a document. In the texts of the cases, ^ is the cursor.

#include "tests/Support.hh"
#include "tool/language/Document.hh"
#include "tool/language/DocumentSymbols.hh"
#include "tool/language/Ranges.hh"
#include "tool/language/SemanticTokens.hh"

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
    EXPECT_EQ(tokens("(klass X) (interactions (class C rti_reliable Receive S x (parameter P) y"),
              "interactions:keyword class:keyword C:class+d rti_reliable:enumMember Receive:enumMember S:namespace "
              "parameter:keyword P:parameter+d ");
}
