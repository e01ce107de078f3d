#include "tool/Model.hh"
#include "tool/commands/Commands.hh"

#include <limits>

namespace {

std::size_t numShown(const CheckOptions &options) {
    if (options.quiet)
        return 0;
    return options.maxFindings > 0 ? options.maxFindings : std::numeric_limits<std::size_t>::max();
}

/// What is wrong without the name in front of it.
std::string reasonOf(const CannotWork &why, const std::string &name) {
    const std::string text = why.what();
    return text.rfind(name + ": ", 0) == 0 ? text.substr(name.size() + 2) : text;
}

} // namespace

Status check(const CheckOptions &options, const Console &console) {
    std::ostream nowhere(nullptr);
    const Console shown{options.quiet ? nowhere : console.out,
                        console.err,
                        console.color,
                        console.unicode,
                        console.width,
                        console.stdinName};
    const auto report = makeReport(options.format, shown);
    Status status = done;
    report->begin();
    for (const std::string &fileName : options.files) {
        const std::string &name = fileName == "-" ? console.stdinName : fileName;
        try {
            const Input input = readInput(fileName, console.stdinName);
            const Tally tally = reportFindings(input, Severity::warning, numShown(options), *report);
            if (tally.errors > 0 || (options.failOn == Severity::warning && tally.warnings > 0))
                status = std::max(status, wrong);
        } catch (const CannotWork &why) {
            console.err << "rtifed: " << why.what() << '\n';
            report->failFile(name, reasonOf(why, name));
            status = cannotWork;
        }
    }
    report->end();
    return status;
}
