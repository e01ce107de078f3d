// Running out of memory in the program: allocations of each command fail in turn. The command must say so, with exit
// status 2, or do its work without the memory; it leaves each file as it was or written whole. Each failure happens in
// a process of its own, so that one that ends the program is found and the next ones are still tried.

#include "infrastructure/RTI.hh"
#include "tests/FailingAllocator.hh"
#include "tests/Support.hh"
#include "tool/commandline/CommandLine.hh"
#include "tool/console/Interruption.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <new>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned long kUsualFailures = 150; // of a command with more allocations, of which it takes every n-th

/// Keeps what a stream writes without allocating, since the real streams do not allocate either.
class Capture : public std::streambuf {
public:
    Capture() { setp(_bytes, _bytes + sizeof(_bytes)); }
    std::string_view text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

private:
    char _bytes[1 << 20];
};

struct Outcome {
    int status;
    std::string out, err;
    bool operator==(const Outcome &other) const {
        return status == other.status && out == other.out && err == other.err;
    }
};

/// Runs the program as `main` does. `failAt` is the allocation that fails; 0 for none. `numAllocations` gets how many
/// there were if none failed.
Outcome run(const std::vector<std::string> &arguments, unsigned long failAt, unsigned long &numAllocations) {
    static Capture out, err;
    std::ostream outStream(&out), errStream(&err);
    outStream.exceptions(std::ios::badbit);
    std::vector<char *> argv;
    for (const std::string &argument : arguments)
        argv.push_back(const_cast<char *>(argument.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast): main's
    int status = cannotWork;
    constexpr unsigned long kMany = 1UL << 60;
    allocationsToFailure = failAt > 0 ? failAt : kMany;
    try {
        status = CommandLine(Console{outStream, errStream}).run(static_cast<int>(argv.size()), argv.data());
    } catch (const std::bad_alloc &) {
        errStream << "rtifed: " << kOutOfMemory << '\n';
    } catch (const RTI::Exception &failure) {
        errStream << "rtifed: " << failure._reason << '\n';
    } catch (const std::exception &failure) {
        errStream << "rtifed: " << failure.what() << '\n';
    }
    numAllocations = kMany - allocationsToFailure;
    allocationsToFailure = 0;
    return {status, std::string(out.text()), std::string(err.text())};
}

/// The files of a folder with their contents.
std::map<std::string, std::string> filesIn(const std::string &folder) {
    std::map<std::string, std::string> files;
    for (const auto &entry : std::filesystem::directory_iterator(folder))
        files[entry.path().filename().string()] = readFile(entry.path().string());
    return files;
}

class Folder {
public:
    Folder() {
        EXPECT_NE(mkdtemp(_path.data()), nullptr);
        std::filesystem::current_path(_path);
    }
    ~Folder() {
        std::filesystem::current_path("/");
        std::filesystem::remove_all(_path);
    }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;
    const std::string &path() const { return _path; }

    /// Gives the folder these files and no others.
    void fill(const std::map<std::string, std::string> &files) const {
        for (const auto &entry : std::filesystem::directory_iterator(_path))
            std::filesystem::remove_all(entry.path());
        for (const auto &[name, contents] : files)
            std::ofstream(name, std::ios::binary) << contents;
    }

private:
    std::string _path = "/tmp/rtifed-starved-XXXXXX";
};

/// What an editor sends.
std::string messages() {
    std::string all;
    for (const std::string text :
         {R"("id":1,"method":"initialize","params":{"capabilities":{}})",
          R"("method":"textDocument/didOpen","params":{"textDocument":{"uri":"file:///a.fed","languageId":"fed",)"
          R"("version":1,"text":"(FED (Federation Harbour"}})",
          R"("id":2,"method":"textDocument/documentSymbol","params":{"textDocument":{"uri":"file:///a.fed"}})",
          R"("id":3,"method":"shutdown")", R"("method":"exit")"}) {
        const std::string message = R"({"jsonrpc":"2.0",)" + text + '}';
        all += "Content-Length: " + std::to_string(message.size()) + "\r\n\r\n" + message;
    }
    return all;
}

std::map<std::string, std::string> inputs() {
    const std::string sound = example("harbour.fed");
    std::string broken = replaced(sound, "(class Craft", "(clas Craft");
    broken = replaced(broken, "reliable", "relable");
    return {{"sound.fed", sound},
            {"broken.fed", broken},
            {"unclosed.fed", replaced(sound, ")\n", "\n")},
            {"other.fed", replaced(example("minimal.fed"), "(class RTIprivate)", "(class RTIprivate) (class Boat)")},
            {"model.xml", "<objectModel xmlns=\"http://standards.ieee.org/IEEE1516-2010\"><objects><objectClass>"
                          "<name>HLAobjectRoot</name><objectClass><name>BoatOfTheHarbourMaster</name><attribute>"
                          "<name>Position</name><dataType>HLAfloat64BE</dataType></attribute></objectClass>"
                          "</objectClass></objects></objectModel>"},
            {".rtifed.toml", "[rules]\nletter-case = \"error\"\n[naming]\nclass = \"[A-Z][A-Za-z]*\"\n"},
            {"types.toml", "[objects.Craft]\nsharing = \"Publish\"\n"},
            {"list", "96881752  sound.fed\n"},
            {"messages", messages()}};
}

/// What is wrong with an outcome, or nothing.
std::string faultOf(const Outcome &starved, const Outcome &usual) {
    if (starved == usual)
        return "";
    const std::string all = starved.out + starved.err;
    const bool isOfServer = starved.out.rfind("Content-Length", 0) == 0; // which reports the error and continues
    if (starved.status != cannotWork && !isOfServer)
        return "status " + std::to_string(starved.status) + ": " + all;
    return all.find(kOutOfMemory) != std::string::npos ? "" : "says: " + all;
}

} // namespace

class Starved : public testing::TestWithParam<const char *> {};

TEST_P(Starved, SaysSoAndLeavesFilesWhole) {
    const Folder folder;
    const std::map<std::string, std::string> before = inputs();
    std::vector<std::string> arguments = split(std::string("rtifed ") + GetParam(), ' ');
    const auto inChild = [&](const auto &action) {
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            const int messages = open("messages", O_RDONLY); // NOLINT(cppcoreguidelines-pro-type-vararg): POSIX
            dup2(messages, STDIN_FILENO);
            cleanUpWhenInterrupted();
            _exit(action());
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    };

    // The usual outcome comes back by a file outside of the folder.
    const TemporaryFile result("");
    folder.fill(before);
    unsigned long numAllocations = 0;
    ASSERT_EQ(inChild([&] {
                  const Outcome usual = run(arguments, 0, numAllocations);
                  std::ofstream(result.path(), std::ios::binary)
                      << usual.status << ' ' << numAllocations << ' ' << usual.out.size() << '\n'
                      << usual.out << usual.err;
                  return 0;
              }),
              0);
    const std::map<std::string, std::string> after = filesIn(folder.path());
    std::istringstream recorded(readFile(result.path()));
    Outcome usual;
    std::size_t sizeOfOut = 0;
    recorded >> usual.status >> numAllocations >> sizeOfOut;
    const std::string rest = recorded.str().substr(recorded.str().find('\n') + 1);
    usual.out = rest.substr(0, sizeOfOut);
    usual.err = rest.substr(sizeOfOut);
    ASSERT_GT(numAllocations, 0u);

    const unsigned long step = 1 + numAllocations / rounds(kUsualFailures);
    for (unsigned long n = 1; n <= numAllocations; n += step) {
        SCOPED_TRACE("allocation " + std::to_string(n) + " of " + std::to_string(numAllocations));
        folder.fill(before);
        const int status = inChild([&] {
            unsigned long ignored = 0;
            const std::string fault = faultOf(run(arguments, n, ignored), usual);
            std::fputs(fault.c_str(), stderr);
            return fault.empty() ? 0 : 1;
        });
        EXPECT_FALSE(WIFSIGNALED(status)) << "ended by signal " << WTERMSIG(status);
        EXPECT_NE(WEXITSTATUS(status), 1); // cannotWork if it ended where no exception may be thrown
        for (const auto &[name, contents] : filesIn(folder.path()))
            EXPECT_TRUE((before.count(name) > 0 && before.at(name) == contents) ||
                        (after.count(name) > 0 && after.at(name) == contents))
                << name;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Commands, Starved,
    testing::Values("check sound.fed broken.fed unclosed.fed", "check --format json broken.fed unclosed.fed",
                    "check --format sarif broken.fed", "check --format junit broken.fed", "check model.xml",
                    "check --format gitlab broken.fed", "check --write-baseline baseline.json broken.fed",
                    "explain unknown-space", "fix --write broken.fed", "fix --diff broken.fed", "fix --mom other.fed",
                    "fmt --write sound.fed", "fmt --diff sound.fed", "new Ferry", "diff sound.fed other.fed",
                    "diff --format json sound.fed other.fed", "diff sound.fed model.xml",
                    "merge sound.fed other.fed -o merged.fed", "extract sound.fed Craft -o part.fed", "tree sound.fed",
                    "tree --format svg sound.fed", "tree --format mermaid sound.fed", "find sound.fed Position",
                    "html sound.fed -o page.html", "html --against other.fed sound.fed -o page.html", "json sound.fed",
                    "constants --language c++ sound.fed -o names.hh", "constants --language python sound.fed",
                    "list sound.fed", "calls sound.fed", "checksum --sha256 sound.fed", "checksum --check list",
                    "save sound.fed model.img", "export --types types.toml sound.fed -o new.xml",
                    "export --types-template sound.fed", "import model.xml -o new.fed", "lsp", "help check", "--help",
                    "check --bad"),
    [](const auto &test) {
        std::string name = test.param;
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
        return name;
    });
