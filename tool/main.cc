#include "tool/Checker.hh"
#include "tool/Model.hh"
#include "tool/OutputFile.hh"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iomanip>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

enum Status { done = 0, wrong = 1, cannotWork = 2 };

/// Does `work`, which returns whether a file is right, for each file; one that cannot be read keeps none from its turn.
template <class Work>
Status forEachFile(const std::vector<std::string> &fileNames, Work work) {
    Status status = done;
    for (const std::string &fileName : fileNames) {
        try {
            if (!work(fileName))
                status = std::max(status, wrong);
        } catch (const CannotWork &why) {
            std::cerr << "rtifed: " << why.what() << '\n';
            status = cannotWork;
        }
    }
    return status;
}

Status check(const std::vector<std::string> &fileNames) {
    return forEachFile(fileNames, [](const std::string &fileName) {
        return reportProblems(fileName, readInput(fileName), std::cout);
    });
}

Status checksum(const std::vector<std::string> &fileNames) {
    return forEachFile(fileNames, [](const std::string &fileName) {
        const auto model = loadModel(fileName, std::clog);
        if (model)
            std::cout << std::hex << std::setw(8) << std::setfill('0') << model->getChecksum() << "  " << fileName
                      << '\n';
        return model != nullptr;
    });
}

Status save(const std::string &fileName, const std::string &imageName) {
    const auto model = loadModel(fileName, std::clog);
    if (!model)
        return wrong;
    RtiBuffer image;
    model->save(image);
    writeFile(imageName, image.data(), image.size());
    return done;
}

Status list(const std::string &fileName) {
    const auto model = loadModel(fileName, std::clog);
    if (!model)
        return wrong;
    std::ostringstream listing; // whole or not at all: an image may refer to what does not exist
    try {
        model->dumpDatabase(&listing);
    } catch (const RTI::Exception &) {
        std::clog << fileName
                  << ": error: the model refers to a space, transportation or ordering that does not exist\n";
        return wrong;
    }
    std::cout << listing.str();
    return done;
}

/// Prints the declarations as call text, by the library's default callbacks.
Status calls(const std::string &fileName) {
    std::string contents = readInput(fileName);
    if (isImage(contents)) {
        std::clog << fileName << ": error: expected FED text, found a saved image\n";
        return wrong;
    }
    RtiFedParser parser(std::move(contents));
    for (std::size_t i = 0; i < parser.numErrors(); ++i) {
        RtiFedParser::Error error = parser.error(i);
        print(std::clog, fileName, {error.position, std::move(error.text), {}});
    }
    if (parser.numErrors() > 0)
        return wrong;
    RtiFedParserCodegen printer;
    parser.deliver(printer);
    return done;
}

} // namespace

int main(int argc, char **argv) {
    std::ios::sync_with_stdio(false); // each command writes by streams or by stdio, never by both
    CLI::App app("rtifed - check and read FED files of HLA 1.3 federations");
    app.require_subcommand(1);
    app.footer("FILE is FED text or a saved image, or - for standard input.\n"
               "Exit status: 0 done and nothing found; 1 the file was read and found wrong; 2 usage, or a file that "
               "cannot be opened or written.");

    std::vector<std::string> fileNames;
    std::string fileName, imageName;
    Status status = done;
    const auto add = [&app](const char *name, const char *purpose, auto &argument, auto action) {
        CLI::App *command = app.add_subcommand(name, purpose);
        command->add_option("FILE", argument)->required();
        command->callback(action);
    };
    add("check", "Load each file; print every problem as FILE:LINE:COLUMN: error: TEXT", fileNames,
        [&] { status = check(fileNames); });
    add("list", "Print the model's readable listing, with all handles", fileName, [&] { status = list(fileName); });
    add("calls", "Print the declarations as call text, whether or not they load", fileName,
        [&] { status = calls(fileName); });
    add("checksum", "Print the checksum of each model, by which two can be compared", fileNames,
        [&] { status = checksum(fileNames); });
    auto *saveCommand = app.add_subcommand("save", "Write the saved image of a model, for other processes to restore");
    saveCommand->add_option("FED", fileName)->required();
    saveCommand->add_option("IMAGE", imageName)->required();
    saveCommand->callback([&] { status = save(fileName, imageName); });

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError &usage) {
        return app.exit(usage) == 0 ? done : cannotWork;
    } catch (const RTI::Exception &failure) {
        std::cerr << "rtifed: " << failure._reason << '\n';
        return cannotWork;
    } catch (const std::exception &failure) {
        std::cerr << "rtifed: " << failure.what() << '\n';
        return cannotWork;
    }
    std::clog.flush();
    if (!std::cout.flush() || std::fflush(stdout) != 0) {
        std::cerr << "rtifed: standard output cannot be written\n";
        return cannotWork;
    }
    return status;
}
