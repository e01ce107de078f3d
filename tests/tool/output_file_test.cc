#include "tests/Support.hh"
#include "tool/console/Interruption.hh"
#include "tool/console/OutputFile.hh"

#include <filesystem>
#include <sys/resource.h>

namespace {

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

} // namespace

TEST(OutputFile, IsUntouchedByAnInterruptedProgram) {
    const TemporaryFile old("old");
    const std::filesystem::path folder = old.path() + ".folder";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(old.path(), folder / "file");
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        EXPECT_EXIT(writeInterrupted(signal, folder / "file"), testing::KilledBySignal(signal), "");
        EXPECT_EQ(readFile(folder / "file"), "old");
    }
    EXPECT_EQ(std::filesystem::remove_all(folder), 2u); // the folder, the file, and no draft
}
