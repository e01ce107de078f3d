#include "infrastructure/RTI.hh"
#include "tool/CommandLine.hh"
#include "tool/console/CannotWork.hh"
#include "tool/console/Terminal.hh"
#include "tool/console/TerminalBuffer.hh"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <optional>
#include <unistd.h>

namespace {

/// Flushes streams and stdio. Throws std::ios_base::failure if the output cannot be written.
void flushOutput() {
    std::cout.flush();
    errno = 0;
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
                  << (error == 0 ? std::string() : ": " + std::string(std::strerror(error))) << '\n';
    } catch (const RTI::Exception &failure) {
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
    std::ios::sync_with_stdio(false);                 // each command writes through streams or stdio, never both
    std::cout.exceptions(std::ios::badbit);           // stop early when output cannot be written
    std::optional<TerminalBuffer> out, err;
    if (isatty(STDOUT_FILENO))
        out.emplace(std::cout);
    if (isatty(STDERR_FILENO))
        err.emplace(std::clog);
    const Status status = runCommandLine(argc, argv);
    std::clog.flush();
    return status;
}
