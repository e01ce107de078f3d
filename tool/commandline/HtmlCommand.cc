#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addHtml() {
    CLI::App *command = addCommand(
        "html", "Write a model as an HTML page, to read, search and print",
        "The page shows the class trees, the spaces, what check finds, and the comments of the file as documentation. "
        "It is one file that needs no network. Of a folder, each FED file in it and in its folders gets a page, at the "
        "same path with .html added, and index.html lists them. Only pages of rtifed are replaced. pages.md of the "
        "documentation describes the pages.\n\n"
        "If a file does not load, its page shows what can be understood, and the exit status is 1.\n\n"
        "Examples:\n"
        "  rtifed html harbour.fed -o harbour.html\n"
        "  rtifed html --against v1.2 harbour.fed -o harbour.html\n"
        "  rtifed html models/ -o site/",
        [this] { return html(_html, _console); });
    addOperand(command, "FILE", _html.fileName, std::string(kFile) + "; or a folder")->required();
    command
        ->add_option("-o,--output", _html.output,
                     "Write to this file, not to standard output; for a folder, to this folder")
        ->option_text("FILE");
    const auto compareAgainst = [this](const std::string &old) {
        if (old.empty())
            throw CLI::ValidationError("--against", "expected a file or revision, found nothing");
        _html.against = old;
    };
    command
        ->add_option_function<std::string>("--against", compareAgainst,
                                           "Also show what changed since OLD: an older file, a revision in git of the "
                                           "same file, or REV:PATH; for a folder, an older folder or a revision")
        ->option_text("OLD");
    addConfiguration(command, _html.configuration);
}
