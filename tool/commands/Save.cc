#include "tool/Model.hh"
#include "tool/OutputFile.hh"
#include "tool/commands/Commands.hh"

Status save(const std::string &fileName, const std::string &imageName, const Console &console) {
    const auto model = loadModel(readInput(fileName, console.stdinName), console.err);
    if (!model)
        return wrong;
    RtiBuffer image;
    model->save(image);
    writeFile(imageName, image.data(), image.size());
    return done;
}
