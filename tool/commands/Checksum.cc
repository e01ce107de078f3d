#include "tool/Model.hh"
#include "tool/commands/Commands.hh"

#include <iomanip>

Status checksum(const std::vector<std::string> &fileNames, const Console &console) {
    return forEachFile(fileNames, console, [&](const Input &input) {
        const auto model = loadModel(input, console.err);
        if (model)
            console.out << std::hex << std::setw(8) << std::setfill('0') << model->getChecksum() << "  " << input.name
                        << '\n';
        return model != nullptr;
    });
}
