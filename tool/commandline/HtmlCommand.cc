#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addHtml() {
    CLI::App *command = addCommand(
        "html", "Write a model as one HTML page, to read, search and print",
        "The page needs no network and no other file: both class trees, the spaces, the findings of check, and the "
        "comments of the file as documentation. With --against it also shows what changed. pages.md of the "
        "documentation describes it. If the file does not load, only what can be understood is shown, and the exit "
        "status is 1.\n\n"
        "Examples:\n"
        "  rtifed html harbour.fed -o harbour.html\n"
        "  rtifed html --against v1.2 harbour.fed -o harbour.html",
        [this] { return html(_html, _console); });
    addOperand(command, "FILE", _html.fileName, kFile)->required();
    command->add_option("-o,--output", _html.output, "The file to write, instead of standard output")
        ->option_text("FILE");
    command
        ->add_option("--against", _html.against,
                     "Also show what changed since this old file, the same file at a revision in git, or REV:PATH")
        ->option_text("OLD");
    addConfiguration(command, _html.configuration);
}
