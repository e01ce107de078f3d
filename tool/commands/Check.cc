#include "tool/commands/Commands.hh"

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
    const auto report = options.format(options.quiet ? nowhere : console.out, console.color, console.width);
    const auto checkFile = [&](const Input &input) {
        const Tally tally = reportFindings(input, Severity::warning, numShown(options), *report);
        return tally.errors == 0 && !tally.refused && (options.failOn == Severity::error || tally.warnings == 0);
    };
    const auto failFile = [&](const std::string &name, const std::string &reason) {
        report->failFile(name, withoutName(reason, name));
    };
    report->begin();
    const Status status = forEachFile(withoutFolders(options.files), console, checkFile, failFile);
    report->end();
    return status;
}
