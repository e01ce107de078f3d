#include "infrastructure/RTI.hh"
#include "tool/CommandLine.hh"
#include "tool/Terminal.hh"

#include <csignal>
#include <cstdio>
#include <iostream>

namespace {

Status runCommandLine(int argc, char **argv) {
    try {
        return CommandLine(consoleHere()).run(argc, argv);
    } catch (const RTI::Exception &failure) {
        std::cerr << "rtifed: " << failure._reason << '\n';
    } catch (const std::exception &failure) {
        std::cerr << "rtifed: " << failure.what() << '\n';
    }
    return cannotWork;
}

} // namespace

int main(int argc, char **argv) {
    std::signal(SIGPIPE, SIG_DFL);    // a reader that goes early, such as head, ends the program without a word
    std::ios::sync_with_stdio(false); // each command writes by streams or by stdio, never by both
    const Status status = runCommandLine(argc, argv);
    std::clog.flush();
    if (!std::cout.flush() || std::fflush(stdout) != 0) {
        std::cerr << "rtifed: standard output cannot be written\n";
        return cannotWork;
    }
    return status;
}
