#pragma once

#include <csignal>

/// What happens when SIGINT, SIGTERM or SIGHUP ends the program, or memory that runs out where no exception may be
/// thrown.

/// Makes these erase the progress line and remove a file that is not finished before they end the program. After a
/// signal it still ends by the signal, so that a shell or make sees that it was interrupted; without memory it says so
/// and ends with the status cannotWork. A signal that is ignored, as nohup arranges, stays ignored.
void cleanUpWhenInterrupted();

/// Names the file that a signal is to remove; null for none. The name must stay valid until the next call. The caller
/// delays interruptions while the name and the file system do not agree.
void removeIfInterrupted(const char *fileName);

/// Says whether a signal is to erase the last line of the terminal on standard error.
void eraseLineIfInterrupted(bool erase);

/// Delays the signals during its lifetime.
class InterruptionDelay {
public:
    InterruptionDelay();
    ~InterruptionDelay();
    InterruptionDelay(const InterruptionDelay &) = delete;
    InterruptionDelay &operator=(const InterruptionDelay &) = delete;

private:
    sigset_t _before{};
};
