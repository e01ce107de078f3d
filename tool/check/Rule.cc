#include "tool/check/Rule.hh"

#include "infrastructure/RtiFedLimits.hh"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr auto error = Severity::error;
constexpr auto warning = Severity::warning;

constexpr std::size_t indexOf(RtiFedParser::Problem problem) {
    return problem;
}

constexpr std::size_t indexOf(RuleId id) {
    return kNumProblems + static_cast<std::size_t>(id);
}

constexpr Rules kRules = {
    {{indexOf(RtiFedParser::expectedFed), "not-a-fed-text", error, "The text does not begin with \"(FED\"",
      "A FED text is one clause, FED, which contains everything else. A text that begins otherwise is another kind "
      "of file, or its beginning was lost.",
      "Check that the right file is named. If it is, write (FED before the first clause.",
      "(Federation Coast)\n(FEDversion v1.3)", "(FED\n  (Federation Coast)\n  (FEDversion v1.3)\n)"},
     {indexOf(RtiFedParser::expectedArgument), "missing-word", error, "A clause lacks one of its words",
      "Each clause has its words in a fixed order, and none is optional except the routing space at the end.",
      "Add the missing word. An attribute has a name, a transportation and an ordering; so has an interaction class.",
      "(attribute Height reliable)", "(attribute Height reliable timestamp)"},
     {indexOf(RtiFedParser::expectedClause), "unexpected-clause", error, "A clause is not allowed here",
      "The keyword after a parenthesis gives the kind of the clause, and each kind is allowed only inside certain "
      "others. This rule also finds misspelt keywords.",
      "Correct the keyword, or move the clause to where it belongs. If the keyword is right, look for a missing or "
      "superfluous parenthesis above.",
      "(class Lighthouse\n  (atribute Lit best_effort receive))",
      "(class Lighthouse\n  (attribute Lit best_effort receive))"},
     {indexOf(RtiFedParser::expectedClose), "unexpected-word", error, "A clause has a word or parenthesis too many",
      "After the words of a clause, only \")\" or the clauses inside it may follow.",
      "Remove the word, put a name with blanks into quotes, or add the missing parenthesis.", "(parameter Wind Force)",
      "(parameter \"Wind Force\")"},
     {indexOf(RtiFedParser::leftOpen), "unclosed-clause", error, "A \")\" is missing",
      "Each \"(\" needs its \")\". Where one is missing, everything after it is in the wrong clause.",
      "Add a \")\" to the clause that was left open. Where the grammar does not show which one it is, the finding "
      "judges by the layout of the text and says so; where the layout does not show it either, the finding is at the "
      "clause in which reading could not go on.",
      "(class Boat\n  (attribute Length reliable timestamp)\n(class Tug)",
      "(class Boat\n  (attribute Length reliable timestamp))\n(class Tug)"},
     {indexOf(RtiFedParser::secondClause), "repeated-clause", error, "A clause that is allowed once is repeated",
      "A file has one each of Federation, FEDversion, spaces, objects and interactions. With two it is not clear "
      "which one counts.",
      "Move the contents of the second one into the first.", "(spaces (space Sea))\n(spaces (space Air))",
      "(spaces (space Sea) (space Air))"},
     {indexOf(RtiFedParser::missingClause), "missing-clause", error, "The federation or the version is missing",
      "Every file gives the name of its federation and its version.", "Add the clause at the beginning of FED.",
      "(FED\n  (Federation Coast)\n  (objects))", "(FED\n  (Federation Coast)\n  (FEDversion v1.3)\n  (objects))"},
     {indexOf(RtiFedParser::nestedTooDeeply), "nested-too-deeply", error, "Classes are nested in more than 256 levels",
      "Programs walk down the classes level by level; the limit keeps a hostile file from exhausting their memory. "
      "Real models have far fewer levels.",
      "Derive the class from one that is higher up. Very many levels are often the result of missing \")\".",
      "(class A1 (class A2 (class A3 ...", "(class A1 (class A2)) (class A3 ..."},
     {indexOf(RtiFedParser::dotInClassName), "dotted-class-name", error, "The name of a class contains a dot",
      "A class is known by its full name, in which dots separate a class from its subclass. A dot within a name "
      "would make full names ambiguous.",
      "Use another character, or nest the classes.", "(class Boat.Tug)", "(class Boat (class Tug))"},
     {indexOf(RtiFedParser::nameTooLong), "name-too-long", error, "A name is longer than 16,384 bytes",
      "A word of that length is a sign of a damaged file or of a missing quote.", "Use a shorter name.",
      "(parameter AAAA...)", "(parameter A)"},
     {indexOf(RtiFedParser::fullNameTooLong), "full-name-too-long", error,
      "The full name of a class is longer than 16,384 bytes",
      "The full name of a class consists of the names of all enclosing classes and its own, separated by dots. It is "
      "stored with the class.",
      "Use shorter names, or fewer levels.", "(class AAAA... (class BBBB...))", "(class A (class B))"},
     {indexOf(RtiFedParser::namesTooLong), "names-too-long", error,
      "The full names of all classes together are longer than 64 MiB",
      "The full name of each class is stored, so that a small file with long paths can take much memory.",
      "Use shorter names, or fewer levels.", "(class AAAA... (class B1) (class B2) ...)",
      "(class A (class B1) (class B2) ...)"},
     {indexOf(RtiFedParser::strayQuote), "unclosed-quote", error, "A quote is not closed on its line",
      "A name in quotes ends at the second quote, and cannot contain a line end. Without the second quote the end of "
      "the name is unknown.",
      "Add the second quote, or remove the first. A name cannot contain a quote.", "(class \"Pilot Boat)",
      "(class \"Pilot Boat\")"},
     {indexOf(RtiFedParser::trailingText), "text-behind-end", error, "Text follows the end of FED",
      "The whole file is one FED clause. Text after it was probably meant to be inside, and there is a superfluous "
      "\")\" above.",
      "Remove the superfluous \")\", or the text that follows the last one.",
      "(FED (Federation Coast) (FEDversion v1.3)) (objects)", "(FED (Federation Coast) (FEDversion v1.3) (objects))"},
     {indexOf(RtiFedParser::nulByte), "nul-byte", error, "The text contains a NUL byte",
      "A FED text has no NUL bytes: the file is damaged, or it has an encoding that is not supported, such as UTF-16.",
      "Save the file as UTF-8.", "(FED \\x00 (Federation Coast))", "(FED (Federation Coast))"},
     {indexOf(RtiFedParser::textTooLong), "text-too-long", error, "The text is longer than 1 GiB",
      "Real FED texts are far smaller; this is probably another kind of file.", "Check that the right file is named.",
      "(FED ...", "(FED (Federation Coast) ...)"},
     {indexOf(RtiFedParser::tooManyErrors), "too-many-errors", error, "The text has more errors than are kept",
      "Reading stops after 100,000 errors.", "Fix the first errors: later ones often follow from them.",
      "(FED ((((((...", "(FED (Federation Coast) ...)"},
     {indexOf(RtiFedParser::foreignComment), "foreign-comment", error, "A comment is written as in another language",
      "A comment begins with \";\" and ends with its line. Other marks, such as //, /*, # and --, are words like any "
      "other.",
      "Begin the comment with \";\", on each of its lines.", "(class Boat) // and ships", "(class Boat) ; and ships"},
     {indexOf(RtiFedParser::foreignBlank), "foreign-blank", error, "A character looks like a blank and is none",
      "Word processors, web pages and messengers replace blanks by characters that look like them, such as the "
      "no-break "
      "space U+00A0. In a FED text only the blank, the tab and the line end separate words; any other character is "
      "part of a word.",
      "Replace the character by a blank, or remove it. The finding points to the character.",
      "(attribute\\xc2\\xa0Height reliable timestamp)", "(attribute Height reliable timestamp)"},

     {indexOf(RuleId::unknownTransportation), "unknown-transportation", error, "Unknown transportation",
      "The transportation of an attribute or interaction class is reliable (every message arrives) or best_effort "
      "(messages may be lost). The long names RTI_RELIABLE and RTI_BEST_EFFORT mean the same.",
      "Write reliable or best_effort.", "(attribute Height guaranteed timestamp)",
      "(attribute Height reliable timestamp)"},
     {indexOf(RuleId::unknownOrdering), "unknown-ordering", error, "Unknown ordering",
      "The ordering of an attribute or interaction class is timestamp (messages are ordered by their time stamps) or "
      "receive (they are delivered as they arrive). The long names RTI_TIME_STAMP_ORDERING and RTI_RECEIVE_ORDERING "
      "mean the same.",
      "Write timestamp or receive.", "(attribute Height reliable time_stamp)", "(attribute Height reliable timestamp)"},
     {indexOf(RuleId::unknownSpace), "unknown-space", error, "A routing space is not declared",
      "The optional last word of an attribute or interaction class is its routing space, which must be declared in "
      "the section spaces.",
      "Correct the name, or declare the space.", "(attribute Lit reliable receive Sectr)",
      "(attribute Lit reliable receive Sector)"},
     {indexOf(RuleId::swappedWords), "swapped-words", error, "Words are in the wrong order",
      "The name comes first, then the transportation, the ordering and perhaps the space.", "Reorder the words.",
      "(attribute Lit receive best_effort)", "(attribute Lit best_effort receive)"},
     {indexOf(RuleId::shiftedWords), "shifted-words", error,
      "A missing or superfluous word puts the words after it in the wrong place",
      "The place of each word of an attribute or interaction class gives its meaning: name, transportation, "
      "ordering, space.",
      "Add the missing word, remove the superfluous one, or put a name with blanks into quotes.",
      "(attribute Wind Force reliable receive)", "(attribute \"Wind Force\" reliable receive)"},
     {indexOf(RuleId::repeatedClass), "repeated-class", error, "Duplicate class",
      "A class is known by its full name, in any letter case. Two classes of one name could not be distinguished.",
      "Merge the two, or rename one.",
      "(class Boat (attribute Length reliable timestamp))\n(class BOAT (attribute Width reliable timestamp))",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute Width reliable timestamp))"},
     {indexOf(RuleId::ambiguousClass), "ambiguous-class", error,
      "A class outside the root has the name of a class below the root",
      "Programs may omit \"ObjectRoot.\" and \"InteractionRoot.\" when they look up a class, so that both classes "
      "would have the same name.",
      "Rename one of them, or move one below the other's root.", "(class ObjectRoot (class Boat))\n(class Boat)",
      "(class ObjectRoot (class Boat))\n(class FormerBoat)"},
     {indexOf(RuleId::refusedClass), "refused-class", error, "The database refuses a class",
      "The text of the finding is the reason that the database gives.", "Fix what the text names.", "", ""},
     {indexOf(RuleId::repeatedMember), "repeated-member", error, "Duplicate attribute or parameter in a class",
      "A member is known by its name, in any letter case. Two members of one name could not be distinguished.",
      "Remove one, or rename it.",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute length reliable timestamp))",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute Width reliable timestamp))"},
     {indexOf(RuleId::inheritedMember), "inherited-member", error,
      "A class declares an attribute or parameter that it inherits",
      "A class inherits all members of its superclasses. There is no overriding: the second declaration would be "
      "another member of the same name.",
      "Remove the second declaration. If the member needs another transportation or ordering, rename it.",
      "(class Boat (attribute Length reliable timestamp)\n  (class Tug (attribute Length reliable timestamp)))",
      "(class Boat (attribute Length reliable timestamp)\n  (class Tug))"},
     {indexOf(RuleId::repeatedDimension), "repeated-dimension", error, "Duplicate dimension in a space",
      "A dimension is known by its name. The database refuses a second one if its name is written in capitals. It "
      "accepts any other, which can be found by its handle only (hidden-dimension).",
      "Remove one, or rename it.", "(space Sector (dimension X) (dimension X))",
      "(space Sector (dimension X) (dimension Y))"},
     {indexOf(RuleId::momIncomplete), "mom-incomplete", error,
      "Classes or members of the Management Object Model are missing",
      "Through the classes of the Management Object Model, the RTI publishes what it knows of the federation and "
      "accepts requests. Every file must declare all of them, by these names.",
      "Add the listed names; rtifed fix --mom adds all of them. A new file has them if rtifed new writes it.",
      "(class ReportUpdateSent reliable receive ...)", "(class ReportUpdatesSent reliable receive ...)"},
     {indexOf(RuleId::momMisplaced), "mom-misplaced", error, "The Management Object Model is outside its root",
      "One class Manager is directly below ObjectRoot, and another one directly below InteractionRoot.",
      "Move the class Manager into its root. Often a superfluous \")\" closes the root too early.",
      "(class ObjectRoot)\n(class Manager ...)", "(class ObjectRoot\n  (class Manager ...))"},
     {indexOf(RuleId::misspeltRoot), "misspelt-root", error, "The root of a class tree has another name",
      "All object classes are below ObjectRoot, and all interaction classes below InteractionRoot. Later standards "
      "have "
      "other names for them.",
      "Rename the class.", "(objects\n  (class HLAobjectRoot (class Manager ...)))",
      "(objects\n  (class ObjectRoot (class Manager ...)))"},
     {indexOf(RuleId::damagedImage), "damaged-image", error, "A saved image cannot be restored",
      "A file that begins with a NUL byte is read as a saved image. This one is incomplete, was changed, or is "
      "another kind of file.",
      "Save the image again from its FED text.", "rtifed check model.img", "rtifed save model.fed model.img"},
     {indexOf(RuleId::notWellFormed), "xml-not-well-formed", error, "An object model is not well-formed XML",
      "A file whose first character is \"<\" is read as an object model in XML. This one cannot be read to its end. If "
      "an end tag is missing or has another name, the finding names both places.",
      "Correct the tag. An end tag repeats the name of its start tag, after a slash.",
      "<interactions>\n  ...\n<interactions>", "<interactions>\n  ...\n</interactions>"},
     {indexOf(RuleId::notAnObjectModel), "not-an-object-model", error,
      "The XML is not an object model of IEEE 1516-2010",
      "rtifed reads the form of IEEE 1516-2010: the element objectModel in the namespace "
      "http://standards.ieee.org/IEEE1516-2010, or in the older http://www.sisostds.org/schemas/IEEE1516-2010. The "
      "standards of 2000 and 2025 have other forms.",
      "Add the namespace, or convert the file with the tool that wrote it.", "<objectModel>",
      "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\">"},
     {indexOf(RuleId::unknownElement), "unknown-element", error, "An object model has an unknown or repeated element",
      "What it was meant to declare would be missing from the FED. An element that may be there once is read where it "
      "comes first. Elements of other namespaces are extensions, which are passed over.",
      "Correct the name of the element, or remove those that are too many.", "<atribute>\n  <name>Height</name>\n  ...",
      "<attribute>\n  <name>Height</name>\n  ..."},
     {indexOf(RuleId::undefinedClass), "undefined-class", error,
      "A class, its name, transportation or order is defined in no module",
      "A module may give only the name of a class that another module defines. Without that definition, subclasses "
      "would lack what they inherit. An attribute or interaction class needs a transportation and an order.",
      "Name the module that has the definition too: rtifed import BASE.xml EXTENSION.xml. If an object class really "
      "has "
      "nothing of its own, add its <sharing> or <semantics>.",
      "rtifed import extension.xml", "rtifed import base.xml extension.xml"},
     {indexOf(RuleId::unusableName), "unusable-name", error, "An object model has a name that FED cannot hold",
      "In FED a dot separates a class from its superclass, a quote or line end is in no name, and a full name has at "
      "most 16,384 bytes. Classes nest in at most 256 levels.",
      "Rename the class or member.", "<name>Boat.Tug</name>", "<name>Boat_Tug</name>"},
     {indexOf(RuleId::conflictingModules), "conflicting-modules", error,
      "Two definitions of a class or member in an object model differ",
      "Modules may define the same class only in the same way: with the same attributes or parameters, and these with "
      "the same transportation, order, dimensions and data types.",
      "Make the definitions equal, or leave only the name of the class in one of the modules.",
      "<transportation>HLAreliable</transportation>, in another module HLAbestEffort", "the same in both modules"},

     {indexOf(RuleId::unusedSpace), "unused-space", warning, "Unused routing space",
      "A routing space narrows down what federates receive, but only for the attributes and interaction classes that "
      "name it. Without these it has no effect; usually they should name it and do not.",
      "Name the space in the attributes and interaction classes that belong to it, or remove it.",
      "(spaces (space Sector (dimension X)))\n...\n(attribute Lit best_effort receive)",
      "(spaces (space Sector (dimension X)))\n...\n(attribute Lit best_effort receive Sector)"},
     {indexOf(RuleId::spaceWithoutDimensions), "space-without-dimensions", warning, "A routing space has no dimensions",
      "Regions of a space are ranges of its dimensions. Without dimensions there is nothing to narrow down.",
      "Add the dimensions of the space, or remove it.", "(space Sector)",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::repeatedSpace), "repeated-space", warning, "Duplicate routing space",
      "The database stores both, but finds only the first by its name; the second can be found by its handle only.",
      "Merge the two, or rename one.", "(space Sector (dimension bearing))\n(space SECTOR (dimension range))",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::hiddenDimension), "hidden-dimension", warning,
      "A dimension has the name of an earlier dimension of its space",
      "The database stores both, but finds only the first by its name; the second can be found by its handle only. "
      "If the second name is written in capitals, the database refuses it (repeated-dimension).",
      "Remove one, or rename it.", "(space Sector (dimension range) (dimension range))",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::letterCase), "letter-case", warning, "A name is spelt in two letter cases",
      "Names are found in any letter case, so the file loads. But programs and people who compare names byte by byte "
      "take them for two different names.",
      "Spell the name as it is spelt elsewhere.",
      "(class Boat (attribute LENGTH reliable timestamp))\n(class Crane (attribute Length reliable "
      "timestamp))\n(class Quay (attribute Length reliable timestamp))",
      "(class Boat (attribute Length reliable timestamp))\n(class Crane (attribute Length reliable "
      "timestamp))\n(class Quay (attribute Length reliable timestamp))"},
     {indexOf(RuleId::blankInName), "blank-in-name", warning, "A name has a character in it that looks like a blank",
      "The file loads, but nobody can type the name: a character such as the no-break space U+00A0 cannot be told from "
      "a blank, or is not visible at all.",
      "Remove the character, or replace it by a blank and put the name into quotes.", "(class Pilot\\xc2\\xa0Boat)",
      "(class \"Pilot Boat\")"},
     {indexOf(RuleId::noPrivilegeToDelete), "no-privilege-to-delete", warning,
      "ObjectRoot lacks the attribute privilegeToDelete",
      "The federate that owns this attribute of an object may delete the object. An RTI looks it up by name in every "
      "class.",
      "Declare it in ObjectRoot.", "(class ObjectRoot\n  (class RTIprivate) ...)",
      "(class ObjectRoot\n  (attribute privilegeToDelete reliable timestamp)\n  (class RTIprivate) ...)"},
     {indexOf(RuleId::noRtiPrivate), "no-rti-private", warning, "A root lacks the class RTIprivate",
      "By convention each of the two roots has a class RTIprivate, which an RTI may use for itself.",
      "Declare it in ObjectRoot, and in InteractionRoot with transportation and ordering.",
      "(class InteractionRoot reliable timestamp\n  (class Manager reliable receive ...))",
      "(class InteractionRoot reliable timestamp\n  (class RTIprivate reliable timestamp)\n  (class Manager reliable "
      "receive ...))"},
     {indexOf(RuleId::danglingReference), "dangling-reference", warning,
      "An image refers to something that it does not contain",
      "An attribute or interaction class of the image has a space, transportation or ordering that does not exist. "
      "The library restores the image, but cannot list it, and queries about that member fail. An image that was "
      "saved from a FED text never has this problem.",
      "Save the image again from its FED text.", "rtifed list model.img", "rtifed save model.fed model.img"},
     {indexOf(RuleId::redeclaredMember), "redeclared-member", warning,
      "A class of an object model declares an attribute or parameter that it inherits",
      "A class has all members of its superclasses; in FED, the second declaration would be an error. rtifed import "
      "leaves it out.",
      "Remove the second declaration.", "", ""},
     {indexOf(RuleId::badSuppression), "bad-suppression", warning, "A comment that allows a rule cannot be understood",
      "A comment such as ;; rtifed: allow letter-case REASON hides the findings of a rule. Without the name of a rule, "
      "or with a misspelt one, it hides nothing.",
      "Write the rules with commas between them, then the reason; put the comment before the clause that it is for.",
      ";; rtifed: allow lettercase old name\n(class TUG)", ";; rtifed: allow letter-case old name\n(class TUG)"},
     {indexOf(RuleId::unusedSuppression), "unused-suppression", warning, "A comment allows a rule that finds nothing",
      "The problem that the comment is about was fixed or has moved. Left in the file, the comment would hide a later "
      "problem of the same kind.",
      "Remove the comment, or the rule from its list.",
      ";; rtifed: allow unknown-ordering old name\n(attribute Lit best_effort receive)",
      "(attribute Lit best_effort receive)"},

     {indexOf(RuleId::className), "class-name", warning, "The name of a class does not match the project's pattern",
      "Names that follow one pattern are easier to read and to search for. The pattern is naming.class of the "
      "configuration. The roots, RTIprivate and the Management Object Model are exempt.",
      "Rename the class, and its uses in programs.", "(class fishing_boat)", "(class FishingBoat)"},
     {indexOf(RuleId::attributeName), "attribute-name", warning,
      "The name of an attribute does not match the project's pattern",
      "The pattern is naming.attribute of the configuration. privilegeToDelete and the Management Object Model are "
      "exempt.",
      "Rename the attribute, and its uses in programs.", "(attribute Hull_Length reliable timestamp)",
      "(attribute HullLength reliable timestamp)"},
     {indexOf(RuleId::parameterName), "parameter-name", warning,
      "The name of a parameter does not match the project's pattern",
      "The pattern is naming.parameter of the configuration. The Management Object Model is exempt.",
      "Rename the parameter, and its uses in programs.", "(parameter wind_force)", "(parameter WindForce)"},
     {indexOf(RuleId::spaceName), "space-name", warning,
      "The name of a routing space does not match the project's pattern",
      "The pattern is naming.space of the configuration.",
      "Rename the space, and its uses in this file and in programs.", "(space sea_area (dimension X))",
      "(space SeaArea (dimension X))"},
     {indexOf(RuleId::namePrefix), "name-prefix", warning, "The name of a class lacks the prefix of its subtree",
      "A prefix shows in every message and program to which part of the model a class belongs. The configuration fixes "
      "it for a class and all classes below it, with prefix in [[subtree]].",
      "Begin the name with the prefix.", "(class Dredger)", "(class HarbourDredger)"},
     {indexOf(RuleId::fixedTransportation), "fixed-transportation", warning,
      "A transportation differs from the one that is fixed for its subtree",
      "A project may decide that everything in a part of the model is sent alike. The configuration fixes the "
      "transportation for a class and all classes below it, with transportation in [[subtree]]; the innermost such "
      "class "
      "counts.",
      "Write the transportation that is fixed.", "(attribute Position reliable timestamp)",
      "(attribute Position best_effort timestamp)"},
     {indexOf(RuleId::fixedOrdering), "fixed-ordering", warning,
      "An ordering differs from the one that is fixed for its subtree",
      "A project may decide that everything in a part of the model is ordered alike. The configuration fixes the "
      "ordering "
      "for a class and all classes below it, with ordering in [[subtree]]; the innermost such class counts.",
      "Write the ordering that is fixed.", "(attribute Position best_effort timestamp)",
      "(attribute Position best_effort receive)"}}};

/// The words of summaryOf. Rules that are one thing to the author of a file have the same words; a rule that is not
/// listed has its identifier.
constexpr std::pair<std::size_t, const char *> kSummaries[] = {
    {indexOf(RtiFedParser::expectedFed), "not FED text"},
    {indexOf(RtiFedParser::expectedArgument), "with missing words"},
    {indexOf(RtiFedParser::expectedClause), "with unexpected clauses"},
    {indexOf(RtiFedParser::expectedClose), "with unexpected words"},
    {indexOf(RtiFedParser::leftOpen), "unclosed"},
    {indexOf(RtiFedParser::secondClause), "with repeated clauses"},
    {indexOf(RtiFedParser::missingClause), "without federation or version"},
    {indexOf(RtiFedParser::strayQuote), "with unclosed quotes"},
    {indexOf(RtiFedParser::trailingText), "with text after the end"},
    {indexOf(RtiFedParser::nulByte), "not FED text"},
    {indexOf(RtiFedParser::dotInClassName), "with dots in class names"},
    {indexOf(RtiFedParser::nestedTooDeeply), "beyond a limit"},
    {indexOf(RtiFedParser::nameTooLong), "beyond a limit"},
    {indexOf(RtiFedParser::fullNameTooLong), "beyond a limit"},
    {indexOf(RtiFedParser::namesTooLong), "beyond a limit"},
    {indexOf(RtiFedParser::textTooLong), "beyond a limit"},
    {indexOf(RtiFedParser::foreignComment), "with comments of another language"},
    {indexOf(RtiFedParser::foreignBlank), "with unusual blanks"},
    {indexOf(RuleId::unknownTransportation), "with unknown words"},
    {indexOf(RuleId::unknownOrdering), "with unknown words"},
    {indexOf(RuleId::unknownSpace), "with undeclared spaces"},
    {indexOf(RuleId::swappedWords), "with misplaced words"},
    {indexOf(RuleId::shiftedWords), "with misplaced words"},
    {indexOf(RuleId::repeatedClass), "with repeated classes"},
    {indexOf(RuleId::ambiguousClass), "with repeated classes"},
    {indexOf(RuleId::repeatedMember), "with repeated members"},
    {indexOf(RuleId::inheritedMember), "with repeated members"},
    {indexOf(RuleId::repeatedDimension), "with repeated dimensions"},
    {indexOf(RuleId::momIncomplete), "without a complete MOM"},
    {indexOf(RuleId::momMisplaced), "without a complete MOM"},
    {indexOf(RuleId::misspeltRoot), "with a misspelt root"},
    {indexOf(RuleId::damagedImage), "damaged"},
    {indexOf(RuleId::notWellFormed), "not well-formed"},
    {indexOf(RuleId::notAnObjectModel), "not object models"},
    {indexOf(RuleId::unknownElement), "with unknown elements"},
    {indexOf(RuleId::undefinedClass), "with undefined classes"},
    {indexOf(RuleId::unusableName), "with unusable names"},
    {indexOf(RuleId::conflictingModules), "with conflicts between modules"}};

// unreached in this function: only the compiler calls it
constexpr bool isOrdered() {
    for (std::size_t i = 0; i < kRules.size(); ++i)
        if (kRules[i].index != i)
            return false;
    return true;
}
static_assert(isOrdered(), "each rule is in the place of its enumerator");
static_assert(kMaxNameLength == 16384 && kMaxFullNames >> 20 == 64 && kMaxTextSize >> 30 == 1 && kMaxErrors == 100000 &&
                  kMaxClassNesting == 256,
              "the texts of the rules give these limits");

} // namespace

const char *nameOf(Severity severity) {
    return severity == Severity::error ? "error" : "warning";
}

const Rule &ruleOf(RtiFedParser::Problem problem) {
    return kRules.at(indexOf(problem));
}

const Rule &ruleOf(RuleId id) {
    return kRules.at(indexOf(id));
}

bool Rule::isHabit() const {
    return index >= indexOf(RuleId::className);
}

const Rule *findRule(std::string_view id) {
    const auto *const found =
        std::find_if(kRules.begin(), kRules.end(), [id](const Rule &rule) { return rule.id == id; });
    return found == kRules.end() ? nullptr : found;
}

const Rules &allRules() {
    return kRules;
}

std::string summaryOf(const Rule &rule) {
    const auto *summary = std::find_if(std::begin(kSummaries), std::end(kSummaries),
                                       [&rule](const auto &candidate) { return candidate.first == rule.index; });
    // unreached: each rule has a summary
    return summary == std::end(kSummaries) ? std::string("with ") + rule.id : summary->second;
}
