#include "infrastructure/RtiFedLimits.hh"
#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/model/ClassTrees.hh"
#include "tool/model/MomText.hh"

namespace {

// The parts of a new file. A comment with a single ";" is a clause to uncomment. All these clauses together load, so
// that deleting semicolons gives a first model.

constexpr const char *kAboutWithMom =
    ";; The least that a federation needs: the two root classes and the Management Object Model (MOM).\n";

constexpr const char *kAboutWithoutMom =
    ";; The frame of a federation. It loads with the Management Object Model (MOM), which this command adds:\n"
    ";;     rtifed fix --mom --write FILE\n";

constexpr const char *kBeforeName = R"(;; Write your own spaces and classes in place of the examples in comments.

(FED
  (Federation )";

constexpr const char *kAfterName = R"()
  (FEDversion v1.3)

  (spaces
    ;; Routing spaces narrow down what federates receive, for example:
    ; (space Area
    ;   (dimension east)
    ;   (dimension north)
    ; )
  )

  (objects
    (class ObjectRoot
      (attribute privilegeToDelete reliable timestamp)
      (class RTIprivate)

      ;; Your object classes, for example:
      ; (class Vehicle
      ;   (attribute Name     reliable    receive)
      ;   (attribute Position best_effort timestamp Area)
      ; )
)";

constexpr const char *kAfterObjects = R"(    )
  )

  (interactions
    (class InteractionRoot reliable timestamp
      (class RTIprivate reliable timestamp)

      ;; Your interaction classes, for example:
      ; (class Collision reliable timestamp Area
      ;   (parameter Vehicles)
      ; )
)";

constexpr const char *kAfterInteractions = R"(    )
  )
)
)";

/// Returns the name as a word of a FED text. The parser decides whether it is one.
std::string wordFor(const std::string &name) {
    if (name.empty())
        throw CannotWork("the name of the federation is empty");
    if (name.size() > kMaxNameLength)
        throw CannotWork("the name of the federation has " + std::to_string(name.size()) + " bytes; at most " +
                         std::to_string(kMaxNameLength) + " are possible");
    std::string word = asWord(name);
    const RtiFedPiece piece = RtiFedParser('(' + word + ')').pieceAt(1);
    if (!SyntaxTree::isWord(piece.kind) || piece.span.length != word.size())
        throw CannotWork("a name in a FED file can contain neither quotes nor line ends, found '" +
                         shown(name, kNameLimit) + '\'');
    return word;
}

/// Returns the MOM of a tree, after the user's classes so that these are the first that a reader sees.
std::string momOf(const TreeKind &tree) {
    return "\n;; The Management Object Model, through which the RTI reports and takes requests.\n" +
           momClass(tree, "Manager") + '\n';
}

std::string newText(const NewOptions &options) {
    const std::string text = (options.withMom ? kAboutWithMom : kAboutWithoutMom) +
                             (kBeforeName + wordFor(options.name)) + kAfterName +
                             (options.withMom ? momOf(kObjectTree) : "") + kAfterObjects +
                             (options.withMom ? momOf(kInteractionTree) : "") + kAfterInteractions;
    const RtiFedParser parser(text);
    return formatted(SyntaxTree(parser));
}

} // namespace

Status newFile(const NewOptions &options, const Console &console) {
    const std::string text = newText(options);
    if (options.fileName == "-")
        console.out << text;
    else
        createFile(options.fileName, text.data(), text.size());
    return done;
}
