#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

/// Another program that runs with its standard output connected to this one. Its standard input is empty. No shell
/// takes part, so that arguments may have any bytes.
class ChildProcess {
public:
    /// Starts the program `arguments[0]`, found through PATH. Throws a std::string that says why it cannot be started.
    explicit ChildProcess(const std::vector<std::string> &arguments);
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    /// What the program prints.
    std::FILE *output() const { return _output.get(); }

    /// Waits for the end of the program, which gets SIGPIPE if it prints more than was read. Returns whether it ended
    /// with status 0.
    bool succeeds();

    /// The beginning of what an ended program has written to standard error.
    std::string complaint() const;

private:
    struct Close {
        void operator()(std::FILE *file) const { static_cast<void>(std::fclose(file)); }
    };
    using File = std::unique_ptr<std::FILE, Close>;

    File _output;
    File _errors; // a file without a name, into which any number of bytes can be written while nobody reads
    pid_t _id = -1;
};
