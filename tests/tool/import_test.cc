#include "fuzz/Import.hh"
#include "infrastructure/RtiFedLimits.hh"
#include "tests/Support.hh"
#include "tests/tool/RandomModel.hh"
#include "tool/commands/Commands.hh"
#include "tool/fom/export/FomExport.hh"
#include "tool/fom/import/XmlNesting.hh"

#include <nlohmann/json.hpp>

#include <array>
#include <chrono>
#include <regex>

namespace {

using Verdict = Comparison::Verdict;

/// Returns XML made of a short form: $NAME(CONTENT) is an element, one letter for each of the frequent ones: o and i
/// for classes, a and p for members, n for names, t and s for how they are sent. A section alone gets the outermost
/// element.
std::string expanded(const std::string &text) {
    static const std::map<std::string, std::string> names = {
        {"o", "objectClass"},  {"i", "interactionClass"}, {"a", "attribute"},  {"p", "parameter"},
        {"n", "name"},         {"t", "transportation"},   {"s", "order"},      {"O", "objects"},
        {"I", "interactions"}, {"d", "dimension"},        {"D", "dimensions"}, {"S", "sharing"}};
    std::string xml;
    std::vector<std::string> open;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '$') {
            const std::size_t end = text.find('(', at);
            const std::string name = text.substr(at + 1, end - at - 1);
            open.push_back(names.count(name) > 0 ? names.at(name) : name);
            xml += '<' + open.back() + '>';
            at = end;
        } else if (text[at] == ')' && !open.empty()) {
            xml += "</" + open.back() + '>';
            open.pop_back();
        } else {
            xml += text[at];
        }
    }
    const bool isSection = xml.find("objectModel") == std::string::npos && xml.find("<?") == std::string::npos;
    return isSection ? std::string("<objectModel xmlns=\"") + kFomNamespace + "\">" + xml + "</objectModel>" : xml;
}

/// Returns the modules of a text, which lines "+" separate, as a.xml, b.xml and so on.
std::vector<Input> modulesIn(const std::string &text) {
    std::vector<Input> modules;
    std::istringstream lines(text + "\n+\n");
    for (std::string line, module; std::getline(lines, line);)
        if (line == "+") {
            module.pop_back();
            modules.push_back({std::string(1, static_cast<char>('a' + modules.size())) + ".xml", expanded(module)});
            module.clear();
        } else {
            module += line + '\n';
        }
    return modules;
}

/// Returns FED text without the Management Object Model that every import has.
std::string withoutMom(std::string text) {
    for (std::size_t begin = 0; (begin = text.find("\n\n      ;; The Management Object Model")) != std::string::npos;)
        text.erase(begin, text.find("\n      )", begin) + 8 - begin);
    return text;
}

std::string findingsOf(const Import &import) {
    std::ostringstream out;
    const auto report = conciseReport(out, {});
    for (const FomModules::Module &module : import.modules())
        reportFindings(sourceOf(module), module.findings, kAllShown, *report);
    return out.str();
}

std::string objectModel(const std::string &objects) {
    return expanded("$O($o($n(HLAobjectRoot)" + objects + "))");
}

struct Ran {
    Status status;
    std::string out, err;
};

template <class Command, class Options>
Ran run(Command command, const Options &options) {
    std::ostringstream out, err;
    const Status status = command(options, Console{out, err});
    return {status, out.str(), err.str()};
}

/// Returns the classes of an outline, each with the numbers of its subclasses and of all classes below it.
std::string classesOf(const Outline &outline) {
    std::string all;
    for (const TreeKind *tree : kTreeKinds)
        for (const Outline::Class &node : outline.classes(*tree))
            all += node.name + ' ' + std::to_string(node.children.size()) + '/' + std::to_string(node.numDescendants) +
                   ' ';
    return all;
}

/// Returns what diff says of two texts.
Ran difference(const std::string &before, const std::string &after, bool json = false) {
    const TemporaryFile old(before), now(after);
    DiffOptions options{old.path(), now.path(), true};
    options.json = json;
    Ran ran = run(diff, options);
    ran.out = std::regex_replace(ran.out, std::regex(old.path()), "old");
    ran.out = std::regex_replace(ran.out, std::regex(now.path()), "new");
    return ran;
}

std::string exported(const std::string &fed, FomForm form = FomForm::interchange) {
    std::vector<ExportNote> notes;
    return exportedModel(readOutline({"a.fed", fed}), {}, "", form, notes);
}

} // namespace

TEST(ImportTest, Cases) {
    forEachCase("import.txt", [](const std::string &text) {
        const std::vector<Input> modules = modulesIn(text);
        EXPECT_EQ(faultOfImport(modules), "");
        const Import import(modules);
        return findingsOf(import) + (import.succeeds() ? withoutMom(import.text()) : "");
    });
}

/// The way out and back gives the same model with the same handles, in each form of export.
TEST(ImportTest, ExportsComeBack) {
    for (unsigned seed = 0; seed < rounds(500); ++seed) {
        SCOPED_TRACE(seed);
        RandomModel model(seed);
        for (int i = 0; i < 8; ++i)
            model.edit();
        const std::string fed = model.text();
        const std::string xml =
            exported(fed, std::array{FomForm::interchange, FomForm::fdd, FomForm::module}[seed % 3]);
        const Import import({{"a.xml", xml}});
        ASSERT_TRUE(import.succeeds()) << findingsOf(import) << xml;
        const Comparison comparison(readOutline({"a.fed", fed}), readOutline({"b.fed", import.text()}), false);
        EXPECT_EQ(Comparison::nameOf(comparison.verdict()), std::string("same")) << fed << xml << import.text();
        EXPECT_EQ(difference(fed, xml).status, done);
        EXPECT_EQ(difference(xml, fed).status, done);
    }
}

/// An edit of the FED of a pair shows as what it is in the FED alone, but for handles and the federation.
TEST(ImportTest, DiffFindsWhatDrifted) {
    for (unsigned seed = 0; seed < rounds(200); ++seed) {
        SCOPED_TRACE(seed);
        RandomModel model(seed);
        const std::string fed = model.text(), xml = exported(fed);
        model.edit();
        const std::string edited = model.text();
        Outline before = readOutline({"a.fed", fed}), after = readOutline({"b.fed", edited});
        removeWhatXmlLacks(before, after);
        before.hasHandles = after.hasHandles = false;
        const Comparison expected(before, after, false);
        const auto json = nlohmann::json::parse(difference(xml, edited, true).out);
        EXPECT_EQ(json["verdict"], Comparison::nameOf(expected.verdict())) << edited << xml;
        ASSERT_EQ(json["changes"].size(), expected.changes().size()) << edited << xml;
        for (std::size_t i = 0; i < expected.changes().size(); ++i) {
            EXPECT_EQ(json["changes"][i]["kind"], Comparison::nameOf(expected.changes()[i].kind));
            EXPECT_EQ(json["changes"][i]["name"], expected.changes()[i].element().name);
        }
    }
}

TEST(ImportTest, OutlineOfAnExportIsThatOfTheFed) {
    const auto outlineOfXml = [](const std::string &xml, const Outline &similar) {
        return Import({{"a.xml", xml}}).outline(similar.spaces);
    };
    Outline a = readOutline({"a.fed", example("harbour.fed")}), b = outlineOfXml(exported(example("harbour.fed")), a);
    EXPECT_EQ(a.federation + '|' + a.version, b.federation + '|' + b.version);
    EXPECT_TRUE(b.loads);
    EXPECT_EQ(b.objects.front().numDescendants + 1, b.objects.size());
    removeWhatXmlLacks(a, b);
    EXPECT_EQ(a.federation + a.version, "");
    EXPECT_EQ(classesOf(a), classesOf(b));
    EXPECT_FALSE(outlineOfXml(objectModel(""), a).interactions.front().place); // a root that the text lacks
    // A root stays in both unless it is empty in both; only a root has the classes of the RTI.
    for (const auto &[fed, xml, left, right] :
         std::initializer_list<std::tuple<const char *, const char *, const char *, const char *>>{
             {"", "", "", ""},
             {"(objects (class ObjectRoot (class A (class B))) (class C (class Manager)))", "$O($o($n(HLAobjectRoot)))",
              "ObjectRoot 1/2 ObjectRoot.A 1/1 ObjectRoot.A.B 0/0 C 1/1 C.Manager 0/0 ", "ObjectRoot 0/0 "},
             {"", "$O($o($n(HLAobjectRoot)$o($n(A)$S(Neither))))", "", "ObjectRoot 1/1 ObjectRoot.A 0/0 "}}) {
        Outline old = readOutline({"a.fed", std::string("(FED (Federation F) (FEDversion v)") + fed + ')'}),
                now = outlineOfXml(expanded(xml), old);
        removeWhatXmlLacks(old, now);
        EXPECT_EQ(classesOf(old) + '|' + classesOf(now), std::string(left) + '|' + right);
    }
}

TEST(ImportTest, DiffSetsAsideWhatXmlLacks) {
    const std::string fed =
        withMom("(class Boat (attribute A reliable receive Sea) (class Tug (attribute a reliable receive)))", "",
                "(space Sea (dimension x) (dimension y)) (space Here)");
    const auto xml = [](const std::string &dimensions, const std::string &order) {
        return expanded("$O($o($n(HLAobjectRoot)$o($n(Boat)$a($n(A)" + dimensions + "$t(HLAreliable)$s(" + order +
                        "))$o($n(Tug)))))$D($d($n(x))$d($n(y))$d($n(Here)))");
    };
    // The spaces of a FED kept by hand are found by their dimensions, and a member declared again is inherited.
    const Ran same = difference(fed, xml("$D($d(y)$d(x))", "Receive"));
    EXPECT_EQ(same.out,
              "old -> new: same, as far as it can be understood: the models are the same; only text, comments "
              "or form of the files differ.\n");
    EXPECT_NE(same.err.find("does not load"), std::string::npos);
    EXPECT_EQ(same.status, done);
    const Ran drifted = difference(fed, xml("", "TimeStamp"));
    EXPECT_EQ(drifted.out, "old -> new: incompatible, as far as it can be understood\n"
                           "Something in the old model was removed or changed: federates made for it may fail with the "
                           "new one.\n"
                           "  - space Sea, with 2 dimensions (old:8)\n"
                           "      dimension Sea.x (old:8)\n"
                           "      dimension Sea.y (old:8)\n"
                           "  ~ ordering receive -> timestamp: attribute ObjectRoot.Boat.A (new:1)\n"
                           "  ~ space Sea -> none: attribute ObjectRoot.Boat.A (new:1)\n"
                           "  + space x, with 1 dimension (new:1)\n"
                           "      dimension x.x\n"
                           "  + space y, with 1 dimension (new:1)\n"
                           "      dimension y.y\n");
    EXPECT_EQ(drifted.status, wrong);
    EXPECT_EQ(nlohmann::json::parse(difference(fed, xml("", "Receive"), true).out)["new"]["form"], "xml");
    // What is lost for lack of a name or a dimension may be the difference.
    for (const std::string &lost :
         {xml("$D($d(y)$d(x))", "Receive))$a($t(HLAreliable)$s(Receive"), xml("$D($d(Land))", "Receive"),
          replaced(xml("$D($d(y)$d(x))", "Receive"), "</dimensions></obj", "<dimension/></dimensions></obj")}) {
        const Ran unknown = difference(fed, lost);
        EXPECT_EQ(unknown.out.find("+ space , "), std::string::npos) << unknown.out;
        EXPECT_NE(unknown.out.find("unknown whether"), std::string::npos) << unknown.out;
        EXPECT_EQ(unknown.status, wrong);
    }
    // The verdicts are the same in both directions, whether or not the files load.
    const auto bare = [](const std::string &objects) {
        return "(FED (Federation F) (FEDversion v1.3) (spaces (space Sea (dimension x) (dimension Y))) (objects (class "
               "ObjectRoot (class Tug) (class Boat " +
               objects + "))) (interactions (class InteractionRoot best_effort receive (class Fog reliable receive))))";
    };
    const std::string tug = "$o($n(Tug))", boat = "$o($n(Boat)$a($n(A)$D($d(Sea.Y)$d(Sea.x))$t(HLAreliable)$s(Receive)";
    const std::string sea =
        "))$I($i($n(HLAinteractionRoot)$i($n(Fog)$t(HLAreliable)$s(Receive))))$D($d($n(Sea.Y))$d($n(Sea.x)";
    const std::string old = bare("(attribute A reliable receive Sea)");
    const std::tuple<std::string, std::string, Verdict> pairs[] = {
        {fed, xml("$D($d(y)$d(x))", "Receive"), Verdict::same},
        {old, objectModel(tug + boat + "))" + sea), Verdict::same},
        {old, replaced(objectModel(tug + boat + "))" + sea), kFomNamespace, ""), Verdict::same},
        {bare(""), objectModel(tug + "$o($n(Boat))" + replaced(sea, "$n(HLA", "$t(HLAreliable)$n(HLA")),
         Verdict::incompatible},
        {old, objectModel(tug + boat + "$extra()))" + sea), Verdict::incompatible},
        {old, objectModel(tug + boat + "$s(Receive)))" + sea), Verdict::incompatible},
        {old, objectModel(tug + boat + ")$a($n(a)$t(HLAreliable)$s(TimeStamp)))" + sea), Verdict::incompatible}};
    for (const auto &[a, b, verdict] : pairs)
        for (const auto &[before, after] : {std::pair(a, b), std::pair(b, a)})
            EXPECT_EQ(nlohmann::json::parse(difference(before, after, true).out)["verdict"],
                      Comparison::nameOf(verdict))
                << difference(before, after).out;
    EXPECT_NE(difference(old, objectModel(sea)).out.find("  - object class ObjectRoot.Boat"), std::string::npos);
    // What cannot be read at all is no model to compare.
    EXPECT_THROW(difference(fed, "<objectModel>"), CannotWork);
    EXPECT_THROW(difference("<html></html>", fed), CannotWork);
}

/// The commands: check reports what import refuses, in all formats and under the control of options and baselines.
TEST(ImportTest, CheckSaysWhatImportWould) {
    const TemporaryFile base(objectModel("$o($n(Boat)$S(Neither)$a($n(A)$t(HLAreliable)$s(Receive)))")),
        extension(objectModel("$o($n(Boat)$o($n(Tug)))")), fed(example("minimal.fed"));
    ImportOptions import{{extension.path()}};
    EXPECT_EQ(run(importModel, import).status, wrong);
    EXPECT_EQ(run(importModel, import).out, "");
    import.files = {extension.path(), base.path()};
    const Ran imported = run(importModel, import);
    EXPECT_EQ(imported.status, done) << imported.err;
    EXPECT_NE(imported.out.find("(class Tug"), std::string::npos);
    import.output = fed.path();
    EXPECT_EQ(run(importModel, import).out, "");
    EXPECT_EQ(readFile(fed.path()), imported.out);

    CheckOptions options;
    options.files = {extension.path(), fed.path(), base.path()};
    EXPECT_EQ(run(check, options).status, done);
    options.files = {extension.path()};
    EXPECT_NE(run(check, options)
                  .out.find(extension.path() + ":1:129: error: no module defines the object class "
                                               "\"ObjectRoot.Boat\": only its name and subclasses are "
                                               "here [undefined-class]"),
              std::string::npos)
        << run(check, options).out;
    for (ReportMaker *format : {jsonReport, sarifReport, githubReport, gitlabReport, junitReport}) {
        options.format = format;
        const Ran ran = run(check, options);
        EXPECT_EQ(ran.status, wrong);
        EXPECT_NE(ran.out.find("undefined-class"), std::string::npos) << ran.out;
    }
    const TemporaryFile baseline("");
    options.writeBaseline = baseline.path();
    EXPECT_EQ(run(check, options).out, baseline.path() + ": 1 finding of 1 file\n");
    options.writeBaseline.clear();
    options.baseline = baseline.path();
    EXPECT_EQ(run(check, options).status, done);
    options.addAllow = "why";
    EXPECT_EQ(run(check, options).status, cannotWork);
}

/// Each of these ends soon.
TEST(ImportTest, HostileTextsAreRefused) {
    const auto times = [](std::size_t count, const std::string &text) {
        std::string all;
        all.reserve(count * text.size());
        while (count-- > 0)
            all += text;
        return all;
    };
    // Classes whose full names have some 40 MB together.
    const auto longNames = [&](char kind) {
        const std::string type = kind == 'i' ? "$t(HLAreliable)$s(Receive)" : "$S(Neither)",
                          open = std::string(1, kind);
        std::string all = '$' + open + "($n(" + times(16000, "A") + ')' + type;
        for (int i = 0; i < 2500; ++i)
            all += '$' + open + "($n(B" + std::to_string(i) + ')' + type + ')';
        return all + ')';
    };
    const std::string interactions = "))$I($i($n(HLAinteractionRoot)" + longNames('i');
    const std::string laughs = "<!DOCTYPE objectModel [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;\">]>";
    const std::pair<std::string, std::string> texts[] = {
        {times(9000000, "<a>"), "expected at most 8388608 tags"},
        {'<' + std::string(kMaxXmlTags - 1, '='), "expected a tag of the form <NAME>"},
        {times(100000, "<a>"), "expected \"</a>\" for the element of"},
        {objectModel(times(300, "$o($n(A)") + times(300, ")")), "nested in more than 256 levels"},
        {objectModel(times(300, "$o(") + times(300, ")")), "nested in more than 256 levels"},
        {objectModel(times(200, "$o($n(" + times(100, "A") + ")") + times(200, ")")),
         "expected a full name of at most"},
        {objectModel(longNames('o') + interactions), "the full names of all classes together"},
        {objectModel("$o($n(Manager))" + longNames('o') + replaced(longNames('o'), "AAA", "aaC")),
         "the full names of all classes together"},
        {objectModel("$o($n(" + times(1000000, "A") + "))"), "expected a name of at most 16384 bytes, found 1000000"},
        {replaced(objectModel("$o($n(&b;))"), "<objectModel", laughs + "<objectModel"), "no entities are expanded"},
        {objectModel(times(101000, "$o($n(A))")), "too many errors"},
        {objectModel("").substr(0, 40) + std::string(1, '\0'), "found another encoding"},
        {"\xFF\xFE<\0o\0", "found another encoding"},
        {"", "found an empty file"},
        {"(FED)", "found \"(FED)\""}};
    for (const auto &[text, message] : texts) {
        const auto begin = std::chrono::steady_clock::now();
        const Import import({{"a.xml", text}});
        EXPECT_NE(findingsOf(import).find(message), std::string::npos) << findingsOf(import).substr(0, 500);
        EXPECT_FALSE(import.succeeds());
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(60));
    }
    // Warnings have a limit of their own, and do not refuse the model.
    std::string attributes, subclasses;
    for (int i = 0; i < 320; ++i)
        attributes += "$a($n(A" + std::to_string(i) + ")$t(HLAreliable)$s(Receive))";
    for (int i = 0; i < 320; ++i)
        subclasses += "$o($n(C" + std::to_string(i) + ')' + attributes + ')';
    const Import warned({{"a.xml", objectModel("$o($n(Boat)" + attributes + subclasses + ")")}});
    EXPECT_TRUE(warned.succeeds());
    const std::string longName = times(kMaxNameLength - 1, "A");
    EXPECT_EQ(faultOfImport({{"a.xml", expanded("$O($o($n(HLAobjectRoot)$a($n(B)$D($d(" + longName +
                                                ")$d(e))$t(HLAreliable)$s(Receive))))$D($d($n(" + longName +
                                                "))$d($n(a" + longName.substr(1) + "))$d($n(e)))")}}),
              "");
    EXPECT_EQ(warned.modules().front().findings.size(), kMaxErrors);
    EXPECT_TRUE(Import({{"a.xml", objectModel(times(255, "$o($n(A)$S(Neither)") + times(255, ")"))}}).succeeds());
}

/// The encoding is that of the declaration, by its whole name; what is not understood is no text.
TEST(ImportTest, Encodings) {
    const std::tuple<const char *, const char *, const char *> texts[] = {
        {"ISO-8859-1", "\xE9\x85", "\xC3\xA9\xC2\x85"},
        {"windows-1252", "\x93\xE9\x9F\x81\x8A\x8D\x8F\x90\x9B\x9D\xA0\xA1",
         "\u201C\u00E9\u0178\xC2\x81\u0160\xC2\x8D\xC2\x8F\xC2\x90\u203A\xC2\x9D\u00A0\u00A1"},
        {"", "\xC3\xA9", "\xC3\xA9"},
        {"utf-8", "\xC3\xA9", "\xC3\xA9"},
        {"UTF-8", "\xE9", "expected UTF-8, found a byte that is not"},
        {"ISO-8859-15", "\xE9", "found the encoding \"iso-8859-15\""},
        {"Shift_JIS", "\x83\x5C", "found the encoding \"shift_jis\""}};
    for (const auto &[encoding, name, expected] : texts) {
        const Import import({{"a.xml", std::string("<?xml version=\"1.0\" encoding='") + encoding + "'?>" +
                                           objectModel(std::string("$o($n(") + name + "))")}});
        const std::string got = import.succeeds() ? import.text() : findingsOf(import);
        EXPECT_NE(got.find(expected), std::string::npos) << got;
    }
}

/// Each of these texts has one error, whose place is found by lines that end in LF, CR LF or CR.
TEST(ImportTest, TextsAreRefusedWhereTheyGoWrong) {
    const std::string mark = "\xEF\xBB\xBF";
    const auto comment = [](std::size_t numLines) { return "<!--" + std::string(numLines, '\n') + "-->"; };
    const auto nested = [](int levels) {
        std::string classes = "$O($o($n(HLAobjectRoot)";
        for (int i = 0; i < levels; ++i)
            classes += "$o($n(A)$S(Neither)";
        return expanded(classes + std::string(static_cast<std::size_t>(levels) + 2, ')'));
    };
    const auto named = [](std::size_t length) {
        return objectModel("$o($n(" + std::string(length, 'A') + ")$S(Neither))");
    };
    const auto longNamesAnd = [](std::size_t length) { // 67091019 bytes, and another class
        std::string classes = "$o($n(" + std::string(16000, 'A') + ")$S(Neither)";
        for (int i = 1000; i < 5188; ++i)
            classes += "$o($n(" + std::to_string(i) + ")$S(Neither))";
        return objectModel(classes + ")$o($n(" + std::string(length, 'B') + ")$S(Neither))");
    };
    const std::pair<std::string, std::string> texts[] = {
        {mark + "<?xml version='1.0' encoding='Shift_JIS'?><a/>", "1:1: error: expected XML in UTF-8, ISO 8859-1"},
        {mark + "<html/>", "1:2: error: expected an object model of IEEE 1516-2010"},
        {objectModel("") + '\0', "1:1: error: expected XML in UTF-8, found another encoding"},
        {"\xFF\xFE<", "1:1: error: expected XML in UTF-8, found another encoding"},
        {"\xFE\xFF<", "1:1: error: expected XML in UTF-8, found another encoding"},
        {"  (FED x)", "1:1: error: expected an object model in XML, found \"(FED\" "},
        {"abcdefghijklmnopqrstu", "1:1: error: expected an object model in XML, found \"abcdefghijklmnopqrst\" "},
        {'<' + std::string(kMaxXmlTags, '='), ", found 8388609 "},
        {"< x>", "1:1: error: expected a tag of the form <NAME>"},
        {"<a b=c><d></a>", "1:6: error: expected an attribute of the form NAME=\"VALUE\""},
        {"<a>\n", "1:4: error: expected \"</a>\""},
        {"<!-- -->\r\n", "2:1: error: expected an element"},
        {"<!--\r\r\n-->\r", "4:1: error: expected an element"},
        {comment(8184), "8185:4: error: expected an element"},
        {comment(8185), "8186:4: error: expected an element"},
        {nested(257), "classes are nested in more than 256 levels"},
        {longNamesAnd(kMaxNameLength - 11), "the full names of all classes together have more than 67092480 bytes"},
        {named(kMaxNameLength - 10), "expected a full name of at most 16384 bytes, found 16385 "}};
    for (const auto &[text, message] : texts) {
        const std::string got = findingsOf(Import({{"a.xml", text}}));
        EXPECT_NE(got.find(message), std::string::npos) << got;
        EXPECT_EQ(std::count(got.begin(), got.end(), '\n'), 1) << got;
    }
    for (const std::string &text : {named(kMaxNameLength - 11), longNamesAnd(1450)})
        EXPECT_EQ(findingsOf(Import({{"a.xml", text}})), "");
}

/// Damaged models, by elements that are removed, copied to other places, or swap their texts: what is imported
/// nevertheless loads, alone and as a module beside the whole model.
TEST(ImportTest, DamagedModelsAreRefusedOrLoad) {
    const std::string model =
        expanded("$modelIdentification($n(M))$O($o($n(HLAobjectRoot)$o($n(Boat)$S(Neither)$a($n(A)$D($d(S.x)$d(S.y))$t("
                 "HLAreliable)"
                 "$s(Receive))$o($n(Tug)$a($n(B)$t(HLAbestEffort)$s(TimeStamp))))$o($n(Manager)$o($n(Federate)))))"
                 "$I($i($n(HLAinteractionRoot)$i($n(Storm)$D($d(Z))$t(HLAreliable)$s(Receive)$p($n(P)))))"
                 "$D($d($n(S.x))$d($n(S.y))$d($n(Z)))");
    std::mt19937 random(11);
    std::size_t numImported = 0;
    for (std::size_t i = 0; i < rounds(3000); ++i) {
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(model.c_str()));
        const auto anyOf = [&random](const pugi::xpath_node_set &nodes) {
            return nodes[random() % nodes.size()].node();
        };
        for (std::size_t edits = random() % 3 + 1; edits > 0; --edits) {
            pugi::xml_node piece = anyOf(document.select_nodes("/*//*")), place = anyOf(document.select_nodes("/*//*"));
            pugi::xml_node text = anyOf(document.select_nodes("//*/text()"));
            if (const auto choice = random() % 3; choice == 0)
                piece.parent().remove_child(piece);
            else if (choice == 1)
                place.parent().insert_copy_before(piece, place);
            else
                text.set_value(anyOf(document.select_nodes("//*/text()")).value());
        }
        std::ostringstream out;
        document.save(out, "", pugi::format_raw);
        EXPECT_EQ(faultOfImport({{"a.xml", out.str()}, {"b.xml", model}}), "") << out.str();
        EXPECT_EQ(faultOfImport({{"a.xml", out.str()}}), "") << out.str();
        numImported += Import({{"a.xml", out.str()}}).succeeds() ? 1 : 0;
    }
    EXPECT_GT(numImported, rounds(300));
}

TEST(XmlNesting, FindsTheFirstElementWithAnotherEndOrNone) {
    const auto mismatch = [](const std::string &text) {
        const auto shown = [&text](RtiFedSpan span) {
            return text.substr(span.begin, span.length) + '@' + std::to_string(span.begin);
        };
        const std::optional<XmlMismatch> found = firstMismatch(text);
        return !found ? "" : shown(found->open) + (found->close ? " " + shown(*found->close) : "");
    };
    const std::pair<const char *, const char *> cases[] = {{"<a><b x='y'></b ><c /></a>\n", ""},
                                                           {"<a><b></a>", "b@4 a@8"},
                                                           {"<a></a></b><c>", "c@12"},
                                                           {"<a/><b>", "b@5"},
                                                           {"<a/", "a@1"},
                                                           {"<><b></>", "b@3 @7"},
                                                           {"<a><!--><x>--></b>", "a@1 b@16"},
                                                           {"<a><!----></b>", "a@1 b@12"},
                                                           {"<a><!-- <b>", "a@1"},
                                                           {"<a><![CDATA[<x>]]></b>", "a@1 b@20"},
                                                           {"<?x <y> ?><a></b>", "a@11 b@15"},
                                                           {"<!DOCTYPE a><b></b>", ""},
                                                           {"<!DOCTYPE a [<?x y?> <b>]><a></b>", "a@27 b@31"},
                                                           {"<a x=]><b></a>", "b@8 a@12"},
                                                           {"<a x='>' y=\"<b>'\" z=''><c></a>", "c@24 a@28"},
                                                           {"<a x='", "a@1"}};
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(mismatch(text), expected) << text;
}
