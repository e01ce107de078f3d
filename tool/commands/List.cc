#include "tool/commands/Commands.hh"
#include "tool/model/Model.hh"

#include <sstream>

Status list(const std::string &fileName, const Console &console) {
    const Input input = readInput(fileName, console.stdinName);
    const auto model = loadModel(input, console.err);
    if (!model)
        return wrong;
    std::ostringstream listing; // whole or not at all
    if (!writeListing(*model, listing)) {
        console.err << input.name << ": error: " << kDanglingReference << '\n';
        return wrong;
    }
    console.out << listing.str();
    return done;
}
