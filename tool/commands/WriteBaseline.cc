#include "tool/commands/Commands.hh"
#include "tool/console/OutputFile.hh"
#include "tool/control/Decision.hh"
#include "tool/fom/import/Import.hh"

Status writeBaseline(const CheckOptions &options, const Console &console) {
    if (options.writeBaseline == "-")
        throw CannotWork(
            "--write-baseline needs the name of a file, since the paths in a baseline are relative to its folder");
    Configurations configurations(options.configuration);
    Baseline baseline(options.writeBaseline);
    std::size_t numFiles = 0;
    std::vector<Input> modules; // of an object model, which are checked together
    const auto addFindings = [&](CheckedFile file) {
        decide(file, configurations.settingsFor(file.name), nullptr);
        baseline.beginFile(file.name);
        for (const Finding &finding : file.findings)
            if (!finding.suppression)
                baseline.add(finding);
        ++numFiles;
    };
    const auto addFile = [&](Input input) {
        if (input.isXml())
            modules.push_back(std::move(input));
        else
            addFindings(checkFile(input, Severity::warning));
        return true;
    };
    if (forEachFile(withoutFolders(options.files), console, addFile, [](const std::string &, const std::string &) {}) !=
        done)
        throw CannotWork(options.writeBaseline + ": not written, since a file cannot be read");
    const Import import(std::move(modules));
    for (const FomModules::Module &module : import.modules())
        addFindings({module.name, nullptr, module.findings});
    const std::string text = baseline.text();
    writeFile(options.writeBaseline, text.data(), text.size());
    if (!options.quiet)
        console.out << options.writeBaseline << ": " << counted(baseline.size(), "finding") << " of "
                    << counted(numFiles, "file") << '\n';
    return done;
}
