#include "tool/console/Interruption.hh"

#include "tool/console/Console.hh"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<const char *> unfinishedFile = nullptr;
std::atomic<bool> lineToErase = false;
static_assert(std::atomic<const char *>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "a signal handler may use only such objects");

// unreached in this function: a program that a signal ends records nothing
void say(std::string_view text) {
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.size()));
}

/// Calls only functions that are safe in a signal handler.
// unreached in this function: as above
void cleanUp() {
    if (lineToErase)
        say("\r\033[K");
    if (const char *fileName = unfinishedFile)
        unlink(fileName);
}

/// The handler was reset when it was called; the signal, raised again, ends the program when it returns.
// unreached in this function: as above
void endBySignal(int signal) {
    cleanUp();
    static_cast<void>(raise(signal));
}

/// Functions of libraries that must not throw may allocate: the JSON library does so to destroy nested values. The
/// program cannot go on then, but it can say why.
// unreached in this function: it ends the program, without a record
[[noreturn]] void endWithoutMemory() {
    try {
        if (const std::exception_ptr reason = std::current_exception())
            std::rethrow_exception(reason);
    } catch (const std::bad_alloc &) {
        cleanUp();
        for (const std::string_view part : {"rtifed: ", kOutOfMemory, "\n"})
            say(part);
        _exit(cannotWork);
    } catch (...) { // abort() shows that this is a fault of the program
    }
    std::abort();
}

sigset_t interruptions() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : kSignals)
        sigaddset(&signals, signal);
    return signals;
}

} // namespace

void cleanUpWhenInterrupted() {
    std::set_terminate(endWithoutMemory);
    for (const int signal : kSignals) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action); // which fails for other numbers only
        if (action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = endBySignal;
        action.sa_mask = interruptions(); // one clean-up at a time
        action.sa_flags = static_cast<int>(SA_RESETHAND);
        sigaction(signal, &action, nullptr);
    }
}

void removeIfInterrupted(const char *fileName) {
    unfinishedFile = fileName;
}

void eraseLineIfInterrupted(bool erase) {
    lineToErase = erase;
}

InterruptionDelay::InterruptionDelay() {
    const sigset_t signals = interruptions();
    pthread_sigmask(SIG_BLOCK, &signals, &_before);
}

InterruptionDelay::~InterruptionDelay() {
    pthread_sigmask(SIG_SETMASK, &_before, nullptr);
}
