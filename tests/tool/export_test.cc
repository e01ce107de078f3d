// Models as XML of IEEE 1516: recorded exports, and what holds for the export of any model.

#include "tests/Support.hh"
#include "tool/check/ReadOutline.hh"
#include "tool/commands/Commands.hh"
#include "tool/fom/FomNames.hh"

#include <pugixml.hpp>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <vector>

namespace {

struct Outcome {
    Status status;
    std::string out, err;
};

ExportOptions optionsFor(const std::string &fileName, const std::string &output = "-") {
    ExportOptions options;
    options.fileName = fileName;
    options.output = output;
    return options;
}

Outcome run(const ExportOptions &options) {
    std::ostringstream out, err;
    try {
        const Status status = exportModel(options, Console{out, err});
        return {status, out.str(), err.str()};
    } catch (const CannotWork &why) {
        return {cannotWork, out.str(), "rtifed: " + std::string(why.what()) + '\n'};
    }
}

/// The files of one case: FED text, after "~~~~" a file of types. The first line has options.
Outcome exported(const std::string &text) {
    const std::size_t begin = text.find('\n') + 1, end = text.find("~~~~\n");
    const TemporaryFile fed(text.substr(begin, end - begin));
    const TemporaryFile types(end == std::string::npos ? "" : text.substr(end + 5));
    ExportOptions options = optionsFor(fed.path());
    const auto has = [&](const char *option) { return text.substr(0, begin).find(option) != std::string::npos; };
    options.form = has("--fdd") ? FomForm::fdd : has("--module") ? FomForm::module : FomForm::interchange;
    options.typesTemplate = has("--types-template");
    if (end != std::string::npos)
        options.types = types.path();
    Outcome outcome = run(options);
    for (const auto &[path, name] : {std::pair(fed.path(), "a.fed"), std::pair(types.path(), "types.toml")})
        for (std::size_t at; (at = outcome.err.find(path)) != std::string::npos;)
            outcome.err.replace(at, path.size(), name);
    return outcome;
}

/// The elements that an element may have, in this order. "!" marks those that the schema FDD requires, "*" those that
/// may be there several times; a name is required by both schemas.
const std::map<std::string, std::vector<std::string>> kContents = {
    {"objectModel",
     {"modelIdentification", "!objects", "!interactions", "!dimensions", "!transportations", "switches", "notes"}},
    {"modelIdentification", {"name", "type", "description", "other"}},
    {"objects", {"!objectClass"}},
    {"objectClass", {"!name", "sharing", "semantics", "*attribute", "*objectClass"}},
    {"attribute",
     {"!name", "dataType", "updateType", "updateCondition", "ownership", "sharing", "dimensions", "!transportation",
      "!order", "semantics"}},
    {"interactions", {"!interactionClass"}},
    {"interactionClass",
     {"!name", "sharing", "dimensions", "!transportation", "!order", "semantics", "*parameter", "*interactionClass"}},
    {"parameter", {"!name", "dataType", "semantics"}},
    {"dimensions", {"*dimension"}},
    {"dimension", {"name", "dataType", "upperBound", "normalization", "value"}},
    {"transportations", {"*transportation"}},
    {"notes", {"*note"}},
    {"note", {"!label", "!semantics"}},
};

/// Whether a text is a name in XML, of ASCII or any letters above it.
bool isName(const std::string &text) {
    return !text.empty() && std::string("-.0123456789").find(text[0]) == std::string::npos &&
           std::all_of(text.begin(), text.end(), [](unsigned char byte) {
               return std::isalnum(byte) || byte >= 0x80 || byte == '_' || byte == '-' || byte == '.';
           });
}

/// Checks the order of elements, what is required, and that siblings have different names.
void checkContents(pugi::xml_node element, bool isFdd) {
    const auto contents = kContents.find(element.name());
    const bool isReference = element.first_child().type() == pugi::node_pcdata;
    if (contents == kContents.end() || isReference || !element.first_child())
        return;
    auto next = contents->second.begin();
    std::set<std::string> names;
    for (const pugi::xml_node child : element.children()) {
        const std::string kind = child.name(), name = child.child_value("name");
        const auto found = std::find_if(next, contents->second.end(), [&kind](const std::string &allowed) {
            return allowed.substr(allowed.find_first_not_of("!*")) == kind;
        });
        ASSERT_NE(found, contents->second.end()) << kind << " in " << element.name();
        next = (*found)[0] == '*' ? found : found + 1;
        if (child.child("name") && kind != "modelIdentification") {
            EXPECT_TRUE(names.insert(kind + ' ' + name).second) << name;
            EXPECT_TRUE(isName(name)) << name;
        }
        ASSERT_NO_FATAL_FAILURE(checkContents(child, isFdd));
    }
    for (const std::string &allowed : contents->second)
        EXPECT_TRUE(allowed[0] != '!' || (!isFdd && allowed != "!name") || element.child(allowed.c_str() + 1))
            << allowed << " in " << element.name();
}

/// Checks that everything that is named by a reference is declared.
void checkReferences(pugi::xml_node model, bool isFdd) {
    const auto namesOf = [&model](const char *section, const char *name) {
        std::set<std::string> names;
        for (const pugi::xml_node element : model.child(section).children())
            EXPECT_TRUE(names.insert(element.child_value(name)).second) << element.child_value(name);
        return names;
    };
    const std::set<std::string> dimensions = namesOf("dimensions", "name"), labels = namesOf("notes", "label"),
                                transportations = namesOf("transportations", "name");
    for (const auto &found : model.select_nodes("//dimensions/dimension[not(name)]"))
        EXPECT_TRUE(dimensions.count(found.node().child_value())) << found.node().child_value();
    for (const auto &found : model.select_nodes("//transportation[not(name)]"))
        EXPECT_TRUE(!isFdd || transportations.count(found.node().child_value())) << found.node().child_value();
    for (const auto &found : model.select_nodes("//@notes")) {
        std::istringstream words(found.attribute().value());
        for (std::string label; words >> label;)
            EXPECT_TRUE(labels.count(label)) << label;
    }
}

/// Random FED text: often with errors, odd names, duplicates and comments.
class AnyFed {
public:
    explicit AnyFed(unsigned seed) : _random(seed) {}

    std::string text() {
        std::string fed =
            "; About the file: <&> ]]> \x01\xFF\n(FED (Federation \"F & <G>\") (FEDversion v1.5)\n(spaces";
        for (unsigned i = below(4); i > 0; --i) {
            fed += comment() + "(space " + name();
            for (unsigned d = below(3); d > 0; --d)
                fed += comment() + "(dimension " + name() + ')';
            fed += ')';
        }
        fed += ")(objects " + comment() + "(class ObjectRoot (attribute privilegeToDelete " + delivery() + ')' +
               classes(true, 0) + ')' + classes(true, 2) + ")(interactions (class InteractionRoot " + delivery() +
               classes(false, 0) + ')' + classes(false, 2) + "))";
        return fed;
    }

private:
    unsigned below(unsigned limit) { return static_cast<unsigned>(_random() % limit); }

    std::string name() {
        const char *const names[] = {"A",    "b",   "B",        "Manager", "RTIprivate", "\"c d\"",
                                     "9",    "x.y", "\xC3\xA9", "-",       "\xFF",       "privilegeToDelete",
                                     "\"\"", "A_2", "_x0041_"};
        return names[below(std::size(names))];
    }
    std::string comment() { return below(3) ? "" : "\n  ;; Says \t<this> & -- \x02.\n"; }
    std::string delivery() {
        const char *const words[] = {"reliable", "best_effort", "RTI_RELIABLE", "realiable"};
        const char *const orders[] = {"receive", "timestamp", "TIMESTAMP", "stamped"};
        return std::string(words[below(4)]) + ' ' + orders[below(4)] + ' ' + (below(2) ? "" : name());
    }
    std::string classes(bool ofObjects, unsigned level) {
        std::string text;
        for (unsigned i = below(4); i > 0; --i) {
            text += comment() + "(class " + name() + (ofObjects ? "" : ' ' + delivery());
            for (unsigned m = below(4); m > 0; --m)
                text +=
                    comment() + (ofObjects ? "(attribute " + name() + ' ' + delivery() : "(parameter " + name()) + ')';
            text += (level < 3 ? classes(ofObjects, level + 1) : "") + ')';
        }
        return text;
    }

    std::mt19937 _random;
};

/// Models of the examples and random ones.
std::vector<std::string> anyTexts() {
    std::vector<std::string> texts = {example("harbour.fed"), example("minimal.fed"), example("tolerances.fed"),
                                      "(FED"};
    for (unsigned seed = 0; seed < rounds(500); ++seed)
        texts.push_back(AnyFed(seed).text());
    return texts;
}

void validate(const std::string &xml, bool isFdd, const std::string &folder) {
    const TemporaryFile file(xml);
    for (const char *schema : {"/DIF.xsd", "/FDD.xsd"})
        if (isFdd || schema[1] == 'D') {
            const std::string command = "xmllint --noout --nonet --schema '" + folder + schema + "' " + file.path();
            EXPECT_EQ(std::system((command + " 2>&1").c_str()), 0) << xml; // NOLINT(cert-env33-c): our own command
        }
}

} // namespace

TEST(Export, IsAsRecorded) {
    forEachCase("export.txt", [](const std::string &text) {
        const Outcome outcome = exported(text);
        return outcome.err + outcome.out + "status " + std::to_string(outcome.status) + '\n';
    });
}

TEST(Export, OfAnyModelIsValid) {
    for (const std::string &text : anyTexts()) {
        SCOPED_TRACE(text);
        const Outline outline = readOutline({"a.fed", text});
        for (const FomForm form : {FomForm::interchange, FomForm::fdd, FomForm::module}) {
            const bool isFdd = form == FomForm::fdd;
            std::vector<ExportNote> notes;
            const std::string xml = exportedModel(outline, {}, "About <it> & \x01\xFF", form, notes);
            pugi::xml_document document;
            ASSERT_TRUE(document.load_string(xml.c_str())) << xml;
            ASSERT_NO_FATAL_FAILURE(checkContents(document.document_element(), isFdd));
            checkReferences(document.document_element(), isFdd);
        }
    }
}

TEST(Export, OfAnyModelIsValidBySchema) {
    const char *folder = std::getenv("RTIFED_FOM_SCHEMAS");
    if (!folder)
        GTEST_SKIP()
            << "RTIFED_FOM_SCHEMAS names no folder with the schemas DIF.xsd and FDD.xsd, which the IEEE publishes";
    for (const std::string &text : anyTexts())
        for (const FomForm form : {FomForm::interchange, FomForm::fdd, FomForm::module}) {
            std::vector<ExportNote> notes;
            validate(exportedModel(readOutline({"a.fed", text}), {}, "", form, notes), form == FomForm::fdd, folder);
        }
}

TEST(Export, TemplateOfTypesChangesNothing) {
    for (unsigned seed = 0; seed < rounds(100); ++seed) {
        const std::string text = AnyFed(seed).text();
        SCOPED_TRACE(text);
        const std::string types = exported("--types-template\n" + text).out;
        const Outcome with = exported("\n" + text + "~~~~\n" + types);
        EXPECT_EQ(with.err, exported("\n" + text).err);
        EXPECT_EQ(with.out, exported("\n" + text).out);
        EXPECT_EQ(exported("--types-template\n" + text + "~~~~\n" + types).out, types);
    }
}

TEST(Export, TakesTheTypesThatTheDocumentShows) {
    const std::string page = readFile(RTIFED_DOCS "/ieee-1516.md"), fence = "```toml\n";
    const std::size_t begin = page.find(fence) + fence.size();
    const Outcome outcome =
        exported('\n' + example("harbour.fed") + "~~~~\n" + page.substr(begin, page.find("```", begin) - begin));
    EXPECT_EQ(outcome.err, "");
    EXPECT_NE(outcome.out.find("<upperBound>48000</upperBound>"), std::string::npos);
}

/// Unless something is in the space besides the MOM, which is left out.
TEST(Export, LacksTheDefaultSpaceOfTheMom) {
    const std::string text = example("minimal.fed"), space = "HLAMomDefaultSpace",
                      root = "(class InteractionRoot reliable timestamp";
    const auto hasSpace = [&](const std::string &fed) {
        const std::string out = exported('\n' + fed).out;
        return out.find(space) != std::string::npos || out.find("FED.space") != std::string::npos;
    };
    EXPECT_FALSE(hasSpace(text));
    EXPECT_TRUE(hasSpace(
        replaced(text, "(class RTIprivate)", "(attribute a reliable receive " + space + ") (class RTIprivate)")));
    EXPECT_TRUE(hasSpace(replaced(text, root, root + ' ' + space)));
    EXPECT_NE(
        exported("\n(FED (Federation F) (FEDversion v) (objects (class Quay)))").err.find("is outside of ObjectRoot"),
        std::string::npos);
}

TEST(Export, IsTheSameFromAnImageButForComments) {
    std::string text = example("harbour.fed"), plain;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        plain += line.substr(0, line.find(';')) + '\n';
    plain = replaced(plain, "(spaces", "(spaces (space Empty)");
    const TemporaryFile image(bytesOf(*load(plain)));
    EXPECT_EQ(run(optionsFor(image.path())).out, exported('\n' + plain).out);
    const std::string damaged = bytesOf(*load(plain)).substr(0, 5000);
    const TemporaryFile part(damaged);
    EXPECT_EQ(run(optionsFor(part.path())).status, wrong);
    EXPECT_EQ(run(optionsFor(part.path())).out, "");
}

TEST(Export, ReplacesItsOutputOnlyIfItCan) {
    const TemporaryFile fed(example("minimal.fed")), old("old"), types("[objects.None]\n");
    ExportOptions wrongTypes = optionsFor(fed.path(), old.path());
    wrongTypes.types = types.path();
    EXPECT_EQ(run(wrongTypes).status, cannotWork);
    EXPECT_EQ(readFile(old.path()), "old");
    EXPECT_EQ(run(optionsFor(fed.path(), old.path())).out, "");
    EXPECT_EQ(readFile(old.path()), run(optionsFor(fed.path())).out);
}
