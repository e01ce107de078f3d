#include "tool/model/Input.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

namespace {

std::string readAll(std::FILE *file) {
    const int first = std::getc(file);
    if (first != '\0') {
        std::ungetc(first, file); // NOLINT(cert-err33-c): one byte can always be put back
        return RtiFedParser::readText(file);
    }
    std::string image(1, '\0');
    std::string chunk(65536, '\0');
    while (const std::size_t size = std::fread(chunk.data(), 1, chunk.size(), file)) {
        image.append(chunk, 0, size);
        if (image.size() > kMaxTextSize)
            throw "expected an image of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    }
    if (std::ferror(file))
        throw std::string("the file cannot be read: ") + std::strerror(errno);
    return image;
}

} // namespace

Input readInput(const std::string &fileName, const std::string &stdinName) {
    const std::string &name = fileName == "-" ? stdinName : fileName;
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> opened(nullptr, &std::fclose);
    std::FILE *file = stdin;
    static bool stdinWasRead = false; // perhaps not to its end
    if (fileName == "-" && std::exchange(stdinWasRead, true))
        throw CannotWork(name + ": standard input was already read");
    if (fileName != "-") {
        file = std::fopen(fileName.c_str(), "rb");
        if (!file)
            throw CannotWork(name + ": " + std::strerror(errno));
        opened.reset(file);
    }
    try {
        std::string contents = readAll(file);
        return {name, std::move(contents), std::feof(file) != 0};
    } catch (const std::string &reason) {
        throw CannotWork(name + ": " + reason);
    }
}
