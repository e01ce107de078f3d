#include "tool/console/Interruption.hh"

#include <atomic>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<const char *> unfinishedFile = nullptr;
std::atomic<bool> lineToErase = false;
static_assert(std::atomic<const char *>::is_always_lock_free && std::atomic<bool>::is_always_lock_free,
              "a signal handler may use only such objects");

/// Calls only functions that are safe in a signal handler. The handler was reset when it was called; the signal, raised
/// again, ends the program when it returns.
void cleanUp(int signal) {
    if (lineToErase) {
        constexpr char kErase[] = "\r\033[K";
        static_cast<void>(!write(STDERR_FILENO, kErase, sizeof kErase - 1));
    }
    if (const char *fileName = unfinishedFile)
        unlink(fileName);
    static_cast<void>(raise(signal));
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
    for (const int signal : kSignals) {
        struct sigaction action {};
        if (sigaction(signal, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
            continue;
        action.sa_handler = cleanUp;
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
