#include "tool/commands/Commands.hh"
#include "tool/model/Fingerprint.hh"
#include "tool/model/Manifest.hh"
#include "tool/report/FileFindings.hh"

#include <cerrno>
#include <unistd.h>

namespace {

/// Checks the files that one manifest lists.
class ManifestChecker {
public:
    ManifestChecker(const ManifestOptions &options, const Console &console)
        : _options(options), _nowhere(nullptr), _out(options.silent ? _nowhere : console.out),
          _err(options.silent ? _nowhere : console.err), _stdinName(console.stdinName) {}

    Status check(const Input &manifest) {
        if (!manifest.whole || manifest.contents.find('\0') != std::string::npos)
            throw CannotWork(manifest.name + ": a list of checksums has no zero byte and at most 1 GiB");
        for (std::size_t begin = 0, end = 0; begin < manifest.contents.size(); begin = end + 1) {
            end = std::min(manifest.contents.find('\n', begin), manifest.contents.size());
            checkLine(std::string_view(manifest.contents).substr(begin, end - begin));
        }
        warn(_numMalformed, "line", _numMalformed == 1 ? "is improperly formatted" : "are improperly formatted");
        warn(_numUnread, "listed file", "could not be read");
        warn(_numWrong, "computed checksum", "did NOT match");
        if (_numLines == 0)
            _err << "rtifed: " << manifest.name << ": no properly formatted checksum lines found\n";
        else if (_numVerified + _numUnread + _numWrong == 0)
            _err << "rtifed: " << manifest.name << ": no file was verified\n";
        if (_numUnread > 0)
            return cannotWork;
        return _numWrong > 0 || _numVerified == 0 || (_options.strict && _numMalformed > 0) ? wrong : done;
    }

private:
    void checkLine(std::string_view text) {
        if (!text.empty() && text.back() == '\r')
            text.remove_suffix(1);
        if (!text.empty() && text.front() == '#')
            return;
        const auto line = parseManifestLine(text);
        if (!line) {
            ++_numMalformed;
            return;
        }
        ++_numLines;
        if (!_options.ignoreMissing || access(line->fileName.c_str(), F_OK) == 0 || errno != ENOENT)
            checkFile(*line);
    }

    void checkFile(const ManifestLine &line) {
        const auto failure = failureOf(line.fileName, [&] {
            const bool agrees = digitsOf(line) == line.digits;
            ++(agrees ? _numVerified : _numWrong);
            if (!agrees || !_options.quiet)
                _out << manifestName(line.fileName) << (agrees ? ": OK\n" : ": FAILED\n");
        });
        if (failure) {
            ++_numUnread;
            _err << "rtifed: " << *failure << '\n';
            _out << manifestName(line.fileName) << ": FAILED open or read\n";
        }
    }

    /// The checksum or fingerprint of a file; empty, with its problems reported, if the library refuses it.
    std::string digitsOf(const ManifestLine &line) {
        const auto model = loadModel(readInput(line.fileName, _stdinName), _err);
        if (!model)
            return {};
        return line.digits.size() == 8 ? checksumText(*model) : fingerprint(*model);
    }

    void warn(std::size_t number, const char *noun, const char *problem) {
        if (number > 0)
            _err << "rtifed: WARNING: " << counted(number, noun) << ' ' << problem << '\n';
    }

    const ManifestOptions &_options;
    std::ostream _nowhere;
    std::ostream &_out, &_err;
    const std::string &_stdinName;
    std::size_t _numLines = 0, _numMalformed = 0, _numVerified = 0, _numUnread = 0, _numWrong = 0;
};

} // namespace

Status checkManifests(const ManifestOptions &options, const Console &console) {
    Status checked = done;
    const Status opened = forEachFile(options.fileNames, console, [&](const Input &manifest) {
        checked = std::max(checked, ManifestChecker(options, console).check(manifest));
        return true;
    });
    return std::max(opened, checked);
}
