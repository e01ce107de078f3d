#include "tool/commands/Commands.hh"
#include "tool/console/Progress.hh"
#include "tool/console/Text.hh"

namespace {

/// Prints calls with printable names.
class TerminalCalls : public RtiFedParserCodegen {
public:
    void setFederate(std::string name) override { RtiFedParserCodegen::setFederate(shown(name)); }
    void setFederateVersion(std::string version) override { RtiFedParserCodegen::setFederateVersion(shown(version)); }
    void addSpace(std::string name) override { RtiFedParserCodegen::addSpace(shown(name)); }
    void addDimension(std::string name) override { RtiFedParserCodegen::addDimension(shown(name)); }
    void addObjectClass(std::string name) override { RtiFedParserCodegen::addObjectClass(shown(name)); }
    void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                 std::string space) override {
        RtiFedParserCodegen::addObjectClassAttribute(shown(name), shown(transportation), shown(ordering), shown(space));
    }
    void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                             std::string space) override {
        RtiFedParserCodegen::addInteractionClass(shown(name), shown(transportation), shown(ordering), shown(space));
    }
    void addParameter(std::string name) override { RtiFedParserCodegen::addParameter(shown(name)); }
};

} // namespace

/// Prints the declarations as call text through the library's default callbacks, which write to standard output rather
/// than to the console.
Status calls(const std::string &fileName, const Console &console) {
    Input input = readInput(fileName, console.stdinName);
    if (complainIfImage(input, console.err))
        return wrong;
    RtiFedParser parser(std::move(input.contents));
    if (reportSyntaxErrors(parser, input.name, console.err))
        return wrong;
    if (console.terminal)
        Progress::stop(); // the calls are printed without the console, which would erase the line
    RtiFedParserCodegen printer;
    TerminalCalls terminalPrinter;
    parser.deliver(console.terminal ? terminalPrinter : printer);
    return done;
}
