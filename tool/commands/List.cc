#include "tool/commands/Commands.hh"
#include "tool/model/Model.hh"

#include <utility>

Status list(const std::string &fileName, const Console &console) {
    Input input = readInput(fileName, console.stdinName);
    const std::string name = input.name;
    const auto model = loadModel(std::move(input), console.err);
    if (!model)
        return wrong;
    TextStream listing; // whole or not at all
    if (!writeListing(*model, listing)) {
        console.err << name << ": error: " << kDanglingReference << '\n';
        return wrong;
    }
    console.out << listing.str();
    return done;
}
