#include "tool/Model.hh"
#include "tool/commands/Commands.hh"

/// Prints the declarations as call text, by the library's default callbacks: to standard output, not to the console.
Status calls(const std::string &fileName, const Console &console) {
    Input input = readInput(fileName, console.stdinName);
    if (input.isImage()) {
        console.err << input.name << ": error: expected FED text, found a saved image\n";
        return wrong;
    }
    RtiFedParser parser(std::move(input.contents));
    for (std::size_t i = 0; i < parser.numErrors(); ++i) {
        RtiFedParser::Error error = parser.error(i);
        print(console.err, input.name, {error.position, std::move(error.text), {}});
    }
    if (parser.numErrors() > 0)
        return wrong;
    RtiFedParserCodegen printer;
    parser.deliver(printer);
    return done;
}
