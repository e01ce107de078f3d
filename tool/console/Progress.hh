#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

/// Shows what the program is working on, in a line on standard error that is erased again, once it has worked and
/// printed nothing for a second. Only a terminal shows it, and only while the program is in its foreground. There is
/// one for the process, as there is one standard error; without one, as in tests, the functions do nothing.
///
/// A thread draws the line, so that the work need not look at the clock. The thread is started with the first file.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress &) = delete;
    Progress &operator=(const Progress &) = delete;

    /// Says which of how many files comes next.
    static void count(std::size_t number, std::size_t of);
    /// Says which file is being worked on.
    static void workOn(const std::string &fileName);
    /// Shows nothing until the next file, such as while a person types.
    static void wait();
    /// Shows nothing any more.
    static void stop();
    /// Erases the line, before something else is printed. Returns whether a line may be shown later.
    static bool erase();

private:
    using Clock = std::chrono::steady_clock;

    void draw();
    void eraseLine();
    void run();
    std::string text() const;

    static Progress *_current;

    std::mutex _mutex; // for all that follows
    std::condition_variable _ends;
    std::thread _thread;
    bool _ending = false, _stopped = false;
    std::string _fileName; // empty while nothing is shown
    std::size_t _number = 0, _of = 0;
    Clock::time_point _begin, _next; // of the work, and when the line may be drawn
    std::string _drawn;              // empty if no line is shown
};
