#include "tests/Support.hh"
#include "tool/commands/Commands.hh"
#include "tool/console/Digest.hh"
#include "tool/console/JsonWriter.hh"

#include <algorithm>

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// A folder that is removed with this object.
class TemporaryFolder {
public:
    TemporaryFolder() : _path(fs::temp_directory_path() / "rtifed-html-XXXXXX") {
        EXPECT_NE(mkdtemp(_path.data()), nullptr);
    }
    ~TemporaryFolder() { fs::remove_all(_path); }

    std::string operator/(const std::string &name) const { return _path + '/' + name; }
    std::string write(const std::string &name, const std::string &contents) const {
        fs::create_directories(fs::path(*this / name).parent_path());
        std::ofstream(*this / name, std::ios::binary) << contents;
        return *this / name;
    }
    /// The names of all files, and their contents.
    std::map<std::string, std::string> files() const {
        std::map<std::string, std::string> all;
        for (const auto &entry : fs::recursive_directory_iterator(_path))
            if (entry.is_regular_file())
                all[entry.path().lexically_relative(_path).string()] = readFile(entry.path().string());
        return all;
    }

private:
    std::string _path;
};

struct Outcome {
    Status status;
    std::string out, err;
};

template <class Command>
Outcome run(Command command) {
    std::ostringstream out, err;
    const Console console{out, err};
    try {
        const Status status = command(console);
        return {status, out.str(), err.str()};
    } catch (const CannotWork &why) {
        return {cannotWork, out.str(), why.what()};
    }
}

HtmlOptions htmlOf(const std::string &file, const std::string &output = "-", const std::string &against = "") {
    HtmlOptions options;
    options.fileName = file;
    options.output = output;
    options.against = against;
    return options;
}

Outcome runHtml(const HtmlOptions &options) {
    return run([&](const Console &console) { return html(options, console); });
}

/// The contents of the element that begins with `tag`, as a browser reads those of scripts and styles.
std::string element(const std::string &page, const std::string &tag, const std::string &end) {
    const std::size_t begin = page.find(tag) + tag.size();
    EXPECT_GE(begin, tag.size()) << tag;
    return page.substr(begin, page.find(end, begin) - begin);
}

Json dataOf(const std::string &page) {
    return Json::parse(element(page, "<script id=\"data\" type=\"application/json\">", "</script"));
}

std::string policyOf(const std::string &page) {
    return element(page, "http-equiv=\"Content-Security-Policy\" content=\"", "\"");
}

/// The findings of `check` without the suppressed ones, as the page has them.
Json findingsOfCheck(const std::string &file, const ConfigurationOptions &configuration) {
    CheckOptions options;
    options.files = {file};
    options.configuration = configuration;
    options.format = jsonReport;
    const Json report = Json::parse(run([&](const Console &c) { return check(options, c); }).out);
    return report["files"][0]["findings"];
}

Json outputOf(const std::function<Status(const Console &)> &command) {
    return Json::parse(run(command).out);
}

constexpr const char *kHostile[] = {"</script><img src=x onerror=alert(1)>",
                                    "<!--<script>",
                                    "]]>&lt;&#60;",
                                    "{{script}}",
                                    "'};alert(1)//\\",
                                    "\xE2\x80\xA8\xFF\x01<b>",
                                    "</style></title></SCRIPT x>",
                                    "\xEF\xBF\xBF",
                                    "__proto__"};

} // namespace

TEST(Html, KeepsHostileNamesAsText) {
    std::string first;
    for (const std::string name : kHostile) {
        SCOPED_TRACE(name);
        const std::string attribute = "(attribute \"" + name + "\" reliable slow)";
        const std::string text = ";; " + name + "\n(class \"" + name + "\" " + attribute + ") ;; " + name;
        const TemporaryFolder folder;
        const std::string file =
            folder.write(replaced(name, name, name.find('/') == std::string::npos ? name : "x") + ".fed",
                         replaced(withMom(text, "", "(space \"" + name + "\")"), "Federation Minimal",
                                  "Federation \"" + name + '"'));
        const std::string page = runHtml(htmlOf(file)).out;
        const Json data = dataOf(page);
        const std::string read = Json::parse(Json(name).dump(-1, ' ', false, Json::error_handler_t::replace));
        EXPECT_EQ(data["model"]["federation"], read);
        EXPECT_TRUE(std::any_of(data["documentation"].begin(), data["documentation"].end(),
                                [&](const Json &entry) { return entry["text"].get<std::string>().find(read) == 0; }));
        EXPECT_NE(data["findings"][0]["text"].get<std::string>().find("slow"), std::string::npos);
        // What remains without the contents of style and scripts is the template.
        std::string rest = page;
        for (const char *tag : {"<style>", "<script id=\"data\" type=\"application/json\">", "<script>"}) {
            const std::string contents = element(rest, tag, tag[2] == 't' ? "</style" : "</script");
            rest.replace(rest.find(contents, rest.find(tag)), contents.size(), "");
        }
        const std::string title = element(rest, "<title>", "</title");
        EXPECT_EQ(title.find('<'), std::string::npos);
        const std::string empty = replaced(rest, title, "");
        first = first.empty() ? empty : first;
        EXPECT_EQ(empty, first);
    }
}

TEST(Html, AllowsOnlyTheStyleAndScriptThatAreInThePage) {
    EXPECT_EQ(sha256InBase64(""), "47DEQpj8HBSa+/TImW+5JCeuQeRkm5NMpJWZG3hSuFU=");
    const TemporaryFolder folder;
    folder.write("models/a.fed", example("minimal.fed"));
    EXPECT_EQ(runHtml(htmlOf(folder / "models", folder / "site")).status, done);
    for (const char *name : {"site/a.fed.html", "site/index.html"}) {
        const std::string page = readFile(folder / name);
        const std::string style = element(page, "<style>", "</style"), script = element(page, "<script>", "</script");
        EXPECT_EQ(policyOf(page), "default-src 'none'; script-src 'sha256-" + sha256InBase64(script) +
                                      "'; style-src 'sha256-" + sha256InBase64(style) +
                                      "'; base-uri 'none'; form-action 'none'");
        EXPECT_EQ(page.find("{{"), std::string::npos);
        EXPECT_EQ(page.find("style=\""), std::string::npos); // which the policy forbids
    }
}

TEST(Html, HasTheDataOfTheOtherCommands) {
    const TemporaryFolder folder;
    const std::string harbour = example("harbour.fed");
    const std::string old = folder.write("old.fed", harbour);
    const std::string slow =
        "(attribute a slow receive) (attribute b slow receive) ;; rtifed: allow unknown-transportation known\n"
        "(attribute c slow receive) (attribute d slow receive)";
    const std::string config = folder.write("config", "[rules]\nunused-space = \"error\"\nno-rti-private = \"off\"\n");
    const std::string image = folder.write("image", bytesOf(*load(harbour)));
    for (const std::string &text : {harbour, replaced(harbour, "(class Ferry", "(class CarFerry"),
                                    replaced(harbour, "(class Ferry", slow + "(class Ferry"), readFile(image),
                                    harbour.substr(0, harbour.size() / 2), std::string("no FED text"), std::string()}) {
        SCOPED_TRACE(text.substr(0, 100));
        HtmlOptions options = htmlOf(folder.write("new.fed", text), "-", old);
        options.configuration.file = config;
        const std::string &file = options.fileName;
        const Outcome page = runHtml(options);
        Json data = dataOf(page.out);
        EXPECT_EQ(data["model"], outputOf([&](const Console &c) { return json({file}, c); }));
        EXPECT_EQ(data["before"], outputOf([&](const Console &c) { return json({old}, c); }));
        EXPECT_EQ(page.status, data["model"]["loads"] ? done : wrong);
        EXPECT_EQ(page.err.empty(), page.status == done);
        DiffOptions diffOptions{old, file};
        diffOptions.all = true;
        const std::string inText = run([&](const Console &c) { return diff(diffOptions, c); }).out;
        diffOptions.json = true;
        EXPECT_EQ(data["difference"], outputOf([&](const Console &c) { return diff(diffOptions, c); }));
        EXPECT_NE(inText.find(data["wording"]["explanation"]), std::string::npos);
        std::multiset<std::size_t> worded, changes;
        for (const Json &group : data["wording"]["groups"]) {
            EXPECT_NE(inText.find(group["sign"].get<std::string>() + ' ' + group["headline"].get<std::string>()),
                      inText.npos);
            for (const Json &change : group["changes"])
                worded.insert(change["change"].get<std::size_t>());
        }
        for (std::size_t i = 0; i < data["difference"]["changes"].size(); ++i)
            changes.insert(i);
        EXPECT_EQ(worded, changes);
        std::set<std::string> rules, explained;
        for (Json &finding : data["findings"]) {
            finding.erase("of");
            EXPECT_EQ(finding["furtherOf"].size(), finding["furtherPlaces"].size());
            finding.erase("furtherOf");
            rules.insert(finding["rule"]);
        }
        EXPECT_EQ(data["findings"], findingsOfCheck(file, options.configuration));
        for (const auto &[rule, texts] : data["rules"].items())
            explained.insert(rule);
        EXPECT_EQ(explained, rules);
        EXPECT_EQ(data["complete"], rules.count("unclosed-clause") + rules.count("not-a-fed-text") == 0);
    }
}

TEST(Html, KnowsWhatFindingsAndCommentsAreAbout) {
    const TemporaryFile file(R"(; The model.
; ------
; rtifed: allow letter-case no documentation
(FED ;; of a harbour

 ;; Units: metres.
 (Federation F) ;; the federation
 ;; not of the file
 (Federate "a" "b") ;; either
 (FEDversion v)
 ;; All
 (spaces ;; spaces
  (space S ;; the space
   (dimension x) ;; its dimension
   (dimension X)))
 (objects ;; The classes
  ;; The root,
  ;; in two lines.
  (class ObjectRoot
   (attribute privilegeToDelete reliable slow1) ;; who may delete
   (class A ;; rtifed: allow letter-case no documentation
    (attribute a reliable slow2)
    (class B (attribute a reliable timestamp)
     (attribute b reliable slow3)) (class C (attribute a reliable timestamp)))
   (class A (attribute c reliable slow4)))) ;; again
 (interactions
  (class InteractionRoot reliable slow5
   (class I reliable timestamp (parameter p) (parameter P)))))
)");
    const Json data = dataOf(runHtml(htmlOf(file.path())).out);
    const auto named = [&data](const Json &of) -> std::string {
        if (of.is_null())
            return "-";
        if (of.size() == 1)
            return "all of " + of[0].get<std::string>();
        const char *classes = of[0] == "object" ? "objectClasses" : of[0] == "space" ? "spaces" : "interactionClasses";
        const char *members = of[0] == "object" ? "attributes" : of[0] == "space" ? "dimensions" : "parameters";
        const Json &owner = data["model"][classes].at(of[1].get<std::size_t>());
        const std::string name = owner["name"];
        return of.size() == 2 ? name
                              : name + '/' + owner[members].at(of[2].get<std::size_t>())["name"].get<std::string>();
    };
    std::map<int, std::string> byLine;
    for (const Json &finding : data["findings"]) {
        if (finding["rule"] == "mom-incomplete" || finding["rule"] == "unused-space")
            continue;
        const std::string rule = finding["rule"].get<std::string>() + ' ';
        byLine[finding["place"]["line"]] += rule + named(finding["of"]) + '\n';
        for (std::size_t i = 0; i < finding["furtherOf"].size(); ++i)
            byLine[finding["furtherPlaces"][i]["place"]["line"]] += rule + named(finding["furtherOf"][i]) + '\n';
    }
    std::string findings, comments;
    for (const auto &[line, texts] : byLine)
        findings += std::to_string(line) + ' ' + texts;
    for (const Json &entry : data["documentation"])
        comments += named(entry["of"]) + ": " + entry["text"].get<std::string>() + '\n';
    EXPECT_EQ(findings, "3 unused-suppression -\n"
                        "15 repeated-dimension S/x\n"
                        "19 no-rti-private ObjectRoot\n"
                        "20 unknown-ordering ObjectRoot/privilegeToDelete\n"
                        "21 unused-suppression ObjectRoot.A\n"
                        "22 unknown-ordering ObjectRoot.A/a\n"
                        "23 inherited-member ObjectRoot.A.B\n"
                        "24 inherited-member ObjectRoot.A.C\nunknown-ordering ObjectRoot.A.B/b\n"
                        "25 repeated-class ObjectRoot.A\nunknown-ordering ObjectRoot.A/c\n"
                        "27 unknown-ordering InteractionRoot\nno-rti-private InteractionRoot\n"
                        "28 repeated-member InteractionRoot.I/p\n");
    EXPECT_EQ(comments,
              "-: The model.\nof a harbour\n\nUnits: metres.\nthe federation\nall of space: All\nspaces\n"
              "all of object: The classes\nS: the space\nS/x: its dimension\nObjectRoot: The root,\nin two lines.\n"
              "ObjectRoot/privilegeToDelete: who may delete\nObjectRoot.A/c: again\n");
}

TEST(Html, ShowsTheCommentsAboutTheWholeFile) {
    const struct {
        const char *text, *comments;
    } kCases[] = {{"", ""},
                  {"; only\r\n;\r\n; comments", "only\n\ncomments"},
                  {";\n;\n; a\n;\n;;;;\n\n\n;; b\n", "a\n\nb"},
                  {"; a\n(FED)", "a"},
                  {"; a\n\n; of the section\n(objects)", "a"},
                  {"(FED ; a\n\n; b\n\n; of the section\n(objects) ; c\n)", "a\n\nb"},
                  {"(FED\n ; of a class\n (class ObjectRoot) ; b\n", ""},
                  {"; a\n(FED ; b\n() ; c\n(objects ; d\n))", "a\nb"},
                  {"; a\n(FED (interactions class) e (parameter x) parameter x))))", "a"},
                  {"; a\n(FED ())(objects()class)x)))", "a"},
                  {"; a\n(fed (FEDVERSION v) ; b\n ; c\n (federation F)) ; d", "a\nb\nc\nd"}};
    for (const auto &[text, comments] : kCases) {
        const Json data = dataOf(runHtml(htmlOf(TemporaryFile(text).path())).out);
        std::string shown;
        for (const Json &entry : data["documentation"])
            if (entry["of"].is_null())
                shown += entry["text"].get<std::string>();
        EXPECT_EQ(shown, comments) << text;
    }
}

TEST(Html, WritesAPageForEachFileOfAFolder) {
    const TemporaryFolder folder;
    folder.write("old/sub/b.fed", example("minimal.fed"));
    folder.write("old/gone.fed", example("minimal.fed"));
    folder.write("old/wrong.fed", "(FED");
    folder.write("site/models/index.html", "");
    folder.write("models/sub/b.fed", replaced(example("minimal.fed"), "(spaces", ";;\n(spaces"));
    folder.write("models/<i>&\"%.FED", example("harbour.fed"));
    folder.write("models/wrong.fed", "(FED (Federation <F>) (FEDversion v))");
    folder.write("models/damaged.fed", std::string(3, '\0'));
    const Outcome outcome = runHtml(htmlOf(folder / "models", folder / "site/models", folder / "old"));
    EXPECT_EQ(outcome.status, wrong);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out, folder / "site/models/index.html: 2 load, 2 refused: 1 damaged, 1 without a complete MOM\n");
    std::set<std::string> pages;
    for (const auto &[name, contents] : folder.files())
        if (name.rfind("site/", 0) == 0)
            pages.insert(name.substr(12));
    EXPECT_EQ(pages, (std::set<std::string>{"<i>&\"%.FED.html", "damaged.fed.html", "index.html", "sub/b.fed.html",
                                            "wrong.fed.html"}));
    const Json b = dataOf(readFile(folder / "site/models/sub/b.fed.html"));
    EXPECT_EQ(b["index"], "../index.html");
    EXPECT_EQ(b["model"]["file"], "sub/b.fed"); // not where the folder is
    EXPECT_EQ(b["difference"]["verdict"], "same");
    EXPECT_EQ(b["before"]["file"], "old/sub/b.fed");
    const Json damaged = dataOf(readFile(folder / "site/models/damaged.fed.html"));
    EXPECT_EQ(damaged["complete"], false);
    EXPECT_EQ(damaged["findings"][0]["rule"], "damaged-image");
    for (const char *link : {"loop", "site/models/sub"}) {
        fs::remove_all(folder / link);
        fs::create_symlink(fs::path(link).filename(), folder / link);
    }
    const std::string looped = ": Too many levels of symbolic links";
    EXPECT_EQ(runHtml(htmlOf(folder / "models", folder / "loop")).err, (folder / "loop") + looped);
    EXPECT_EQ(runHtml(htmlOf(folder / "models", folder / "site/models")).err,
              "rtifed: " + (folder / "site/models/sub") + looped + '\n');
}

TEST(Html, ReplacesOnlyItsOwnPagesAndLeavesTheFolderNever) {
    const TemporaryFolder folder;
    const std::string file = folder.write("models/sub/a.fed", example("minimal.fed"));
    const std::string mine = folder.write("mine.html", "<!doctype html><title>Start</title>");
    fs::create_directories(folder / "outside");
    fs::create_directories(folder / "linked");
    fs::create_directory_symlink(folder / "outside", folder / "linked/sub");
    fs::create_directories(folder / "filelink/sub");
    EXPECT_EQ(runHtml(htmlOf(file, folder / "other.html")).status, done);
    fs::create_symlink(folder / "other.html", folder / "filelink/sub/a.fed.html");
    folder.write("taken/index.html", "of the team");
    folder.write("clash/a.fed", "");
    folder.write("clash/a.fed.html/b.fed", "");
    const auto before = folder.files();
    const struct {
        HtmlOptions options;
        std::string message;
    } kRefused[] = {
        {htmlOf(file, file), file + ": the file is not a page of rtifed, so it is not replaced by one"},
        {htmlOf(file, mine), mine + ": the file is not a page of rtifed, so it is not replaced by one"},
        {htmlOf(file, folder / "none/a.html"), folder / "none/a.html: No such file or directory"},
        {htmlOf(file, "-", folder / "none.fed"), folder / "none.fed: there is no such file; as a revision in git: "},
        {htmlOf(folder / "models"), folder / "models: expected -o FOLDER for the pages of a folder"},
        {htmlOf(folder / "models", mine), mine + ": expected a folder, found a file"},
        {htmlOf(folder / "models", folder / "site", file),
         file + ": expected a folder, as " + (folder / "models is one")},
        {htmlOf(folder / "outside", folder / "site"), folder / "outside: the folder has no FED files"},
        {htmlOf(folder / "clash", folder / "site"), "a.fed.html/b.fed: its page needs a folder a.fed.html, which is"}};
    for (const auto &[options, message] : kRefused) {
        const Outcome outcome = runHtml(options);
        EXPECT_EQ(outcome.status, cannotWork);
        EXPECT_EQ(outcome.err.substr(0, message.size()), message);
        EXPECT_EQ(folder.files(), before);
    }
    for (const char *output : {"linked", "filelink", "taken"}) {
        const Outcome outcome = runHtml(htmlOf(folder / "models", folder / output));
        EXPECT_EQ(outcome.status, cannotWork) << output;
        EXPECT_NE(outcome.err.find(folder / output), std::string::npos);
        for (const auto &[name, contents] : before)
            EXPECT_EQ(readFile(folder / name), contents);
        EXPECT_TRUE(fs::is_empty(folder / "outside"));
    }
    EXPECT_EQ(runHtml(htmlOf(file, folder / "page.html")).status, done);
    EXPECT_EQ(runHtml(htmlOf(file, folder / "page.html", file)).status, done); // again
    EXPECT_EQ(dataOf(readFile(folder / "page.html"))["difference"]["verdict"], "identical");
}
