#include "infrastructure/RTI.hh"
#include "tool/commandline/CommandLine.hh"
#include "tool/console/Interruption.hh"
#include "tool/console/Progress.hh"
#include "tool/console/TerminalBuffer.hh"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

std::string variable(const char *name) {
    const char *value = std::getenv(name);
    return value ? value : "";
}

/// Whether the locale's characters are UTF-8, by the first of the variables that is set.
bool localeIsUtf8() {
    for (const char *name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const std::string locale = variable(name);
        if (!locale.empty())
            return locale.find("UTF-8") != std::string::npos || locale.find("utf8") != std::string::npos ||
                   locale.find("utf-8") != std::string::npos;
    }
    return false;
}

/// Whether the terminal knows escape codes.
bool terminalIsDumb() {
    return variable("TERM").empty() || variable("TERM") == "dumb";
}

/// Whether the environment asks for colours, by the conventions NO_COLOR and CLICOLOR_FORCE; the first has precedence.
bool wantsColor(bool terminal) {
    if (!variable("NO_COLOR").empty())
        return false;
    const std::string force = variable("CLICOLOR_FORCE");
    return (!force.empty() && force != "0") || (terminal && !terminalIsDumb());
}

/// Returns the width that COLUMNS gives, else that of standard output if it is a terminal, else 0.
std::size_t widthHere(bool terminal) {
    const std::string columns = variable("COLUMNS");
    std::size_t width = 0; // equivalent: not used before it is read
    // equivalent: but for sanitizers, since no digit follows
    const auto [end, error] = std::from_chars(columns.data(), columns.data() + columns.size(), width);
    if (error == std::errc() && end == columns.data() + columns.size() && width > 0)
        return width;
    return terminal ? terminalWidth(STDOUT_FILENO) : 0;
}

/// Returns standard output and standard error. Lines are cut to the width of a terminal only, help fits any width.
Console consoleHere() {
    Console console{std::cout, std::clog};
    console.terminal = isatty(STDOUT_FILENO) != 0;
    console.color = wantsColor(console.terminal);
    console.unicode = console.terminal && !terminalIsDumb() && localeIsUtf8();
    const std::size_t width = widthHere(console.terminal);
    if (console.terminal)
        console.width = width;
    if (width > 0)
        console.helpWidth = width;
    return console;
}

/// Flushes streams and stdio. Throws std::ios_base::failure if the output cannot be written.
void flushOutput() {
    std::cout.flush();
    errno = 0; // equivalent: a write that fails sets it
    // unreached: an error that flushing does not report is that of a write before, which was reported
    if (std::fflush(stdout) != 0 || std::ferror(stdout))
        std::cout.setstate(std::ios::badbit);
}

Status runCommandLine(int argc, char **argv) {
    try {
        const Status status = CommandLine(consoleHere()).run(argc, argv);
        flushOutput();
        return status;
    } catch (const std::ios_base::failure &) {
        const int error = errno;
        std::clog << "rtifed: standard output cannot be written"
                  // unreached: a write that fails says why
                  << (error == 0 ? std::string() : ": " + std::string(std::strerror(error))) << '\n';
    } catch (const RTI::Exception &failure) {
        // unreached: commands report the exceptions of the library themselves
        std::clog << "rtifed: " << failure._reason << '\n';
    } catch (const std::bad_alloc &) {
        std::clog << "rtifed: " << kOutOfMemory << '\n';
    } catch (const std::exception &failure) {
        std::clog << "rtifed: " << failure.what() << '\n';
    }
    return cannotWork;
}

} // namespace

int main(int argc, char **argv) {
    static_cast<void>(std::signal(SIGPIPE, SIG_DFL)); // end silently if a reader such as head closes early
    static_cast<void>(std::signal(SIGXFSZ, SIG_IGN)); // exceeding the file size limit is a write error like others
    // equivalent: only speed; each command writes through streams or stdio, never both
    std::ios::sync_with_stdio(false);
    std::cout.exceptions(std::ios::badbit); // stop early when output cannot be written
    cleanUpWhenInterrupted();
    std::optional<Progress> progress;
    if (isatty(STDERR_FILENO) && !terminalIsDumb())
        progress.emplace();
    std::optional<TerminalBuffer> out, err;
    if (isatty(STDOUT_FILENO))
        out.emplace(std::cout);
    if (isatty(STDERR_FILENO))
        err.emplace(std::clog);
    const Status status = runCommandLine(argc, argv);
    std::clog.flush();
    return status;
}
