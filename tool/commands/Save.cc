#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

/// Whether a file of this name exists that is not empty and not a saved image: most likely a FED text, named by
/// mistake. Throws CannotWork if it cannot be read.
bool isNoImage(const std::string &fileName) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(fileName, none))
        return false;
    const std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(fileName.c_str(), "rb"), &std::fclose);
    if (!file) // unreached: a file that its owner may not read; root, who may run the tests, can read it
        throw CannotWork(fileName + ": " + std::strerror(errno));
    const int first = std::getc(file.get());
    if (std::ferror(file.get())) // unreached: a failing disk
        throw CannotWork(fileName + ": the file cannot be read: " + std::strerror(errno));
    return first != EOF && first != 0;
}

} // namespace

Status save(const std::string &fileName, const std::string &imageName, const Console &console) {
    const bool toStdout = imageName == "-";
    if (toStdout && console.terminal)
        throw CannotWork("standard output is a terminal, which cannot show an image; name a file or redirect it");
    const auto model = loadModel(readInput(fileName, console.stdinName), console.err);
    if (!model)
        return wrong;
    if (!toStdout && isNoImage(imageName))
        throw CannotWork(imageName + ": the file is not a saved image, so it is not replaced by one");
    RtiBuffer image;
    model->save(image);
    if (toStdout)
        console.out.write(reinterpret_cast<const char *>(image.data()), static_cast<std::streamsize>(image.size()));
    else
        writeFile(imageName, image.data(), image.size());
    return done;
}
