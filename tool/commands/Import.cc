#include "tool/fom/import/Import.hh"

#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"

Status importModel(const ImportOptions &options, const Console &console) {
    std::vector<Input> inputs;
    for (const std::string &file : options.files)
        inputs.push_back(readInput(file, console.stdinName));
    const Import import(std::move(inputs));
    const auto report = textReport(console.err, {});
    report->begin();
    for (const FomModules::Module &module : import.modules())
        if (!module.findings.empty())
            reportFindings(sourceOf(module), module.findings, report->usuallyShown(), *report);
    report->end();
    if (!import.succeeds())
        return wrong;
    writeOutput(options.output, import.text(), console);
    return done;
}
