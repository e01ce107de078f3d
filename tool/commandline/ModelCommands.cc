#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addTree() {
    CLI::App *command =
        addCommand("tree", "Show the class trees with their members, and the routing spaces",
                   "CLASS is a full dotted name, with or without its root, or the end of one. If the "
                   "file does not load, only what\n"
                   "can be understood is shown, and the exit status is 1.\n\n"
                   "The formats dot (for Graphviz), svg and mermaid (for Markdown) are pictures of the class trees, in "
                   "which the\nManagement Object Model (MOM) is one box unless CLASS names one of its classes, and +N "
                   "is the number of\nclasses below that --depth leaves out.\n\n"
                   "Examples:\n"
                   "  rtifed tree harbour.fed\n"
                   "  rtifed tree --inherited harbour.fed Craft\n"
                   "  rtifed tree --format svg --members harbour.fed Craft >craft.svg",
                   [this] {
                       checkTreeOptions();
                       return tree(_tree, _console);
                   });
    addOperand(command, "FILE", _tree.fileName, kFile)->required();
    addOperand(command, "CLASS", _tree.className, "Show only this class and its descendants");
    addChoice(command, "--format", _tree.format,
              {{"text", TreeOptions::text},
               {"dot", TreeOptions::dot},
               {"svg", TreeOptions::svg},
               {"mermaid", TreeOptions::mermaid}},
              "FORMAT", "Output format: text (default), dot, svg or mermaid");
    command->add_flag("--inherited", _tree.inherited,
                      "Show inherited members as well, with the class that declares them; only of text");
    command->add_flag("--classes", _tree.classesOnly, "Show no members; only of text");
    command->add_flag("--members", _tree.members, "Show the members that each class declares; only of pictures");
    command->add_option("--depth", _tree.depth, "Show the outermost N levels of classes")
        ->check(CLI::Range(std::size_t(1), std::size_t(1000)))
        ->option_text("N");
}

/// Throws a usage error for an option that the format of `tree` does not have.
void CommandLine::checkTreeOptions() const {
    const bool isText = _tree.format == TreeOptions::text;
    if (isText && _tree.members)
        throw CLI::ValidationError("--members", "only with --format dot, svg or mermaid; text shows members anyway");
    if (!isText && _tree.inherited)
        throw CLI::ValidationError("--inherited", "only with --format text");
    if (!isText && _tree.classesOnly)
        throw CLI::ValidationError("--classes",
                                   "only with --format text; the other formats show members only with --members");
}

void CommandLine::addFind() {
    CLI::App *command = addCommand(
        "find", "Find where a name is declared, and which classes inherit it",
        "NAME names a class, attribute, parameter, space or dimension, in any letter case, with or without its class "
        "or space: Position, Craft.Position, ObjectRoot.Craft.Position. The class may also be one that inherits the "
        "member.\n\n"
        "Of a file that does not load, what can be understood is searched.\n\n"
        "Exit status:\n"
        "  0  the name was found\n"
        "  1  the name was not found\n"
        "  2  wrong usage, a file cannot be read, or the name was not found, but may be where a file is not "
        "understood\n\n"
        "Examples:\n"
        "  rtifed find harbour.fed Position\n"
        "  rtifed find --glob models/ 'Craft.*Name'",
        [this] { return find(_find, _console); });
    addFilesAndName(command, _find.files, kFileOrFolder, _find.name, "The name to find");
    command->add_flag("--all", _find.all, "Show long lists in full");
    command->add_flag("--glob", _find.glob, "Let * in NAME stand for any characters but a dot, and ? for one");
    command->add_flag("--quiet", _find.quiet, "Print nothing, only set the exit status");
}

void CommandLine::addJson() {
    CLI::App *command =
        addCommand("json", "Print the whole model as JSON",
                   "model.schema.json of the documentation describes the keys. If the file does not load, "
                   "only what can be\nunderstood is printed, and the exit status is 1.\n\n"
                   "Examples:\n"
                   "  rtifed json harbour.fed\n"
                   "  rtifed json harbour.fed | jq -r '.objectClasses[].name'",
                   [this] { return json(_json, _console); });
    addOperand(command, "FILE", _json.fileName, kFile)->required();
    command->add_flag("--effective", _json.effective, "List the inherited members of each class as well");
}

void CommandLine::addList() {
    CLI::App *command = addCommand("list", "Print the model's readable listing, with all handles",
                                   "Example:\n"
                                   "  rtifed list harbour.fed",
                                   [this] { return list(_fileName, _console); });
    addOperand(command, "FILE", _fileName, kFile)->required();
}

void CommandLine::addCalls() {
    CLI::App *command = addCommand("calls", "Print the declarations as call text, whether or not they load",
                                   "Needs FED text, and only that it parses.\n\n"
                                   "Example:\n"
                                   "  rtifed calls harbour.fed",
                                   [this] { return calls(_fileName, _console); });
    addOperand(command, "FILE", _fileName, "FED text; - is standard input")->required();
}
