#include "tool/Model.hh"

#include "infrastructure/RtiFedLimits.hh"
#include "infrastructure/RtiFedParser.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

std::string readAll(std::FILE *file) {
    const int first = std::getc(file);
    if (first != '\0') {
        std::ungetc(first, file);
        return RtiFedParser::readText(file);
    }
    std::string image(1, '\0');
    char chunk[65536];
    while (const std::size_t size = std::fread(chunk, 1, sizeof chunk, file)) {
        image.append(chunk, size);
        if (image.size() > kMaxTextSize)
            throw "expected an image of at most " + std::to_string(kMaxTextSize) + " bytes, found a longer one";
    }
    if (std::ferror(file))
        throw std::string("the file cannot be read: ") + std::strerror(errno);
    return image;
}

} // namespace

std::string readInput(const std::string &fileName) {
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> opened(nullptr, &std::fclose);
    std::FILE *file = stdin;
    if (fileName != "-") {
        file = std::fopen(fileName.c_str(), "rb");
        if (!file)
            throw CannotWork(fileName + ": " + std::strerror(errno));
        opened.reset(file);
    }
    try {
        return readAll(file);
    } catch (const std::string &reason) {
        throw CannotWork(fileName + ": " + reason);
    }
}

void print(std::ostream &os, const std::string &fileName, const Finding &finding) {
    os << fileName << ':' << finding.position.line << ':' << finding.position.column << ": error: " << finding.text
       << '\n';
    for (const std::string &line : finding.details)
        os << "    " << line << '\n';
}

bool isImage(const std::string &contents) {
    return !contents.empty() && contents[0] == '\0';
}

std::unique_ptr<RtiFedDatabase> restoreImage(const std::string &image) {
    RtiBuffer buffer(image.data(), image.size());
    auto database = std::make_unique<RtiFedDatabase>(buffer);
    if (buffer.remaining() > 0)
        throw RTI::RTIinternalError(("image byte " + std::to_string(buffer.size() - buffer.remaining()) + ": " +
                                     std::to_string(buffer.remaining()) + " bytes stand behind the image")
                                        .c_str());
    return database;
}

bool reportProblems(const std::string &fileName, const std::string &contents, std::ostream &os) {
    if (isImage(contents)) {
        try {
            restoreImage(contents);
            return true;
        } catch (const RTI::Exception &refused) {
            os << fileName << ": error: " << RtiFedParser::printable(refused._reason, 300) << '\n';
            return false;
        }
    }
    const Checker checker(contents);
    checker.forEachFinding([&](const Finding &finding) { print(os, fileName, finding); });
    return checker.foundNothing();
}

std::unique_ptr<RtiFedDatabase> loadModel(const std::string &fileName, std::ostream &complaints) {
    std::string contents = readInput(fileName);
    if (!reportProblems(fileName, contents, complaints))
        return nullptr;
    if (isImage(contents))
        return restoreImage(contents);
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
    std::FILE *text = fmemopen(contents.data(), contents.size(), "r");
    if (!text)
        throw CannotWork(fileName + ": " + std::strerror(errno));
    database->buildFromFed(text);
    return database;
}
