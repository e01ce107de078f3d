#include "tool/commands/Commands.hh"

namespace {

std::size_t numShown(const CheckOptions &options, const Report &report) {
    if (options.quiet)
        return 0;
    const std::size_t most = options.maxFindings.value_or(report.usuallyShown());
    return most > 0 ? most : kAllShown;
}

/// Returns the report in the format that was asked for, or the statistics. Throws CannotWork for statistics in a format
/// that has none.
ReportMaker *formatOf(const CheckOptions &options) {
    if (!options.statistics)
        return options.format;
    if (options.format != textReport && options.format != jsonReport)
        throw CannotWork("--statistics has the formats text and json only");
    return options.format == jsonReport ? jsonStatisticsReport : statisticsReport;
}

std::string withoutName(const std::string &failure, const std::string &name) {
    return failure.rfind(name + ": ", 0) == 0 ? failure.substr(name.size() + 2) : failure;
}

} // namespace

Status check(const CheckOptions &options, const Console &console) {
    std::ostream nowhere(nullptr);
    const auto report =
        formatOf(options)(options.quiet ? nowhere : console.out, {console.color, console.width, options.failOn});
    const auto checkFile = [&](const Input &input) {
        const Tally tally = reportFindings(input, Severity::warning, numShown(options, *report), *report);
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
