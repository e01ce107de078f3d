#include "tests/Support.hh"
#include "tool/Checker.hh"

#include <random>

namespace {

/// The findings of a text as lines, details included.
std::string findingsOf(const std::string &text) {
    std::string lines;
    Checker(text).forEachFinding([&lines](const Finding &finding) {
        lines += std::to_string(finding.position.line) + ":" + std::to_string(finding.position.column) + ": " +
                 finding.text + "\n";
        for (const std::string &detail : finding.details)
            lines += "  " + detail + "\n";
    });
    return lines;
}

} // namespace

TEST(Check, FindsNothingInTheExamples) {
    for (const char *name : {"minimal.fed", "harbour.fed", "tolerances.fed"})
        EXPECT_EQ(findingsOf(example(name)), "") << name;
}

TEST(Check, FindsEverySlipOfAFile) {
    const std::string text =
        withMom("\n(class A (attribute a fast sometimes Nowhere) (attribute b reliable timestamp s)\n"
                "(attribute B reliable timestamp)\n"
                "(class C (attribute A reliable timestamp) (atribute d reliable timestamp)))\n"
                "(class a (attribute b reliable timestamp) (attribute e slow timestamp) (class C))",
                "\n(class I reliable timestamp S (parameter p) (class J reliable timestamp Sea "
                "(parameter P)))",
                "\n(space S (dimension X) (dimension X) (dimension x))");
    EXPECT_EQ(
        findingsOf(text),
        "10:35: the dimension \"X\" is declared a second time in the space \"S\", the first is at 10:21\n"
        "14:23: unknown transportation \"fast\" of the attribute \"a\", expected reliable or best_effort\n"
        "14:28: unknown ordering \"sometimes\" of the attribute \"a\", expected timestamp or receive\n"
        "14:38: unknown routing space \"Nowhere\" of the attribute \"a\", expected the name of a space that the file "
        "declares\n"
        "15:12: the attribute \"B\" is declared a second time in \"ObjectRoot.A\", the first is at 14:58\n"
        "16:21: the attribute \"A\" of \"ObjectRoot.A.C\" is declared again: it is inherited from \"ObjectRoot.A\", "
        "the first is at 14:21\n"
        "16:44: expected \"attribute\" or \"class\", found \"atribute\"\n"
        "17:8: the object class \"ObjectRoot.a\" is declared a second time, the first is at 14:8\n"
        "17:56: unknown transportation \"slow\" of the attribute \"e\", expected reliable or best_effort\n"
        "60:73: unknown routing space \"Sea\" of the interaction class \"InteractionRoot.I.J\", expected the name of "
        "a space that the file declares\n"
        "60:88: the parameter \"P\" of \"InteractionRoot.I.J\" is declared again: it is inherited from "
        "\"InteractionRoot.I\", the first is at 60:42\n");
}

TEST(Check, ReportsTheMomAsOneFinding) {
    std::string text = replaced(example("minimal.fed"), "(attribute LBTS reliable receive)", "");
    text = replaced(text, "(class ReportUpdatesSent", "(class Reported");
    text = replaced(text, "(class FederateSaveBegun", "(class Begun");
    EXPECT_EQ(findingsOf(text), "6:1: the Management Object Model (MOM) is incomplete, 5 names are missing:\n"
                                "  the attribute LBTS of the object class Manager.Federate\n"
                                "  the interaction class Manager.Federate.Report.ReportUpdatesSent with the parameters "
                                "TransportationType, UpdateCounts\n"
                                "  the interaction class Manager.Federate.Service.FederateSaveBegun\n");
}

TEST(Check, DoesNotReportWhatOnlyFollows) {
    // A name in a clause that was not understood is not missing, be it of the MOM or of a space.
    EXPECT_EQ(findingsOf(replaced(example("minimal.fed"), "(attribute LBTS", "(atribute LBTS")),
              "27:12: expected \"attribute\" or \"class\", found \"atribute\"\n");
    EXPECT_EQ(findingsOf(replaced(example("minimal.fed"), "(attribute LBTS reliable receive)", "(attribute LBTS)")),
              "27:26: expected a transportation, found \")\"\n");
    EXPECT_EQ(findingsOf(withMom("(class A (attribute a reliable timestamp Sea))", "", "(spce Sea)")),
              "9:12: expected \"space\", found \"spce\"\n");
    // With a class left open nothing is known of inheritance.
    EXPECT_EQ(findingsOf(withMom("(class A (attribute a reliable timestamp)\n(class B (attribute a fast timestamp))")),
              "13:23: unknown transportation \"fast\" of the attribute \"a\", expected reliable or best_effort\n"
              "53:3: expected \")\" to close the section \"objects\" of 9:13, found \"(\"\n");
}

TEST(Check, KnowsWhereTheMomAndItsNeighboursMayStand) {
    const std::string end = "    )\n  )\n  (interactions";
    std::string aside = replaced(example("minimal.fed"), "(class Manager\n", ") (class Manager\n");
    aside = replaced(aside, end, "  )\n  (interactions"); // so that ObjectRoot ends in front of the MOM
    EXPECT_EQ(findingsOf(aside), "13:16: the object class \"Manager\" of the MOM stands alone, expected it in "
                                 "\"ObjectRoot\"\n");
    EXPECT_EQ(reasonOf<RTI::NameNotFound>([&aside] { load(aside); }),
              "\"RtiFedDatabase\", line 1342: Object Class Name: ObjectRoot.Manager not found in FED file.");
    EXPECT_EQ(findingsOf(replaced(withMom("(class A)"), end, "    ) (class A)\n  )\n  (interactions")),
              "50:14: the object class \"A\" cannot stand beside \"ObjectRoot.A\", which is found without "
              "\"ObjectRoot.\" as well, the first is at 12:32\n");
}

TEST(Check, FindsAShiftedWordOnce) {
    const auto findings = [](const std::string &attribute) {
        return findingsOf(withMom("\n(class A (attribute " + attribute + "))", "", "(space S)"));
    };
    EXPECT_EQ(findings("a receive S"), "13:23: unknown transportation \"receive\" of the attribute \"a\", a word is "
                                       "missing\n");
    EXPECT_EQ(findings("a b reliable receive"),
              "13:23: unknown transportation \"b\" of the attribute \"a\", a word too "
              "many\n");
    EXPECT_EQ(findings("a reliable b receive"),
              "13:32: unknown ordering \"b\" of the attribute \"a\", a word too many\n");
    EXPECT_EQ(findings("a receive"), "13:30: expected an ordering, found \")\"\n");
    EXPECT_EQ(findings("a reliable receive S T"), "13:42: expected \")\" to close the attribute \"a\" of 13:10, found "
                                                  "\"T\"\n");
    EXPECT_EQ(findings("\"a reliable fast S"),
              "13:21: expected a second quote on the line, found the end of the line\n");
    EXPECT_EQ(findings("a \"\" timestamp"),
              "13:23: unknown transportation \"\" of the attribute \"a\", expected reliable "
              "or best_effort\n");
}

/// One slip, one finding, and it names a line at most one away.
TEST(Check, LeadsToEverySlip) {
    const std::string text = example("minimal.fed");
    std::size_t at = text.find("(FED") + 4;
    for (std::size_t number = 0; (at = text.find_first_not_of(" \n", at)) != std::string::npos; ++number) {
        const std::size_t end = text[at] == '(' || text[at] == ')' ? at + 1 : text.find_first_of("() \n", at);
        const std::string edits[] = {text.substr(0, at) + text.substr(end), text.substr(0, at) + "( " + text.substr(at),
                                     text.substr(0, at) + ") " + text.substr(at),
                                     text.substr(0, at) + "\"" + text.substr(at)};
        const long line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
        at = end;
        if (number % 7 != 0)
            continue;
        for (const std::string &edit : edits) {
            const std::string findings = findingsOf(edit);
            const auto isNear = [&findings](long n) {
                return (" " + findings).find(" " + std::to_string(n) + ":") != std::string::npos;
            };
            ASSERT_EQ(std::count(findings.begin(), findings.end(), '\n'), 1) << line << ": " << findings;
            ASSERT_TRUE(isNear(line - 1) || isNear(line) || isNear(line + 1)) << line << ": " << findings;
        }
    }
}

/// What check passes, the database accepts, and the other way round.
TEST(Check, AgreesWithTheDatabase) {
    const ErrorLines errors;
    std::mt19937 random(3);
    const std::string base =
        withMom("(class A (attribute a reliable timestamp S) (class B (attribute b best_effort "
                "receive))) (class C (attribute a reliable receive))",
                "(class I reliable timestamp S (parameter p) (class J reliable receive))", "(space S (dimension X))");
    std::vector<std::string> tokens; // each with the blanks behind it
    for (std::size_t at = 0; at < base.size();) {
        if (base[at] == ';')
            at = base.find('\n', at);
        std::size_t end = base[at] == '(' || base[at] == ')' ? at + 1 : base.find_first_of("() \n", at);
        end = std::min(base.find_first_not_of(" \n", end), base.size());
        tokens.push_back(base.substr(at, end - at));
        at = end;
    }
    int accepted = 0;
    for (int i = 0; i < 1500; ++i) {
        auto mutated = tokens;
        const auto at = static_cast<std::ptrdiff_t>(random() % (tokens.size() - 1));
        const std::string other = tokens[random() % tokens.size()];
        switch (random() % 4) {
        case 0:
            mutated.erase(mutated.begin() + at);
            break;
        case 1:
            mutated.insert(mutated.begin() + at, other);
            break;
        case 2:
            mutated[static_cast<std::size_t>(at)] = other;
            break;
        default:
            std::swap(mutated[static_cast<std::size_t>(at)], mutated[static_cast<std::size_t>(at) + 1]);
            break;
        }
        std::string text;
        for (const std::string &token : mutated)
            text += token;
        bool loads = true;
        try {
            load(text);
            ++accepted;
        } catch (const RTI::Exception &) {
            loads = false;
        }
        ASSERT_EQ(Checker(text).foundNothing(), loads) << findingsOf(text) << text;
    }
    EXPECT_GT(accepted, 20);
}
