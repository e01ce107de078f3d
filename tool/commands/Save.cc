#include "tool/Model.hh"
#include "tool/OutputFile.hh"
#include "tool/commands/Commands.hh"

#include <filesystem>
#include <fstream>

namespace {

/// Whether there is a file with something in it that is no saved image: most likely the name of a FED text, by mistake.
bool isNoImage(const std::string &fileName) {
    std::error_code none;
    if (!std::filesystem::is_regular_file(fileName, none))
        return false;
    const int first = std::ifstream(fileName, std::ios::binary).get();
    return first != std::ifstream::traits_type::eof() && first != 0;
}

} // namespace

Status save(const std::string &fileName, const std::string &imageName, const Console &console) {
    const auto model = loadModel(readInput(fileName, console.stdinName), console.err);
    if (!model)
        return wrong;
    if (isNoImage(imageName))
        throw CannotWork(imageName + ": the file is no saved image, and is not replaced by one");
    RtiBuffer image;
    model->save(image);
    writeFile(imageName, image.data(), image.size());
    return done;
}
