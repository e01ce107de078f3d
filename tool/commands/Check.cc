#include "tool/commands/Commands.hh"
#include "tool/control/Decision.hh"
#include "tool/fom/import/Import.hh"

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

/// Reads the configurations of all files, so that one that cannot be used is reported once, before any finding.
void readConfigurations(const std::vector<FileToRead> &files, const Console &console, Configurations &configurations) {
    for (const FileToRead &file : files)
        configurations.settingsFor(file.name == "-" ? console.stdinName : file.name);
}

void mentionLeft(const CheckOptions &options, const Baseline &baseline, const Console &console) {
    if (const std::size_t left = baseline.numLeft(); left > 0)
        console.err << "rtifed: " << options.baseline << ": " << counted(left, "known finding")
                    << (left == 1 ? " is" : " are") << " not found any more; rtifed check --write-baseline "
                    << options.baseline << " updates it\n";
}

} // namespace

Status check(const CheckOptions &options, const Console &console) {
    if (options.showSettings)
        return showSettings(options, console);
    if (!options.addAllow.empty())
        return addAllowComments(options, console);
    if (!options.writeBaseline.empty())
        return writeBaseline(options, console);
    Configurations configurations(options.configuration);
    const std::vector<FileToRead> files = withoutFolders(options.files);
    readConfigurations(files, console, configurations);
    std::optional<Baseline> baseline;
    if (!options.baseline.empty())
        baseline = Baseline::read(options.baseline);
    std::ostream nowhere(nullptr);
    const auto report =
        formatOf(options)(options.quiet ? nowhere : console.out, {console.color, console.width, options.failOn});
    const auto passes = [&](const Tally &tally) {
        return tally.errors == 0 && !tally.refused && (options.failOn == Severity::error || tally.warnings == 0);
    };
    const auto decideAbout = [&](CheckedFile &file) {
        decide(file, configurations.settingsFor(file.name), baseline ? &*baseline : nullptr);
    };
    std::vector<Input> modules; // of an object model, which are checked together
    const auto checkOne = [&](Input input) {
        if (input.isXml()) {
            modules.push_back(std::move(input));
            return true;
        }
        CheckedFile file = checkFile(std::move(input), Severity::warning);
        decideAbout(file);
        return passes(reportFindings(std::move(file), numShown(options, *report), *report));
    };
    const auto checkModules = [&] {
        bool allPass = true;
        const Import import(std::move(modules));
        for (const FomModules::Module &module : import.modules()) {
            CheckedFile file{module.name, nullptr, module.findings};
            decideAbout(file);
            allPass &=
                passes(reportFindings(sourceOf(module), std::move(file.findings), numShown(options, *report), *report));
        }
        return allPass;
    };
    const auto failFile = [&](const std::string &name, const std::string &reason) {
        report->failFile(name, withoutName(reason, name));
    };
    report->begin();
    Status status = forEachFile(files, console, checkOne, failFile);
    if (!modules.empty() && !checkModules())
        status = std::max(status, wrong);
    report->end();
    if (baseline)
        mentionLeft(options, *baseline, console);
    return status;
}
