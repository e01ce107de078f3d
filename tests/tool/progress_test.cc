// The progress line on a terminal. The thread that draws it is the only one of the program besides the main thread, so
// this is what the thread sanitizer checks of the program.

#include "tool/console/Progress.hh"

#include <gtest/gtest.h>

#include <array>
#include <pty.h>
#include <regex>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Calls all functions in turn for longer than it takes the line to appear, so that they meet the thread that draws it.
void workFor(std::chrono::milliseconds time, const std::string &fileName) {
    const auto end = std::chrono::steady_clock::now() + time;
    for (std::size_t i = 0; std::chrono::steady_clock::now() < end; ++i) {
        Progress::count(i % 9 + 1, 9);
        Progress::workOn(fileName);
        std::this_thread::sleep_for(std::chrono::microseconds(100));
    }
}

void work() {
    Progress progress;
    Progress::count(1, 1);
    workFor(std::chrono::milliseconds(1500), "first.fed");
    const std::string output = Progress::erase() ? "more to come" : "nothing to come";
    EXPECT_EQ(write(STDOUT_FILENO, output.data(), output.size()), static_cast<ssize_t>(output.size()));
    workFor(std::chrono::milliseconds(500), "early.fed"); // not yet again
    workFor(std::chrono::milliseconds(1000), "second.fed");
    Progress::stop();
    workFor(std::chrono::milliseconds(300), "stopped.fed");
}

/// Returns what a process that calls `work` writes to its terminal, and its status.
std::pair<std::string, int> onTerminal(void (*work)()) {
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        work();
        _exit(0); // by which the sanitizer reports what it has found
    }
    std::string text;
    std::array<char, 256> bytes{};
    for (ssize_t size = 0; (size = read(terminal, bytes.data(), bytes.size())) > 0;)
        text.append(bytes.data(), static_cast<std::size_t>(size));
    close(terminal);
    int status = -1;
    waitpid(child, &status, 0);
    return {text, status};
}

} // namespace

TEST(Progress, IsDrawnAndErasedByTwoThreads) {
    const auto [text, status] = onTerminal(work);
    EXPECT_EQ(status, 0) << text;
    const auto lines = [](const std::string &file) {
        return "(\rWorking for \\d+ s, file [1-9] of 9: " + file + "\\.fed\033\\[K)+\r\033\\[K";
    };
    EXPECT_TRUE(std::regex_match(text, std::regex(lines("first") + "more to come" + lines("second")))) << text;
}
