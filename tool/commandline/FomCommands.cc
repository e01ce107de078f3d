#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addExport() {
    CLI::App *command = addCommand(
        "export", "Write a model as IEEE 1516-2010 object model XML",
        "The XML is valid against the interchange schema of the standard, DIF. Comments of the FED are its semantics. "
        "What FED does not know, such as data types, is left unknown unless --types gives it. The Management Object "
        "Model (MOM) and RTIprivate are left out. ieee-1516.md of the documentation has the whole mapping.\n\n"
        "If the file does not load, what can be understood is exported, and the exit status is 1.\n\n"
        "Examples:\n"
        "  rtifed export harbour.fed -o harbour.xml\n"
        "  rtifed export --types-template harbour.fed -o harbour.toml\n"
        "  rtifed export --fdd --types harbour.toml harbour.fed -o harbour.xml",
        [this] { return exportModel(_export, _console); });
    addOperand(command, "FILE", _export.fileName, kFile)->required();
    command->add_option("-o,--output", _export.output, "Write to this file, not to standard output")
        ->option_text("FILE");
    const auto choose = [this](FomForm form) { return [this, form](std::int64_t) { _export.form = form; }; };
    CLI::Option *fdd = command->add_flag_function("--fdd", choose(FomForm::fdd),
                                                  "Write all that the schema FDD requires of the object model of a "
                                                  "federation, such as switches");
    CLI::Option *module =
        command->add_flag_function("--module", choose(FomForm::module),
                                   "Leave out what is empty, not known, or in every federation, for a module to be "
                                   "merged with others");
    module->excludes(fdd);
    command->add_option("--types", _export.types, "Read data types and the like from this TOML file")
        ->option_text("FILE");
    command
        ->add_flag("--types-template", _export.typesTemplate,
                   "Write a file for --types to fill in, with what --types knows already; no XML")
        ->excludes(fdd)
        ->excludes(module);
}

void CommandLine::addImport() {
    CLI::App *command = addCommand(
        "import", "Turn an IEEE 1516-2010 object model in XML into a FED file",
        "Merges the modules as a federation does, and prints the model as formatted FED text that loads, with the "
        "Management Object Model (MOM) of FED. Comments say what FED cannot hold: semantics and data types at each "
        "declaration, all else in a summary at the top. A set of dimensions becomes a routing space.\n\n"
        "Errors and warnings are printed on standard error as rtifed check prints them. If there are errors, nothing "
        "is written, and the exit status is 1. ieee-1516.md of the documentation has the whole mapping.\n\n"
        "Examples:\n"
        "  rtifed import harbour.xml -o harbour.fed\n"
        "  rtifed import base.xml harbour.xml weather.xml >federation.fed\n"
        "  rtifed diff harbour.fed harbour.xml",
        [this] { return importModel(_import, _console); });
    addOperand(command, "FILE", _import.files, "An object model in XML, or several modules of one; - is standard input")
        ->required();
    command->add_option("-o,--output", _import.output, "Write to this file, not to standard output")
        ->option_text("FILE");
}
