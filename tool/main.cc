#include "tool/Checker.hh"
#include "tool/Model.hh"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

namespace {

enum Status { done = 0, wrong = 1, cannotWork = 2 };

Status check(const std::vector<std::string> &fileNames) {
    Status status = done;
    for (const std::string &fileName : fileNames) {
        try {
            const Checker checker(readInput(fileName));
            checker.forEachFinding([&](const Finding &finding) { print(std::cout, fileName, finding); });
            if (!checker.foundNothing())
                status = std::max(status, wrong);
        } catch (const CannotWork &why) {
            std::cerr << "rtifed: " << why.what() << '\n';
            status = cannotWork;
        }
    }
    return status;
}

Status list(const std::string &fileName) {
    const auto model = loadModel(fileName, std::clog);
    if (!model)
        return wrong;
    model->dumpDatabase(&std::cout);
    return done;
}

/// Prints the declarations as call text, by the library's default callbacks.
Status calls(const std::string &fileName) {
    RtiFedParser parser(readInput(fileName));
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
    app.footer("FILE is FED text, or - for standard input.\n"
               "Exit status: 0 done and nothing found; 1 the file was read and found wrong; 2 usage, or a file that "
               "cannot be opened.");

    std::vector<std::string> fileNames;
    std::string fileName;
    Status status = done;
    auto *checkCommand =
        app.add_subcommand("check", "Load each file; print every problem as FILE:LINE:COLUMN: error: TEXT");
    checkCommand->add_option("FILE", fileNames)->required();
    checkCommand->callback([&] { status = check(fileNames); });
    auto *listCommand = app.add_subcommand("list", "Print the model's readable listing, with all handles");
    listCommand->add_option("FILE", fileName)->required();
    listCommand->callback([&] { status = list(fileName); });
    auto *callsCommand = app.add_subcommand("calls", "Print the declarations as call text, whether or not they load");
    callsCommand->add_option("FILE", fileName)->required();
    callsCommand->callback([&] { status = calls(fileName); });

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
