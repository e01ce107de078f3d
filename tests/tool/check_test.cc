#include "tests/Support.hh"
#include "tool/check/Checker.hh"
#include "tool/check/Suggestion.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Text.hh"
#include "tool/report/Excerpt.hh"
#include "tool/report/FileFindings.hh"

#include <nlohmann/json.hpp>

#include <map>
#include <random>
#include <regex>
#include <set>

namespace {

/// The errors of a text as lines, with their details, the places of the notes, and the fix.
std::string errorsOf(const std::string &fed) {
    const Checker text(fed);
    const auto placeOf = [&](RtiFedSpan span) { return textOf(text.parser().positionAt(span.begin)); };
    std::string lines;
    text.forEachFinding([&](const Finding &finding) {
        lines += placeOf(*finding.span) + ": " + finding.text + "\n";
        for (const std::string &detail : finding.details)
            lines += "  " + detail + "\n";
        for (const RtiFedParser::Note &note : finding.notes)
            lines += "  note at " + placeOf(note.span) + "\n";
        for (const Replacement &edit : finding.fix.edits)
            lines += (finding.fix.isSafe ? "  fix at " : "  unsafe fix at ") + placeOf(edit.span) + ": " +
                     inQuotes(fed.substr(edit.span.begin, edit.span.length)) + " -> " + inQuotes(edit.text) + "\n";
        return true;
    });
    return lines;
}

/// Returns the report on one file called "a.fed".
std::string reportOn(const std::string &fed, ReportMaker *format, std::size_t most = 50) {
    std::ostringstream out;
    const auto report = format(out, {});
    report->begin();
    reportFindings({"a.fed", fed}, Severity::warning, most, *report);
    report->end();
    return out.str();
}

std::string times(std::size_t count, const std::string &text) {
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

/// Replaces #OBJECTS and #INTERACTIONS by the classes of the MOM, each on one line and without columns; #NUL by a NUL
/// byte; #LONG by a name that is nearly too long; #DEEP by nested classes that are too many inside a class of the
/// second level.
std::string inPlace(std::string text) {
    static const std::string mom = std::regex_replace(example("minimal.fed"), std::regex("([^ \n]) +"), "$1 ");
    const auto between = [](const std::string &first, const std::string &after) {
        const auto begin = mom.find(first);
        std::string classes = mom.substr(begin, mom.find(after, begin) - begin);
        std::replace(classes.begin(), classes.end(), '\n', ' ');
        return classes;
    };
    static const std::pair<const char *, std::string> marks[] = {
        {"#OBJECTS", between("(class Manager\n", "    )\n  )\n\n  (interactions")},
        {"#INTERACTIONS", between("(class Manager reliable", "    )\n  )\n)")},
        {"#NUL", std::string(1, '\0')},
        {"#LONG", std::string(16380, 'a')},
        {"#DEEP", times(255, "(class D") + times(255, ")")}};
    for (const auto &[mark, meaning] : marks)
        if (text.find(mark) != std::string::npos)
            text = replaced(text, mark, meaning);
    return text;
}

const std::string kSound = "(FED (Federation F) (FEDversion v1.3)\n"
                           "(spaces (space Sea (dimension X) (dimension Y)))\n"
                           "(objects (class ObjectRoot (attribute privilegeToDelete reliable timestamp)\n"
                           "(class RTIprivate)\n"
                           "(class Boat (attribute Length reliable timestamp Sea) (attribute Width reliable receive)\n"
                           "\t(class Tug (attribute \"Größe in m\" best_effort receive Sea)))\n"
                           "#OBJECTS ))\n"
                           "(interactions (class InteractionRoot reliable timestamp\n"
                           "(class RTIprivate reliable timestamp)\n"
                           "(class Storm reliable receive Sea (parameter Length))\n"
                           "#INTERACTIONS )))\n";

/// Rules that no small text reaches, and why.
const std::set<std::string> kNotReached = {
    "names-too-long",  // takes 64 MiB of names; tested with the parser's limits
    "text-too-long",   // takes a text of 1 GiB; tested with the parser's limits
    "too-many-errors", // takes 100,000 errors; tested with the parser's limits
    "refused-class",   // for future refusals of the database: other rules find all current ones
    "damaged-image",   // tested below
    "dangling-reference",
    // tested with configurations
    "bad-suppression", "unused-suppression", "class-name", "attribute-name", "parameter-name", "space-name",
    "name-prefix", "fixed-transportation", "fixed-ordering",
    // of object models in XML; tested with imports
    "xml-not-well-formed", "not-an-object-model", "unknown-element", "undefined-class", "unusable-name",
    "conflicting-modules", "redeclared-member"};

} // namespace

TEST(Check, FindsNothingInTheExamples) {
    for (const char *name : {"minimal.fed", "harbour.fed", "tolerances.fed"})
        EXPECT_EQ(reportOn(example(name), textReport), "") << name;
    EXPECT_EQ(reportOn(inPlace(kSound), textReport), "");
}

TEST(Check, FindsErrorsInTheOrderOfTheText) {
    // Damaged texts were found by chance: each shows a decision of the reader that no text of a person does.
    for (const char *cases : {"findings.txt", "damaged.txt"})
        forEachCase(cases, [](const std::string &text) { return errorsOf(inPlace(text)); });
}

/// A case is `OLD => NEW`, to replace in the sound text; then the finding in each format, in JSON and SARIF without
/// the rest of the document.
TEST(Check, ReportsEachMistakeInEachFormat) {
    std::set<std::string> notSeen;
    for (const Rule &rule : allRules())
        notSeen.insert(rule.id);
    for (const std::string &id : kNotReached)
        EXPECT_EQ(notSeen.erase(id), 1u) << id;
    forEachCase("mistakes.txt", [&](const std::string &mistake) {
        const auto arrow = mistake.find(" => ");
        const std::string old = mistake.substr(0, arrow), edited = mistake.substr(arrow + 4);
        const bool inMom = kSound.find(old) == std::string::npos;
        const std::string text =
            inMom ? replaced(inPlace(kSound), old, edited) : inPlace(replaced(kSound, old, edited));
        const std::string json = reportOn(text, jsonReport), sarif = reportOn(text, sarifReport);
        const auto lineOf = [](const std::string &whole, std::size_t begin) {
            return whole.substr(begin, whole.find('\n', begin) + 1 - begin);
        };
        const std::string rule =
            json.substr(json.find("\"rule\":\"") + 8, json.find("\",\"sev") - json.find("\"rule\":\"") - 8);
        notSeen.erase(rule);
        const std::string jsonLine = lineOf(json, json.find("\n{\"rule\"") + 1);
        const std::string sarifLine = lineOf(sarif, sarif.find("\n{\"ruleId\"") + 1);
        return reportOn(text, textReport) + reportOn(text, githubReport) + jsonLine + sarifLine;
    });
    EXPECT_EQ(notSeen, std::set<std::string>());
}

/// Reports on files that are right, wrong, damaged and missing, and on one with the same mistake at six places.
std::string reportOnFiles(ReportMaker *format, const std::string &missing = "none.fed") {
    std::ostringstream out;
    const auto report = format(out, {});
    report->begin();
    reportFindings({"a b.fed", "(FED\xE4 x"}, Severity::warning, 50, *report);
    reportFindings({"/i,:%.img", std::string(3, '\0')}, Severity::warning, 50, *report);
    reportFindings({"right.fed", example("minimal.fed")}, Severity::warning, 50, *report);
    const std::string oneError = replaced(inPlace(kSound), "Length reliable timestamp", "Length relaible timestamp");
    reportFindings({"more.fed", replaced(oneError, "Width reliable receive", "Width fast receive")}, Severity::warning,
                   1, *report);
    const std::string twice =
        replaced(kSound, "(class RTIprivate)", "(class RTIprivate (attribute Width reliable receive))");
    const std::string again = inPlace(std::regex_replace(twice, std::regex("reliable"), "relaible"));
    reportFindings({"./again.fed", again}, Severity::warning, 50, *report);
    report->failFile(missing, "No such file or directory");
    report->end();
    return out.str();
}

TEST(Check, ReportsFilesInEachFormat) {
    const std::map<std::string, ReportMaker *> formats = {{"text", textReport},
                                                          {"concise", conciseReport},
                                                          {"json", jsonReport},
                                                          {"github", githubReport},
                                                          {"gitlab", gitlabReport},
                                                          {"junit", junitReport},
                                                          {"statistics", statisticsReport}};
    forEachCase("reports.txt", [&](const std::string &format) { return reportOnFiles(formats.at(format)); });
    for (ReportMaker *format : {jsonReport, sarifReport})
        EXPECT_TRUE(nlohmann::json::accept(reportOnFiles(format, "\xE4\"\n")));
}

TEST(Check, WritesWhatSarifNeeds) {
    const auto log = nlohmann::json::parse(reportOnFiles(sarifReport));
    EXPECT_EQ(log.at("version"), "2.1.0");
    const auto &run = log.at("runs").at(0);
    EXPECT_EQ(run.at("columnKind"), "unicodeCodePoints");
    EXPECT_EQ(run.at("tool").at("driver").at("name"), "rtifed");
    const auto &rules = run.at("tool").at("driver").at("rules");
    ASSERT_EQ(rules.size(), allRules().size());
    for (std::size_t i = 0; i < rules.size(); ++i) {
        EXPECT_EQ(rules[i].at("id"), allRules()[i].id);
        EXPECT_EQ(rules[i].at("defaultConfiguration").at("level"), nameOf(allRules()[i].severity));
        for (const char *text : {"shortDescription", "fullDescription", "help"})
            EXPECT_TRUE(rules[i].at(text).at("text").is_string());
    }
    std::string uris;
    for (const auto &result : run.at("results")) {
        EXPECT_EQ(rules.at(result.at("ruleIndex").get<std::size_t>()).at("id"), result.at("ruleId"));
        const auto &place = result.at("locations").at(0).at("physicalLocation");
        uris += place.at("artifactLocation").at("uri").get<std::string>() + " ";
    }
    EXPECT_EQ(uris, "a%20b.fed file:///i%2C%3A%25.img more.fed again.fed ");
    const auto &invocation = run.at("invocations").at(0);
    EXPECT_FALSE(invocation.at("executionSuccessful"));
    const auto &notifications = invocation.at("toolExecutionNotifications");
    EXPECT_EQ(notifications.at(0).at("message").at("text"), "1 more error is not shown");
    EXPECT_EQ(notifications.at(1).at("message").at("text"), "No such file or directory");
}

TEST(Check, SuggestsWhatIsNearAndKnowsWhenItIsSure) {
    const std::string longest(64, 'a');
    for (const auto &[word, candidate, expected] : {std::tuple<std::string, std::string, bool>("HLAabc", "abx", true),
                                                    {"bacde", "abcde", true},
                                                    {"axyde", "abcde", false},
                                                    {"axbde", "abcde", false},
                                                    {"xyabc", "abcd", false},
                                                    {"a", "xy", false},
                                                    {longest, longest.substr(1) + 'b', true},
                                                    {longest, longest + 'a', false},
                                                    {longest + 'a', longest, false}})
        EXPECT_EQ(suggestionFor(word, {candidate}), expected ? candidate : "") << word;
    EXPECT_EQ(suggestionFor("Baot", std::vector<std::string>(1000, "boat")), "boat");
    EXPECT_EQ(suggestionFor("Baot", std::vector<std::string>(1001, "boat")), "");
    EXPECT_TRUE(bestOf("baot1", {"boat1", "ship"}).isSure);
    EXPECT_FALSE(bestOf("boat1", {"boat2"}).isSure);
    EXPECT_FALSE(bestOf("boad", {"boat", "boar"}).isSure);
    EXPECT_TRUE(bestNameOf("sea_", {"Sea"}).isSure);
    EXPECT_FALSE(bestNameOf("boad", {"boat"}).isSure);
}

TEST(Check, CutsAndAlignsTheLineItShows) {
    const auto shown = [](const std::string &text, const std::string &meant, std::size_t width = 40) {
        const auto begin = text.find(meant);
        const Excerpt excerpt(text, {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(meant.size())},
                              begin + 1, width);
        return excerpt.line + "\n" + excerpt.carets;
    };
    EXPECT_EQ(shown("a\tb\tmeant\r\nnext", "meant"), "a       b       meant\n                ^~~~~");
    EXPECT_EQ(shown("ä€ ö\xFF\x1B x", "ö\xFF"), "ä€ ö\\xff\\x1b x\n   ^~~~~");
    EXPECT_EQ(shown("one\ntwo", "e\ntw"), "one\n  ^");
    EXPECT_EQ(shown("the end", ""), "the end\n^");
    const std::string words = times(1000, "word ");
    EXPECT_EQ(shown(words + "meant " + words, "meant"),
              "...ord word word meant word word word...\n                 ^~~~~");
    EXPECT_EQ(shown("meant " + words, "meant"), "meant word word word word word word w...\n^~~~~");
    EXPECT_EQ(shown(words + "meant", "meant"),
              "...d word word word word word word meant\n                                   ^~~~~");
    EXPECT_EQ(Excerpt(words, {5000, 0}, 5001, 40).carets, times(40, " ") + "^");
    EXPECT_EQ(shown(words, words), "word word word word word word word wo...\n" + std::string("^") + times(39, "~"));
    EXPECT_EQ(shown(times(1000, "€") + "x" + times(1000, "€"), "x"),
              "..." + times(16, "€") + "x" + times(17, "€") + "...\n" + times(19, " ") + "^");
}

TEST(Check, ExplainsItsRules) {
    std::ostringstream page;
    explain({"", true}, Console{page, page});
    EXPECT_EQ(readFile(RTIFED_DOCS "/rules.md"), page.str()) << "docs/rules.md is made by: rtifed explain --markdown";
    const auto explained = [](const std::string &rule, std::size_t width) {
        std::ostringstream out;
        Console console{out, out};
        console.width = width;
        explain({rule, false}, console);
        return split(out.str(), '\n');
    };
    for (const auto &[width, widest] : {std::pair(0U, 78U), {1U, 27U}, {40U, 39U}, {200U, 78U}}) {
        std::size_t columns = 0;
        for (const std::string &line : explained("redeclared-member", width))
            columns = std::max(columns, line.size());
        EXPECT_EQ(columns, widest) << width;
    }
    EXPECT_EQ(explained("", 0)[0], "not-a-fed-text            error    The text does not begin with \"(FED\"");
    EXPECT_EQ(explained("class-name", 0)[0], "class-name (warning, off by default)");
    EXPECT_EQ(explained("text-too-long", 0)[10], "Right:");
}

TEST(Check, ReportsTheMomWhereItIsIncomplete) {
    std::string text = replaced(example("minimal.fed"), "(attribute LBTS                 reliable receive)", "");
    text = replaced(text, "(class ReportUpdatesSent", "(class Reported");
    text = replaced(text, "(class FederateSaveBegun", "(class Begun");
    text = replaced(text, "(parameter LoggingState)", "(parameter LogingState)");
    EXPECT_EQ(errorsOf(text), "29:16: the Management Object Model (MOM) is incomplete, 1 name is missing:\n"
                              "  the attribute LBTS of the object class Manager.Federate\n"
                              "94:26: the Management Object Model (MOM) has no parameter \"LogingState\"; did you mean "
                              "\"LoggingState\"?\n"
                              "  fix at 94:26: \"LogingState\" -> \"LoggingState\"\n"
                              "111:18: the Management Object Model (MOM) is incomplete, 3 names are missing:\n"
                              "  the interaction class Manager.Federate.Report.ReportUpdatesSent with the parameters "
                              "TransportationType, UpdateCounts\n"
                              "179:18: the Management Object Model (MOM) is incomplete, 1 name is missing:\n"
                              "  the interaction class Manager.Federate.Service.FederateSaveBegun\n");
    text = replaced(example("minimal.fed"), "(class Federation\n", "(clas Federation\n");
    EXPECT_EQ(errorsOf(replaced(text, "(attribute LastSaveName          reliable receive)", "")),
              "28:14: the Management Object Model (MOM) is incomplete, 1 name is missing:\n"
              "  the attribute LastSaveName of the object class Manager.Federation\n"
              "54:10: expected \"attribute\" or \"class\", found \"clas\"; did you mean \"class\"?\n"
              "  fix at 54:10: \"clas\" -> \"class\"\n");
    EXPECT_EQ(errorsOf(replaced(example("minimal.fed"), "(class ObjectRoot", "(clas ObjectRoot")),
              "17:6: expected \"class\", found \"clas\"; did you mean \"class\"?\n"
              "  fix at 17:6: \"clas\" -> \"class\"\n");
}

/// Each mistake gives one finding, which names a line at most one away.
TEST(Check, FindsEachMistakeNearItsPlace) {
    const std::string text = example("minimal.fed");
    std::size_t at = text.find("(FED") + 4;
    for (std::size_t number = 0; (at = text.find_first_not_of(" \n", at)) != std::string::npos; ++number) {
        if (text[at] == ';') {
            at = text.find('\n', at);
            continue;
        }
        const std::size_t end = text[at] == '(' || text[at] == ')' ? at + 1 : text.find_first_of("() \n", at);
        const std::string edits[] = {text.substr(0, at) + text.substr(end), text.substr(0, at) + "( " + text.substr(at),
                                     text.substr(0, at) + ") " + text.substr(at),
                                     text.substr(0, at) + "\"" + text.substr(at)};
        const long line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n') + 1;
        at = end;
        if (number % 7 != 0)
            continue;
        for (const std::string &edit : edits) {
            const std::string findings = reportOn(edit, githubReport);
            const auto isNear = [&findings](long n) { // the finding, or a place that it names
                const std::string near = std::to_string(n);
                for (const std::string &place : {"line=" + near + ",", " " + near + ":", "a.fed:" + near + ":"})
                    if (findings.find(place) != std::string::npos)
                        return true;
                return false;
            };
            ASSERT_EQ(std::count(findings.begin(), findings.end(), '\n'), 1) << line << ": " << findings;
            ASSERT_TRUE(isNear(line - 1) || isNear(line) || isNear(line + 1)) << line << ": " << findings;
        }
    }
}

/// The checker finds no error exactly if the database accepts the text.
TEST(Check, AgreesWithTheDatabase) {
    const ErrorLines errors;
    std::mt19937 random(3);
    const std::string base =
        withMom("(class A (attribute a reliable timestamp S) (class B (attribute b best_effort "
                "receive))) (class C (attribute a reliable receive))",
                "(class I reliable timestamp S (parameter p) (class J reliable receive))", "(space S (dimension X))");
    std::vector<std::string> tokens; // each with the blanks after it
    for (std::size_t at = 0; at < base.size();) {
        if (base[at] == ';')
            at = base.find('\n', at);
        std::size_t end = base[at] == '(' || base[at] == ')' ? at + 1 : base.find_first_of("() \n", at);
        end = std::min(base.find_first_not_of(" \n", end), base.size());
        tokens.push_back(base.substr(at, end - at));
        at = end;
    }
    std::size_t accepted = 0;
    for (std::size_t i = 0; i < rounds(1500); ++i) {
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
        ASSERT_EQ(Checker(text).findsNoError(), loads) << errorsOf(text) << text;
    }
    EXPECT_GE(accepted, rounds(20));
}
