#include "tool/check/Rule.hh"

#include "infrastructure/RtiFedLimits.hh"

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
      "A FED text is one clause, FED, with everything else in it. A text that begins otherwise is some other kind of "
      "file, or lost its beginning.",
      "Check that the right file is named. If it is, write (FED in front of the first clause.",
      "(Federation Coast)\n(FEDversion v1.3)", "(FED\n  (Federation Coast)\n  (FEDversion v1.3)\n)"},
     {indexOf(RtiFedParser::expectedArgument), "missing-word", error, "A clause lacks one of its words",
      "Each clause has its words in a fixed order and none can be left out: which one is missing cannot be guessed.",
      "Add the word that is named. An attribute has a name, a transportation and an ordering; so has an interaction "
      "class.",
      "(attribute Height reliable)", "(attribute Height reliable timestamp)"},
     {indexOf(RtiFedParser::expectedClause), "unexpected-clause", error, "A clause stands where it may not",
      "The keyword behind a parenthesis says what the clause is, and each kind of clause may stand in some others "
      "only. "
      "A misspelt keyword is found by this rule too.",
      "Correct the keyword, or move the clause to where it belongs. If the keyword is right, look for a parenthesis "
      "that "
      "is missing or too much above.",
      "(class Lighthouse\n  (atribute Lit best_effort receive))",
      "(class Lighthouse\n  (attribute Lit best_effort receive))"},
     {indexOf(RtiFedParser::expectedClose), "unexpected-word", error,
      "A word or parenthesis stands where a clause ends",
      "Behind the words that a clause has, only \")\" or the clauses in it may follow.",
      "Take the word out, put a name with blanks into quotes, or add the parenthesis that is missing.",
      "(parameter Wind Force)", "(parameter \"Wind Force\")"},
     {indexOf(RtiFedParser::leftOpen), "unclosed-clause", error, "A \")\" is missing",
      "Each \"(\" needs its \")\". Where one is missing, everything behind it stands in the wrong clause.",
      "Add a \")\" to the clause that was left open. The notes say which one it was by the indentation of the text.",
      "(class Boat\n  (attribute Length reliable timestamp)\n(class Tug)",
      "(class Boat\n  (attribute Length reliable "
      "timestamp))\n(class Tug)"},
     {indexOf(RtiFedParser::secondClause), "repeated-clause", error,
      "A clause stands a second time that may stand once",
      "Federation, FEDversion, spaces, objects and interactions stand once in a file each. Of two it is not clear "
      "which "
      "one counts.",
      "Put all that stands in the second one into the first.", "(spaces (space Sea))\n(spaces (space Air))",
      "(spaces (space Sea) (space Air))"},
     {indexOf(RtiFedParser::missingClause), "missing-clause", error, "The federation or the version is missing",
      "Every file says the name of its federation and its version.", "Add the clause at the beginning of FED.",
      "(FED\n  (Federation Coast)\n  (objects))", "(FED\n  (Federation Coast)\n  (FEDversion v1.3)\n  (objects))"},
     {indexOf(RtiFedParser::nestedTooDeeply), "nested-too-deeply", error, "Classes are nested in more than 256 levels",
      "Programs walk down the classes level by level; the limit keeps a hostile file from exhausting them. No model of "
      "a sane size comes near.",
      "Derive the class from one that is farther up. Many levels often come from \")\" that are missing.",
      "(class A1 (class A2 (class A3 ...", "(class A1 (class A2)) (class A3 ..."},
     {indexOf(RtiFedParser::dotInClassName), "dotted-class-name", error, "The name of a class has a dot in it",
      "A class is known by its full name, in which dots stand between a class and the one derived from it. With a dot "
      "in "
      "a name that is ambiguous.",
      "Use another sign, or nest the classes.", "(class Boat.Tug)", "(class Boat (class Tug))"},
     {indexOf(RtiFedParser::nameTooLong), "name-too-long", error, "A name is longer than 16,384 bytes",
      "Such a word is no name, but a sign of a damaged file or of a quote that went astray.", "Use a shorter name.",
      "(parameter AAAA...)", "(parameter A)"},
     {indexOf(RtiFedParser::fullNameTooLong), "full-name-too-long", error,
      "The full name of a class is longer than 16,384 bytes",
      "The full name of a class is that of each class around it and its own, with dots. It is kept with the class.",
      "Use shorter names, or fewer levels.", "(class AAAA... (class BBBB...))", "(class A (class B))"},
     {indexOf(RtiFedParser::namesTooLong), "names-too-long", error,
      "The full names of all classes together are longer than 64 MiB",
      "Each class keeps its full name, so that long paths make a small file ask for much memory.",
      "Use shorter names, or fewer levels.", "(class AAAA... (class B1) (class B2) ...)",
      "(class A (class B1) (class B2) "
      "...)"},
     {indexOf(RtiFedParser::strayQuote), "unclosed-quote", error, "A quote is not closed on its line",
      "A name in quotes ends at the second quote, and cannot hold a line end. Without the second quote it is not known "
      "what is part of the name.",
      "Add the second quote, or take the first out. There is no way to write a quote in a name.",
      "(class \"Pilot Boat)", "(class \"Pilot Boat\")"},
     {indexOf(RtiFedParser::trailingText), "text-behind-end", error, "Something stands behind the end of FED",
      "All of a file stands in the FED clause. What follows it was probably meant to stand in it, and a \")\" is too "
      "many above.",
      "Take the \")\" out that is one too many, or what follows the last one.",
      "(FED (Federation Coast) (FEDversion v1.3)) (objects)", "(FED (Federation Coast) (FEDversion v1.3) (objects))"},
     {indexOf(RtiFedParser::nulByte), "nul-byte", error, "The text has a NUL byte in it",
      "No text has NUL bytes: the file is damaged, or no text in an encoding that is understood, such as UTF-16.",
      "Save the file as UTF-8.", "(FED \\x00 (Federation Coast))", "(FED (Federation Coast))"},
     {indexOf(RtiFedParser::textTooLong), "text-too-long", error, "The text is longer than 1 GiB",
      "No FED text comes near: some other file is named.", "Check that the right file is named.", "(FED ...",
      "(FED (Federation Coast) ...)"},
     {indexOf(RtiFedParser::tooManyErrors), "too-many-errors", error, "The text has more errors than are kept",
      "Behind 100,000 errors a text is not read on.", "Mend the first errors: others often follow from them.",
      "(FED ((((((...", "(FED (Federation Coast) ...)"},

     {indexOf(RuleId::unknownTransportation), "unknown-transportation", error,
      "A transportation is none of those there are",
      "An attribute or interaction class says how its messages travel: reliable (every one arrives) or best_effort "
      "(one "
      "may be lost). The long names RTI_RELIABLE and RTI_BEST_EFFORT mean the same.",
      "Write reliable or best_effort.", "(attribute Height guaranteed timestamp)",
      "(attribute Height reliable timestamp)"},
     {indexOf(RuleId::unknownOrdering), "unknown-ordering", error, "An ordering is none of those there are",
      "An attribute or interaction class says how its messages are ordered: timestamp (by their time stamps) or "
      "receive "
      "(as they arrive). The long names RTI_TIME_STAMP_ORDERING and RTI_RECEIVE_ORDERING mean the same.",
      "Write timestamp or receive.", "(attribute Height reliable time_stamp)", "(attribute Height reliable timestamp)"},
     {indexOf(RuleId::unknownSpace), "unknown-space", error, "A routing space is named that is not declared",
      "The last word of an attribute or interaction class is the routing space in which it is sent. It must be one of "
      "those in the section spaces.",
      "Correct the name, or declare the space.", "(attribute Lit reliable receive Sectr)",
      "(attribute Lit reliable receive Sector)"},
     {indexOf(RuleId::swappedWords), "swapped-words", error, "Transportation and ordering are swapped",
      "The transportation stands in front of the ordering.", "Swap the two words.",
      "(attribute Lit receive best_effort)", "(attribute Lit best_effort receive)"},
     {indexOf(RuleId::shiftedWords), "shifted-words", error,
      "A word is missing or too many, so that those behind it stand in the wrong place",
      "Each word of an attribute or interaction class means what its place says: name, transportation, ordering, "
      "space.",
      "Add the word that is missing, take out the one too many, or put a name with blanks into quotes.",
      "(attribute Wind Force reliable receive)", "(attribute \"Wind Force\" reliable receive)"},
     {indexOf(RuleId::repeatedClass), "repeated-class", error, "A class is declared a second time",
      "A class is known by its full name, in any letter case. Two of a name could not be told apart.",
      "Put the members of both into one, or give one another name.",
      "(class Boat (attribute Length reliable timestamp))\n(class BOAT (attribute Width reliable timestamp))",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute Width reliable timestamp))"},
     {indexOf(RuleId::ambiguousClass), "ambiguous-class", error,
      "A class beside the root has the name of one below the root",
      "Programs may leave out \"ObjectRoot.\" and \"InteractionRoot.\" when they look a class up, so that both classes "
      "would have one name.",
      "Give one of them another name, or move one below the other's root.",
      "(class ObjectRoot (class Boat))\n(class "
      "Boat)",
      "(class ObjectRoot (class Boat))\n(class FormerBoat)"},
     {indexOf(RuleId::refusedClass), "refused-class", error, "The database refuses a class",
      "The text says what the database has against it.", "Mend what the text says.", "", ""},
     {indexOf(RuleId::repeatedMember), "repeated-member", error,
      "An attribute or parameter is declared a second time in its class",
      "A member is known by its name, in any letter case. Two of a name could not be told apart.",
      "Remove one, or give it another name.",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute length reliable timestamp))",
      "(class Boat\n  (attribute Length reliable timestamp)\n  (attribute Width reliable timestamp))"},
     {indexOf(RuleId::inheritedMember), "inherited-member", error,
      "An attribute or parameter is declared again below a class that has it",
      "A class has all members of the classes above it. There is no overriding: the second would be another member of "
      "the same name.",
      "Remove the second one; the class has it anyway. To transport or order it differently, give it a name of its "
      "own.",
      "(class Boat (attribute Length reliable timestamp)\n  (class Tug (attribute Length reliable timestamp)))",
      "(class Boat (attribute Length reliable timestamp)\n  (class Tug))"},
     {indexOf(RuleId::repeatedDimension), "repeated-dimension", error,
      "A dimension is declared a second time in its space",
      "A dimension is known by its name. A second one is refused if its name is in capitals, as the database keeps it; "
      "any other is accepted, and found by its handle only (hidden-dimension).",
      "Remove one, or give it another name.", "(space Sector (dimension X) (dimension X))",
      "(space Sector (dimension X) (dimension Y))"},
     {indexOf(RuleId::momIncomplete), "mom-incomplete", error,
      "Classes or members of the Management Object Model are missing",
      "The RTI publishes what it knows of the federation, and takes orders, through classes of its own, the Management "
      "Object Model. Every file must contain all of it, by these names.",
      "Add what is listed. A file that lacks all of it takes it over from one that has it, such as "
      "examples/minimal.fed of the documentation.",
      "(class ReportUpdateSent reliable receive ...)", "(class ReportUpdatesSent reliable receive ...)"},
     {indexOf(RuleId::momMisplaced), "mom-misplaced", error, "The Management Object Model stands beside its root",
      "The class Manager stands directly below ObjectRoot, and another one directly below InteractionRoot.",
      "Move the class Manager into its root. Often the root was closed by a \")\" too many.",
      "(class ObjectRoot)\n(class Manager ...)", "(class ObjectRoot\n  (class Manager ...))"},
     {indexOf(RuleId::damagedImage), "damaged-image", error, "A saved image cannot be restored",
      "A file that begins with a NUL byte is read as a saved image. This one was cut, changed, or is none.",
      "Save the image again from its FED text.", "rtifed check model.img", "rtifed save model.fed model.img"},

     {indexOf(RuleId::unusedSpace), "unused-space", warning, "A routing space is declared and nothing is in it",
      "A space narrows down what federates receive only for the attributes and interaction classes that name it. One "
      "that nothing names has no effect, and mostly means that the name was forgotten in their clauses.",
      "Name the space in the attributes and interaction classes that belong to it, or remove it.",
      "(spaces (space Sector (dimension X)))\n...\n(attribute Lit best_effort receive)",
      "(spaces (space Sector (dimension X)))\n...\n(attribute Lit best_effort receive Sector)"},
     {indexOf(RuleId::spaceWithoutDimensions), "space-without-dimensions", warning, "A routing space has no dimensions",
      "Regions of a space are ranges of its dimensions. Without any there is nothing to narrow down.",
      "Add the dimensions of the space, or remove it.", "(space Sector)",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::repeatedSpace), "repeated-space", warning, "A routing space is declared a second time",
      "The database keeps both, but finds the first by the name; the second can be reached by its handle only.",
      "Put the dimensions of both into one, or give one another name.",
      "(space Sector (dimension bearing))\n(space SECTOR (dimension range))",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::hiddenDimension), "hidden-dimension", warning,
      "A dimension has the name of an earlier one of its space",
      "The database keeps both, but finds the first by the name; the second can be reached by its handle only. A "
      "second "
      "name in capitals is refused (repeated-dimension).",
      "Remove one, or give it another name.", "(space Sector (dimension range) (dimension range))",
      "(space Sector (dimension bearing) (dimension range))"},
     {indexOf(RuleId::letterCase), "letter-case", warning, "One name is spelt in two letter cases",
      "Names are found in any letter case, so the file loads. But programs and people who compare names byte by byte "
      "take "
      "them for two names, and what is meant by one name is better written in one way.",
      "Write the name as it is written elsewhere.",
      "(class Boat (attribute LENGTH reliable timestamp))\n(class Crane (attribute Length reliable timestamp))\n(class "
      "Quay (attribute Length reliable timestamp))",
      "(class Boat (attribute Length reliable timestamp))\n(class Crane (attribute Length reliable timestamp))\n(class "
      "Quay (attribute Length reliable timestamp))"},
     {indexOf(RuleId::noPrivilegeToDelete), "no-privilege-to-delete", warning,
      "ObjectRoot lacks the attribute privilegeToDelete",
      "The federate that owns this attribute of an object may delete the object. An RTI looks for it by its name in "
      "every "
      "class.",
      "Declare it in ObjectRoot.", "(class ObjectRoot\n  (class RTIprivate) ...)",
      "(class ObjectRoot\n  (attribute privilegeToDelete reliable timestamp)\n  (class RTIprivate) ...)"},
     {indexOf(RuleId::noRtiPrivate), "no-rti-private", warning, "A root lacks the class RTIprivate",
      "By custom each of the two roots has a class RTIprivate, which an RTI may use for itself.",
      "Declare it in ObjectRoot, and in InteractionRoot with transportation and ordering.",
      "(class InteractionRoot reliable timestamp\n  (class Manager reliable receive ...))",
      "(class InteractionRoot reliable timestamp\n  (class RTIprivate reliable timestamp)\n  (class Manager reliable "
      "receive ...))"},
     {indexOf(RuleId::danglingReference), "dangling-reference", warning, "An image refers to what it does not have",
      "An attribute or interaction class of the image is in a space, or has a transportation or ordering, that does "
      "not "
      "exist. The library restores it, but cannot list it, and answers for that member fail. An image that was saved "
      "from "
      "a FED text never is so.",
      "Save the image again from its FED text.", "rtifed list model.img", "rtifed save model.fed model.img"}}};

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

const Rules &allRules() {
    return kRules;
}
