#include "tests/Support.hh"
#include "tool/console/Interruption.hh"
#include "tool/console/OutputFile.hh"

#include <csignal>
#include <filesystem>
#include <functional>
#include <set>
#include <sstream>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

volatile std::sig_atomic_t interruption = 0;

/// Writes a file whose size exceeds a limit: the kernel signals that in the middle of the work, and that signal is
/// answered with another one.
void writeInterrupted(int signal, const std::string &fileName) {
    interruption = signal;
    const rlimit limit{10, 10};
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
        return;
    std::signal(SIGXFSZ, [](int) { raise(interruption); });
    cleanUpWhenInterrupted();
    writeFile(fileName, "twenty bytes of text", 20);
}

/// What is wrong with a file that cannot be written; nothing if it is written.
std::string refusal(const std::function<void()> &write) {
    try {
        write();
        return "";
    } catch (const CannotWork &refused) {
        return refused.what();
    }
}

class OutputFile : public testing::Test {
protected:
    OutputFile() : _folder(_old.path() + ".folder"), _mask(umask(027)), _nextFile(dup(0)) {
        close(_nextFile);
        fs::create_directory(_folder);
    }
    ~OutputFile() override {
        EXPECT_EQ(umask(_mask), 027U);
        EXPECT_EQ(dup(0), _nextFile) << "a file is still open";
        close(_nextFile);
        fs::remove_all(_folder);
    }

    std::string file(const char *name) const { return _folder / name; }

    /// What the folder has: name, mode and content of each file.
    std::string files() const {
        std::set<std::string> files;
        for (const auto &entry : fs::directory_iterator(_folder)) {
            std::ostringstream file;
            file << entry.path().filename().string() << ' ' << std::oct
                 << static_cast<int>(entry.status().permissions());
            files.insert(file.str() + ' ' + readFile(entry.path()) + '\n');
        }
        std::string all;
        for (const std::string &each : files)
            all += each;
        return all;
    }

    const TemporaryFile _old{"old"};
    const fs::path _folder;

private:
    const mode_t _mask;
    const int _nextFile;
};

} // namespace

TEST_F(OutputFile, ReplacesWhatIsThereOrIsNew) {
    fs::copy_file(_old.path(), file("kept"));
    fs::permissions(file("kept"), fs::perms{0604});
    fs::create_symlink("kept", file("link"));
    const bool isRoot = geteuid() == 0; // who alone may give a file away
    ASSERT_TRUE(!isRoot || chown(file("kept").c_str(), 12, 34) == 0);
    writeFile(file("link"), "changed", 7);
    writeFile(file("new"), "n", 1);
    createFile(file("own"), "", 0);
    EXPECT_EQ(files(), "kept 604 changed\nlink 604 changed\nnew 640 n\nown 640 \n");
    EXPECT_TRUE(fs::is_symlink(file("link")));
    struct stat status {};
    ASSERT_EQ(stat(file("kept").c_str(), &status), 0);
    EXPECT_TRUE(!isRoot || (status.st_uid == 12 && status.st_gid == 34));
}

TEST_F(OutputFile, IsWrittenInParts) {
    std::string text;
    for (int i = 0; i < 30000; ++i)
        text += std::to_string(i) + ' ';
    std::ostringstream shown, errors;
    const Console console{shown, errors};
    const auto write = [&text](std::ostream &out) {
        for (std::size_t at = 0; at < text.size(); at += 7)
            out << text.substr(at, 7);
    };
    writeOutput(file("parts"), write, console);
    EXPECT_EQ(readFile(file("parts")), text);
    writeOutput("-", write, console);
    EXPECT_EQ(shown.str(), text);
    EXPECT_THROW(writeOutput(
                     file("parts"), [](std::ostream &) { throw std::bad_alloc(); }, console),
                 std::bad_alloc);
    fs::resize_file(file("parts"), 0);
    EXPECT_EQ(files(), "parts 640 \n"); // and no draft
}

TEST_F(OutputFile, StaysAsItIsIfItCannotBeWritten) {
    fs::copy_file(_old.path(), file("kept"));
    fs::create_symlink("nothing", file("dangling"));
    const std::string full(100, 'x');
    const auto written = [&](const std::string &name) {
        return refusal([&] { writeFile(name, full.data(), full.size()); });
    };
    const auto created = [&](const std::string &name) {
        return refusal([&] { createFile(name, full.data(), full.size()); });
    };
    EXPECT_EQ(written("/dev/full"), "/dev/full: No space left on device");
    EXPECT_EQ(written(_folder), _folder.string() + ": Is a directory");
    EXPECT_EQ(written(file("dangling")), file("dangling") + ": No such file or directory");
    EXPECT_EQ(written(file("no/file")), file("no/file") + ": No such file or directory");
    EXPECT_EQ(created(file("no/file")), file("no/file") + ": No such file or directory");
    EXPECT_EQ(created(file("kept")), file("kept") + ": the file exists already, so it is left alone");
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    const rlimit limit{10, usual.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string replacing = written(file("kept")), making = created(file("new"));
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, SIG_DFL);
    EXPECT_EQ(replacing, file("kept") + ": File too large");
    EXPECT_EQ(making, file("new") + ": File too large");
    fs::remove(file("dangling"));
    EXPECT_EQ(files(), "kept 600 old\n");
}

TEST_F(OutputFile, IsUntouchedByAnInterruptedProgram) {
    fs::copy_file(_old.path(), file("file"));
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EXIT(writeInterrupted(signal, file("file")), testing::KilledBySignal(signal), "");
        EXPECT_EQ(files(), "file 600 old\n");
    }
}
