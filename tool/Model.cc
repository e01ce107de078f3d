#include "tool/Model.hh"

#include "infrastructure/RtiFedParser.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>

void print(std::ostream &os, const std::string &fileName, const Finding &finding) {
    os << fileName << ':' << finding.position.line << ':' << finding.position.column << ": error: " << finding.text
       << '\n';
    for (const std::string &line : finding.details)
        os << "    " << line << '\n';
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

bool reportProblems(const Input &input, std::ostream &os) {
    if (input.isImage()) {
        try {
            restoreImage(input.contents);
            return true;
        } catch (const RTI::Exception &refused) {
            os << input.name << ": error: " << RtiFedParser::printable(refused._reason, 300) << '\n';
            return false;
        }
    }
    const Checker checker(input.contents);
    checker.forEachFinding([&](const Finding &finding) { print(os, input.name, finding); });
    return checker.findsNoError();
}

std::unique_ptr<RtiFedDatabase> loadModel(const Input &input, std::ostream &complaints) {
    return reportProblems(input, complaints) ? buildModel(input) : nullptr;
}

std::unique_ptr<RtiFedDatabase> buildModel(const Input &input) {
    if (input.isImage())
        return restoreImage(input.contents);
    auto database = std::make_unique<RtiFedDatabase>(RtiFedDatabaseConstructorArg(input.name, RTI_false));
    // The stream only reads, though its interface would let it write.
    std::FILE *text = fmemopen(const_cast<char *>(input.contents.data()), input.contents.size(), "r");
    if (!text)
        throw CannotWork(input.name + ": " + std::strerror(errno));
    database->buildFromFed(text);
    return database;
}
