#include "tool/Model.hh"

#include "infrastructure/RtiFedParser.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// An image begins with the length of a name, whose first byte is zero; FED text never does.
bool isImage(const std::string &contents) {
    return !contents.empty() && contents[0] == '\0';
}

std::string readAll(std::FILE *file) {
    const int first = std::getc(file);
    if (first != '\0') {
        std::ungetc(first, file);
        return RtiFedParser::readText(file);
    }
    std::string image(1, '\0');
    char chunk[65536];
    while (const std::size_t size = std::fread(chunk, 1, sizeof chunk, file))
        image.append(chunk, size);
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

std::unique_ptr<RtiFedDatabase> loadModel(const std::string &fileName, std::ostream &complaints) {
    std::string contents = readInput(fileName);
    if (isImage(contents)) {
        try {
            RtiBuffer image(contents.data(), contents.size());
            return std::make_unique<RtiFedDatabase>(image);
        } catch (const RTI::Exception &refused) {
            complaints << fileName << ": error: no image of a database: " << refused._reason << '\n';
            return nullptr;
        }
    }
    const Checker checker(contents);
    if (!checker.foundNothing()) {
        checker.forEachFinding([&](const Finding &finding) { print(complaints, fileName, finding); });
        return nullptr;
    }
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(fileName, RTI_false));
    std::FILE *text = fmemopen(contents.data(), contents.size(), "r");
    if (!text)
        throw CannotWork(fileName + ": " + std::strerror(errno));
    database->buildFromFed(text);
    return database;
}
