#include "tool/commands/Commands.hh"
#include "tool/model/Model.hh"

#include <sstream>

Status list(const std::string &fileName, const Console &console) {
    const Input input = readInput(fileName, console.stdinName);
    const auto model = loadModel(input, console.err);
    if (!model)
        return wrong;
    std::ostringstream listing; // whole or not at all: an image may refer to what does not exist
    try {
        model->dumpDatabase(&listing);
    } catch (const RTI::Exception &) {
        console.err << input.name
                    << ": error: the model refers to a space, transportation or ordering that does not exist\n";
        return wrong;
    }
    console.out << listing.str();
    return done;
}
