#include "tool/commands/Commands.hh"
#include "tool/report/FileFindings.hh"

#include <limits>

namespace {

std::size_t numShown(const CheckOptions &options) {
    if (options.quiet)
        return 0;
    return options.maxFindings > 0 ? options.maxFindings : std::numeric_limits<std::size_t>::max();
}

std::string withoutName(const std::string &failure, const std::string &name) {
    return failure.rfind(name + ": ", 0) == 0 ? failure.substr(name.size() + 2) : failure;
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
        const auto failure = failureOf(name, [&] {
            const Input input = readInput(fileName, console.stdinName);
            const Tally tally = reportFindings(input, Severity::warning, numShown(options), *report);
            if (tally.errors > 0 || (options.failOn == Severity::warning && tally.warnings > 0))
                status = std::max(status, wrong);
        });
        if (failure) {
            console.err << "rtifed: " << *failure << '\n';
            report->failFile(name, withoutName(*failure, name));
            status = cannotWork;
        }
    }
    report->end();
    return status;
}
