// New files, of which examples/minimal.fed is one.

#include "infrastructure/RtiFedLimits.hh"
#include "tests/Support.hh"
#include "tests/tool/FormattedText.hh"
#include "tool/commands/Commands.hh"

#include <filesystem>
#include <regex>

namespace {

std::string newText(const NewOptions &options) {
    std::ostringstream out, err;
    EXPECT_EQ(newFile(options, Console{out, err}), done);
    EXPECT_EQ(err.str(), "");
    return out.str();
}

std::string checked(const std::string &text) {
    std::ostringstream out;
    const auto report = textReport(out, {});
    report->begin();
    reportFindings({"new.fed", text}, Severity::warning, 50, *report);
    report->end();
    return out.str();
}

} // namespace

TEST(New, LoadsAndIsFormattedWithAndWithoutItsExamples) {
    const std::string text = newText({"Minimal"});
    EXPECT_EQ(text, example("minimal.fed")) << "examples/minimal.fed is made by: rtifed new Minimal";
    const std::string uncommented = std::regex_replace(text, std::regex("\n( *); "), "\n$1");
    EXPECT_NE(uncommented.find("\n      (class Vehicle\n"), std::string::npos);
    for (const std::string &each : {text, uncommented}) {
        EXPECT_EQ(checked(each), "");
        EXPECT_EQ(formattedText(each), each);
    }
}

TEST(New, LacksOnlyTheMomIfAskedTo) {
    const std::string text = newText({"Minimal", false});
    EXPECT_EQ(formattedText(text), text);
    EXPECT_NE(text.find(";;     rtifed fix --mom"), std::string::npos);
    const std::string findings = checked(text);
    const std::regex finding("error: [^\n]*\\[mom-incomplete\\]");
    EXPECT_EQ(std::regex_replace(findings, finding, "").find("error:"), std::string::npos) << findings;
    EXPECT_TRUE(std::regex_search(findings, finding));
}

TEST(New, HasTheNameThatIsGiven) {
    const std::string longest(kMaxNameLength, 'a');
    for (const std::string name : {"F", "a b", "(", "a;b", " ", "\t", "//", "reliable", "\xEF\xBB\xBF\x01\xFF"})
        EXPECT_EQ(load(newText({name}))->getFederateName(), name);
    EXPECT_EQ(load(newText({longest}))->getFederateName(), longest);
    for (const std::string &name : {std::string(), std::string("\""), std::string("a\"b"), std::string("a\nb"),
                                    std::string("\r"), std::string("a\0", 2), longest + 'a'})
        EXPECT_THROW(newText({name}), CannotWork) << name;
}

TEST(New, ReplacesNoFile) {
    const TemporaryFile file("old");
    EXPECT_THROW(newText({"F", true, file.path()}), CannotWork);
    EXPECT_EQ(readFile(file.path()), "old");
    std::filesystem::remove(file.path());
    EXPECT_EQ(newText({"F", true, file.path()}), "");
    EXPECT_EQ(readFile(file.path()), newText({"F"}));
}
