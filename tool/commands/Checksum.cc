#include "fed/storage/RtiFedName.hh"
#include "tool/commands/Commands.hh"
#include "tool/model/Model.hh"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <unistd.h>
#include <utility>

namespace {

/// A line of a list of checksums: the digits of a checksum or fingerprint, two blanks, and a file name.
struct ManifestLine {
    std::string digits; ///< In any letter case.
    std::string fileName;
};

constexpr std::pair<char, char> kEscapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}};

std::string escaped(std::string_view name) {
    std::string text;
    for (const char byte : name) {
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                          [byte](const auto &candidate) { return candidate.first == byte; });
        if (escape == std::end(kEscapes))
            text += byte;
        else
            text += {'\\', escape->second};
    }
    return text;
}

std::optional<std::string> unescaped(std::string_view text) {
    std::string name;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            name += text[at];
            continue;
        }
        // equivalent: but for sanitizers, since a line end follows the line, or a zero byte
        const char letter = ++at < text.size() ? text[at] : '\0';
        const auto *escape = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                          [letter](const auto &candidate) { return candidate.second == letter; });
        if (escape == std::end(kEscapes))
            return {};
        name += escape->first;
    }
    return name;
}

/// Returns a line without its line end. Backslashes and line ends in the name are escaped by a backslash, and the line
/// then begins with a backslash.
std::string manifestText(const ManifestLine &line) {
    const std::string name = escaped(line.fileName);
    return (name == line.fileName ? "" : "\\") + line.digits + "  " + name;
}

/// Returns a file name escaped in the same way, for a message that begins with it.
std::string manifestName(const std::string &fileName) {
    const std::string name = escaped(fileName);
    return (name == fileName ? "" : "\\") + name;
}

/// Parses a line: 8 or 64 digits in any letter case, a blank, a blank or "*", and the file name. Returns nothing for
/// any other line.
std::optional<ManifestLine> parseManifestLine(std::string_view text) {
    const bool isEscaped = !text.empty() && text.front() == '\\';
    if (isEscaped)
        text.remove_prefix(1);
    const std::size_t numDigits = std::min(text.find_first_not_of("0123456789abcdefABCDEF"), text.size());
    const std::string_view rest = text.substr(numDigits);
    if ((numDigits != 8 && numDigits != 64) || rest.size() < 3 || rest[0] != ' ' || (rest[1] != ' ' && rest[1] != '*'))
        return {};
    const std::string_view name = rest.substr(2);
    const auto fileName = isEscaped ? unescaped(name) : std::string(name);
    if (!fileName)
        return {};
    return ManifestLine{std::string(text.substr(0, numDigits)), *fileName};
}

/// The checksum or fingerprint of a file; empty, with its problems reported, if the library refuses it.
std::string digitsOf(Input file, bool sha256, std::ostream &complaints) {
    const auto model = loadModel(std::move(file), complaints);
    return !model ? "" : sha256 ? fingerprint(*model) : checksumText(*model);
}

/// Checks the files that one manifest lists.
class ManifestChecker {
public:
    ManifestChecker(const ChecksumOptions &options, const Console &console)
        : _options(options), _nowhere(nullptr), _console{options.silent ? _nowhere : console.out,
                                                         options.silent ? _nowhere : console.err,
                                                         false, // equivalent: this command uses no colours
                                                         false, // equivalent: nor other characters
                                                         0,     // equivalent: nor the width
                                                         console.stdinName} {}

    Status check(const Input &manifest) {
        if (!manifest.whole || manifest.contents.find('\0') != std::string::npos)
            throw CannotWork(manifest.name + ": a list of checksums has no zero byte");
        // equivalent: the end is set before it is used
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
        const auto compare = [&](Input file) {
            const bool agrees =
                // equivalent: there are 8 or 64
                RtiFedName::equal(digitsOf(std::move(file), line.digits.size() > 8, _console.err), line.digits);
            ++(agrees ? _numVerified : _numWrong);
            if (!agrees || !_options.quiet)
                _console.out << name << (agrees ? ": OK\n" : ": FAILED\n");
            return agrees;
        };
        forEachFile({FileToRead{line.fileName}}, _console, compare, [&](const std::string &, const std::string &) {
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
    const auto work = [&](Input input) {
        if (options.check) {
            checked = std::max(checked, ManifestChecker(options, console).check(input));
            return true;
        }
        const std::string name = input.name, digits = digitsOf(std::move(input), options.sha256, console.err);
        if (!digits.empty())
            console.out << manifestText({digits, name}) << '\n';
        return !digits.empty();
    };
    std::vector<FileToRead> files;
    if (options.check)
        for (const std::string &manifest : options.fileNames)
            files.push_back({manifest});
    else
        files = withoutFolders(options.fileNames);
    const Status opened = forEachFile(files, console, work, [](const std::string &, const std::string &) {});
    return std::max(opened, checked);
}
