#include "tool/console/ChildProcess.hh"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// The files that a child begins with.
class ChildFiles {
public:
    ChildFiles(int output, int errors) {
        posix_spawn_file_actions_init(&_actions);
        posix_spawn_file_actions_addopen(&_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&_actions, output, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&_actions, errors, STDERR_FILENO);
    }
    ~ChildFiles() { posix_spawn_file_actions_destroy(&_actions); }
    ChildFiles(const ChildFiles &) = delete;
    ChildFiles &operator=(const ChildFiles &) = delete;

    const posix_spawn_file_actions_t *actions() const { return &_actions; }

private:
    posix_spawn_file_actions_t _actions{};
};

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string> &arguments) : _errors(std::tmpfile()) {
    std::vector<char *> argv;
    argv.reserve(arguments.size() + 1); // equivalent: only speed
    for (const std::string &argument : arguments)
        argv.push_back(
            const_cast<char *>(argument.c_str())); // NOLINT(cppcoreguidelines-pro-type-const-cast): not changed
    argv.push_back(nullptr);
    int ends[2]; // of the pipe: for reading and for writing. equivalent: room for more does no harm
    // unreached: where the program has no more files
    if (!_errors || pipe2(ends, O_CLOEXEC) != 0)
        throw std::string(std::strerror(errno));
    _output.reset(fdopen(ends[0], "rb"));
    int error = errno;
    // unreached: fdopen() fails without memory only
    if (_output) {
        const ChildFiles files(ends[1], fileno(_errors.get()));
        error = posix_spawnp(&_id, argv[0], files.actions(), nullptr, argv.data(), environ);
    } else { // unreached: as above
        close(ends[0]);
    }
    close(ends[1]);
    if (error != 0) {
        _id = -1;
        throw std::string(std::strerror(error));
    }
}

ChildProcess::~ChildProcess() {
    succeeds();
}

bool ChildProcess::succeeds() {
    if (_id < 0)
        return false;
    _output.reset();
    int status = 0;
    while (waitpid(_id, &status, 0) < 0 && errno == EINTR) // unreached: no signal that comes is handled and returns
        ;
    _id = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string ChildProcess::complaint() const {
    std::string text(4096, '\0'); // equivalent: only speed
    std::rewind(_errors.get());
    text.resize(std::fread(text.data(), 1, text.size(), _errors.get()));
    return text;
}
