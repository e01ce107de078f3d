#include "tool/console/Progress.hh"

#include "tool/console/Interruption.hh"
#include "tool/console/Line.hh"
#include "tool/console/TerminalBuffer.hh"
#include "tool/console/Text.hh"

#include <algorithm>
#include <system_error>
#include <unistd.h>

namespace {

// equivalent: no test measures time as exactly
constexpr auto kPatience = std::chrono::seconds(1);        // before the line appears
constexpr auto kInterval = std::chrono::milliseconds(200); // equivalent: likewise

bool inForeground() {
    return tcgetpgrp(STDERR_FILENO) == getpgrp();
}

void put(const std::string &text) {
    static_cast<void>(!write(STDERR_FILENO, text.data(), text.size())); // nobody depends on the line
}

} // namespace

Progress *Progress::_current = nullptr;

Progress::Progress() : _begin(Clock::now()), _next(_begin + kPatience) {
    _current = this;
}

Progress::~Progress() {
    _current = nullptr;
    {
        const std::lock_guard<std::mutex> lock(_mutex);
        _ending = true;
        eraseLine();
    }
    _ends.notify_one();
    if (_thread.joinable())
        _thread.join();
}

void Progress::count(std::size_t number, std::size_t of) {
    if (!_current)
        return;
    const std::lock_guard<std::mutex> lock(_current->_mutex);
    _current->_number = number;
    _current->_of = of;
}

void Progress::workOn(const std::string &fileName) {
    if (!_current)
        return;
    Progress &here = *_current;
    const std::lock_guard<std::mutex> lock(here._mutex);
    if (here._stopped)
        return;
    if (here._fileName.empty()) {
        here._begin = Clock::now();
        here._next = here._begin + kPatience;
    }
    here._fileName = fileName;
    if (here._thread.joinable())
        return;
    const InterruptionDelay delay; // the new thread inherits it, so that the main thread gets all signals
    try {
        here._thread = std::thread([&here] { here.run(); });
    } catch (const std::system_error &) { // the work matters more. unreached: too little memory, or too many threads
        here._stopped = true;
    }
}

void Progress::wait() {
    if (!_current)
        return;
    const std::lock_guard<std::mutex> lock(_current->_mutex);
    _current->eraseLine();
    _current->_fileName.clear();
}

void Progress::stop() {
    if (!_current)
        return;
    wait();
    const std::lock_guard<std::mutex> lock(_current->_mutex);
    _current->_stopped = true;
}

bool Progress::erase() {
    if (!_current)
        return false;
    const std::lock_guard<std::mutex> lock(_current->_mutex);
    _current->eraseLine();
    _current->_next = Clock::now() + kPatience;
    return !_current->_stopped;
}

void Progress::run() {
    std::unique_lock<std::mutex> lock(_mutex);
    while (!_ends.wait_for(lock, kInterval, [this] { return _ending; }))
        // unreached: where files are read after what a person types, or in the background
        if (!_fileName.empty() && Clock::now() >= _next && inForeground())
            draw();
}

void Progress::draw() {
    const std::string line = text();
    if (line == _drawn)
        return;
    eraseLineIfInterrupted(true);
    put("\r" + line + "\033[K");
    _drawn = line;
}

void Progress::eraseLine() {
    if (_drawn.empty())
        return;
    put("\r\033[K");
    eraseLineIfInterrupted(false);
    _drawn.clear();
}

std::string Progress::text() const {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - _begin).count();
    std::string line = "Working for " + std::to_string(seconds) + " s";
    if (_of > 1)
        line += ", file " + std::to_string(_number) + " of " + std::to_string(_of);
    line += ": " + shown(_fileName);
    return std::string(firstColumns(line, std::max<std::size_t>(terminalWidth(STDERR_FILENO), 2) - 1));
}
