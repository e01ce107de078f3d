#include "tool/input/Input.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/console/Progress.hh"
#include "tool/input/HeapReserve.hh"

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

[[noreturn]] void refuseSize(const std::string &found) {
    throw "expected at most " + std::to_string(kMaxTextSize) + " bytes, found " + found;
}

/// Refuses a regular file by its size, before anything of it is read, or prepares for it.
void checkSize(std::FILE *file) {
    struct stat status {};
    if (fstat(fileno(file), &status) != 0 || !S_ISREG(status.st_mode))
        return;
    if (static_cast<std::uintmax_t>(status.st_size) > kMaxTextSize) // equivalent: nobody minds a byte
        refuseSize(std::to_string(status.st_size));
    reserveHeap(static_cast<std::size_t>(status.st_size)); // equivalent: only speed
}

std::string readImage(std::FILE *file) {
    std::string image;
    std::string chunk(65536, '\0'); // equivalent: only speed
    while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), file)) {
        image.append(chunk, 0, size);
        if (image.size() > kMaxTextSize) // unreached: a test would have to send a gigabyte
            break;
    }
    if (std::ferror(file)) // unreached: no file that a test can make fails after its first byte
        throw std::string("the file cannot be read: ") + std::strerror(errno);
    return image;
}

/// Reads a file to its end, or to the first NUL byte of a text. What is not a regular file is read to the greatest size
/// before it is refused.
std::string readAll(std::FILE *file) {
    checkSize(file);
    const int first = std::getc(file);
    std::ungetc(first, file); // NOLINT(cert-err33-c): one byte can always be put back
    std::string contents = first == '\0' ? readImage(file) : RtiFedParser::readText(file);
    if (contents.size() > kMaxTextSize) // unreached: as above
        refuseSize("more");
    return contents;
}

} // namespace

bool Input::isXml() const {
    std::string_view text = contents;
    for (const std::string_view mark : {"\xEF\xBB\xBF", "\xFF\xFE"})
        if (text.substr(0, mark.size()) == mark)
            text.remove_prefix(mark.size());
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return begin != std::string_view::npos && text[begin] == '<';
}

Input readStream(std::FILE *file, const std::string &name) {
    try {
        std::string contents = readAll(file);
        Progress::workOn(name);
        return {name, std::move(contents), std::feof(file) != 0};
    } catch (const std::string &reason) {
        throw CannotWork(name + ": " + reason);
    }
}

Input readInput(const std::string &fileName, const std::string &stdinName) {
    const std::string &name = fileName == "-" ? stdinName : fileName;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> opened(nullptr, &std::fclose);
    std::FILE *file = stdin;
    static bool stdinWasRead = false; // perhaps not to its end
    if (fileName == "-" && std::exchange(stdinWasRead, true))
        throw CannotWork(name + ": standard input was already read");
    if (fileName == "-" && isatty(STDIN_FILENO))
        Progress::wait();
    else
        Progress::workOn(name);
    if (fileName != "-") {
        file = std::fopen(fileName.c_str(), "rb");
        if (!file)
            throw CannotWork(name + ": " + std::strerror(errno));
        opened.reset(file);
    }
    return readStream(file, name);
}
