// The files of a project that say what becomes of findings: a configuration or, if the input begins with a brace, a
// baseline. Whatever is in them, they are refused with a message that can be shown, or decide about a text.

#include "tool/control/Configuration.hh"
#include "fuzz/Fuzz.hh"
#include "fuzz/Mutator.hh"
#include "tool/console/Console.hh"
#include "tool/control/Decision.hh"

#include <sys/mman.h>
#include <unistd.h>

const std::vector<std::string_view> kMutatorWords = {
    "[rules]\n",
    "letter-case",
    "no-rti-private",
    "name-prefix",
    "\"off\"",
    "\"warning\"",
    "\"error\"",
    "[naming]\n",
    "class = \"[A-Z][a-z]*\"\n",
    "attribute",
    "parameter",
    "space = \"^S?\\\\d$\"\n",
    "[[subtree]]\n",
    "class = \"ObjectRoot.A\"\n",
    "class = \"B\"\n",
    "prefix = \"A\"\n",
    "transportation = \"reliable\"\n",
    "ordering = \"receive\"\n",
    "[[files]]\n",
    "paths = [\"a/**\", \"*.fed\", \"[!a-z]?\"]\n",
    "rules.letter-case = \"off\"\n",
    "naming.class = \".*\"\n",
    "''",
    "\"\"\"",
    ".",
    "= {}",
    "[]",
    "true",
    "1",
    "1979-05-27",
    "\\u00e4",
    "\xC3\xA4",
    "(|)*{2}",
    "{\"formatVersion\": 1, \"findings\": []}",
    "{\"file\": \"a.fed\", \"rule\": \"letter-case\", \"text\": \"t\", \"count\": 1}",
    "4294967296",
    "null"};

namespace {

constexpr const char *kText = "(FED (Federation F) (FEDversion v) (spaces (space S (dimension d)) (space s2))\n"
                              "(objects (class ObjectRoot (attribute privilegeToDelete reliable timestamp)\n"
                              "(class A (attribute x best_effort receive s) (class b)))) ; rtifed: allow unused-space\n"
                              "(interactions (class InteractionRoot reliable timestamp\n"
                              "(class I reliable receive S (parameter Q) (parameter r)))))\n";

/// A file in memory. Reading one from a disk would take longer than all the rest.
class MemoryFile {
public:
    void write(const std::uint8_t *data, std::size_t size) const {
        FUZZ_CHECK(ftruncate(_descriptor, 0) == 0);
        FUZZ_CHECK(pwrite(_descriptor, data, size, 0) == static_cast<ssize_t>(size));
    }
    std::string path() const { return "/proc/self/fd/" + std::to_string(_descriptor); }

private:
    const int _descriptor = memfd_create("configuration", 0);
};

void checkMessage(const std::string &message) {
    FUZZ_CHECK(!message.empty());
    for (const std::string &line : split(message, '\n'))
        FUZZ_CHECK(RtiFedParser::printable(line, message.size()) == line);
}

/// Decides about the findings of a text, which is checked only once, in the files of these paths.
void decideWith(const Configuration &configuration, Baseline *baseline) {
    static CheckedFile file = checkFile({"a.fed", kText}, Severity::warning);
    static const std::vector<Finding> found = file.findings;
    for (const char *path : {"/project/a.fed", "/project/a/B/c-generated.fed", "/a.fed"}) {
        Settings settings;
        configuration.applyTo(settings, path);
        file.findings = found;
        decide(file, settings, baseline);
        FUZZ_CHECK(file.findings.size() >= found.size());
        for (const Finding &finding : file.findings)
            FUZZ_CHECK(finding.suppression || settings.level(*finding.rule) != Level::off);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const MemoryFile file;
    file.write(data, size);
    try {
        if (size > 0 && data[0] == '{') {
            Baseline baseline = Baseline::read(file.path());
            const std::size_t before = baseline.size();
            decideWith({}, &baseline);
            FUZZ_CHECK(baseline.size() <= before && baseline.numLeft() <= baseline.size());
            FUZZ_CHECK(!baseline.text().empty());
        } else {
            Configuration configuration = readConfiguration(file.path(), "c.toml");
            configuration.folder = "/project";
            decideWith(configuration, nullptr);
        }
    } catch (const CannotWork &error) {
        checkMessage(error.what());
    }
    return 0;
}
