#include "tool/console/OutputFile.hh"

#include "tool/console/Console.hh"
#include "tool/console/Interruption.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <ios>
#include <streambuf>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {

/// Follows symbolic links: a rename would replace the link itself.
std::string linkTarget(const std::string &fileName) {
    std::error_code error;
    if (!std::filesystem::is_symlink(fileName, error))
        return fileName;
    std::string target = std::filesystem::canonical(fileName, error);
    if (error)
        throw CannotWork(fileName + ": " + error.message());
    return target;
}

/// The new file until it is complete; closed and removed if it does not get that far, or if a signal ends the program.
class Draft {
public:
    enum class Target { anyFile, newFile };

    Draft(const std::string &fileName, Target target) : _fileName(fileName) {
        if (target == Target::newFile)
            openNew();
        else
            openBeside();
    }
    ~Draft() {
        const int error = errno;
        if (_file >= 0)
            close(_file);
        if (_file >= 0 && !_draftName.empty())
            unlink(_draftName.c_str());
        removeIfInterrupted(nullptr);
        errno = error;
    }
    Draft(const Draft &) = delete;
    Draft &operator=(const Draft &) = delete;

    void write(const char *bytes, std::size_t size) {
        while (size > 0) {
            const ssize_t written = ::write(_file, bytes, size);
            if (written < 0 && errno == EINTR) // unreached: no signal that comes is handled and returns
                continue;
            if (written < 0)
                throwError();
            bytes += written;
            size -= static_cast<std::size_t>(written);
        }
    }

    void finish() {
        if (!_draftName.empty())
            replaceTarget();
        const int file = _file;
        _file = -1;
        if (close(file) != 0) // unreached: fails on a network or a broken disk
            throwError();
    }

private:
    static mode_t modeOfNewFiles() {
        const mode_t mask = umask(0);
        umask(mask);
        return 0666 & ~mask;
    }

    /// Only the exclusive creation of the file itself is safe from one that is made meanwhile; no rename is. So the
    /// file is its own draft: others may see it unfinished, but no failure leaves a part of it.
    void openNew() {
        _mode = modeOfNewFiles();
        const InterruptionDelay delay; // until the signal handler knows the new file
        _file = open(_fileName.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
        if (_file < 0 && errno == EEXIST)
            throw CannotWork(_fileName + ": the file exists already, so it is left alone");
        if (_file < 0)
            throwError();
        _draftName = _target = _fileName;
        removeIfInterrupted(_draftName.c_str());
    }

    void openBeside() {
        struct stat status {};
        const bool exists = stat(_fileName.c_str(), &status) == 0;
        if (exists && !S_ISREG(status.st_mode)) {
            _file = open(_fileName.c_str(), O_WRONLY | O_CLOEXEC);
        } else {
            _mode = exists ? status.st_mode & 07777 : modeOfNewFiles();
            _isReplaced = exists;
            _owner = status.st_uid;
            _group = status.st_gid;
            _target = linkTarget(_fileName);
            _draftName = _target + ".XXXXXX";
            const InterruptionDelay delay; // until the signal handler knows the new file
            _file = mkstemp(_draftName.data());
            removeIfInterrupted(_file < 0 ? nullptr : _draftName.c_str());
        }
        if (_file < 0)
            throwError();
    }

    void replaceTarget() {
        // unreached: fails unless the owner, or one who may do all, replaces a file
        if (_isReplaced && fchown(_file, _owner, _group) != 0)
            throwError();
        // unreached: fails on a broken disk
        if (fchmod(_file, _mode) != 0 || fsync(_file) != 0)
            throwError();
        const InterruptionDelay delay; // until the signal handler has forgotten the name, which is free then
        // unreached: fails if the folder changes meanwhile
        if (rename(_draftName.c_str(), _target.c_str()) != 0)
            throwError();
        removeIfInterrupted(nullptr);
    }

    [[noreturn]] void throwError() const {
        const std::string reason = std::strerror(errno);
        throw CannotWork(_fileName + ": " + reason);
    }

    std::string _fileName;
    std::string _draftName, _target; // the draft is renamed to the target; both empty if the file is written in place
    mode_t _mode = 0;                // of the new file
    bool _isReplaced = false;        // whether there is an old file, whose owner and group the new one gets
    uid_t _owner = 0;
    gid_t _group = 0;
    int _file = -1;
};

void writeDraft(const std::string &fileName, Draft::Target target, const void *bytes, std::size_t size) {
    Draft draft(fileName, target);
    draft.write(static_cast<const char *>(bytes), size);
    draft.finish();
}

/// Passes what a stream writes to a draft. The exceptions of that reach the caller of the stream, if its `exceptions`
/// say so.
class DraftBuffer : public std::streambuf {
public:
    explicit DraftBuffer(Draft &draft) : _draft(draft) { setp(_bytes.data(), _bytes.data() + _bytes.size()); }

protected:
    int_type overflow(int_type byte) override {
        sync();
        return sputc(traits_type::to_char_type(byte)); // no stream passes the end of a file
    }

    int sync() override {
        _draft.write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        setp(_bytes.data(), _bytes.data() + _bytes.size());
        return 0; // equivalent: all but -1 says that it worked
    }

private:
    Draft &_draft;
    std::vector<char> _bytes = std::vector<char>(std::size_t{1} << 16U); // equivalent: only speed
};

} // namespace

void writeFile(const std::string &fileName, const void *bytes, std::size_t size) {
    writeDraft(fileName, Draft::Target::anyFile, bytes, size);
}

void createFile(const std::string &fileName, const void *bytes, std::size_t size) {
    writeDraft(fileName, Draft::Target::newFile, bytes, size);
}

void writeOutput(const std::string &fileName, const std::string &text, const Console &console) {
    if (fileName == "-")
        console.out << text;
    else
        writeFile(fileName, text.data(), text.size());
}

void writeOutput(const std::string &fileName, const std::function<void(std::ostream &)> &write,
                 const Console &console) {
    if (fileName == "-") {
        write(console.out);
        return;
    }
    Draft draft(fileName, Draft::Target::anyFile);
    DraftBuffer buffer(draft);
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);
    write(out);
    out.flush();
    draft.finish();
}
