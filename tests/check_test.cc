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

/// In the texts, #OBJECTS and #INTERACTIONS stand for the classes of the MOM.
TEST(Check, FindsWhatAPersonHasToMend) {
    const std::string mom = example("minimal.fed");
    const auto between = [&mom](const std::string &first, const std::string &behind) {
        const auto begin = mom.find(first);
        std::string classes = mom.substr(begin, mom.find(behind, begin) - begin);
        std::replace(classes.begin(), classes.end(), '\n', ' ');
        return classes;
    };
    const std::string objects = between("(class Manager\n", "    )\n  )\n  (interactions");
    const std::string interactions = between("(class Manager reliable", "    )\n  )\n)");
    forEachCase("findings.txt", [&](std::string text, const std::string &expected) {
        for (const auto &[mark, classes] : {std::pair("#OBJECTS", objects), std::pair("#INTERACTIONS", interactions)})
            if (text.find(mark) != std::string::npos)
                text = replaced(text, mark, classes);
        EXPECT_EQ(findingsOf(text), expected);
    });
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
        ASSERT_EQ(Checker(text).findsNoError(), loads) << findingsOf(text) << text;
    }
    EXPECT_GT(accepted, 20);
}
