#include "fed/storage/RtiFedName.hh"
#include "tool/commands/Commands.hh"
#include "tool/model/Manifest.hh"
#include "tool/model/Model.hh"
#include "tool/report/FileFindings.hh"

#include <cerrno>
#include <unistd.h>

namespace {

/// The checksum or fingerprint of a file; empty, with its problems reported, if the library refuses it.
std::string digitsOf(const Input &file, bool sha256, std::ostream &complaints) {
    const auto model = loadModel(file, complaints);
    return !model ? "" : sha256 ? fingerprint(*model) : checksumText(*model);
}

/// Checks the files that one manifest lists.
class ManifestChecker {
public:
    ManifestChecker(const ChecksumOptions &options, const Console &console)
        : _options(options), _nowhere(nullptr), _console{options.silent ? _nowhere : console.out,
                                                         options.silent ? _nowhere : console.err,
                                                         false,
                                                         false,
                                                         0,
                                                         console.stdinName} {}

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
            _console.err << "rtifed: " << manifest.name << ": no properly formatted checksum lines found\n";
        else if (_numVerified + _numUnread + _numWrong == 0)
            _console.err << "rtifed: " << manifest.name << ": no file was verified\n";
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
        const std::string name = manifestName(line.fileName);
        const auto compare = [&](const Input &file) {
            const bool agrees = RtiFedName::equal(digitsOf(file, line.digits.size() > 8, _console.err), line.digits);
            ++(agrees ? _numVerified : _numWrong);
            if (!agrees || !_options.quiet)
                _console.out << name << (agrees ? ": OK\n" : ": FAILED\n");
            return agrees;
        };
        forEachFile({line.fileName}, _console, compare, [&](const std::string &, const std::string &) {
            ++_numUnread;
            _console.out << name << ": FAILED open or read\n";
        });
    }

    void warn(std::size_t number, const char *noun, const char *problem) {
        if (number > 0)
            _console.err << "rtifed: WARNING: " << counted(number, noun) << ' ' << problem << '\n';
    }

    const ChecksumOptions &_options;
    std::ostream _nowhere;
    const Console _console;
    std::size_t _numLines = 0, _numMalformed = 0, _numVerified = 0, _numUnread = 0, _numWrong = 0;
};

} // namespace

Status checksum(const ChecksumOptions &options, const Console &console) {
    Status checked = done;
    const auto work = [&](const Input &input) {
        if (options.check) {
            checked = std::max(checked, ManifestChecker(options, console).check(input));
            return true;
        }
        const std::string digits = digitsOf(input, options.sha256, console.err);
        if (!digits.empty())
            console.out << manifestText({digits, input.name}) << '\n';
        return !digits.empty();
    };
    const Status opened =
        forEachFile(options.fileNames, console, work, [](const std::string &, const std::string &) {});
    return std::max(opened, checked);
}
