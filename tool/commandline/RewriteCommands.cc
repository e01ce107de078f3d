#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

namespace {

/// Adds the operand and the options that all commands have that rewrite files.
void addRewriting(CLI::App *command, RewriteOptions &options) {
    addOperand(command, "FILE", options.files, "FED text; - is standard input, a folder stands for the FED files in it")
        ->required();
    CLI::Option *write = command->add_flag("--write,-w", options.write,
                                           "Replace each file that changes, whole or not at all, with the same mode");
    command->add_flag("--diff,-d", options.diff, "Print the changes as a unified diff");
    command
        ->add_flag("--check,-c", options.check,
                   "Print the names of the files that would change; if there are any, the exit status is 1")
        ->excludes(write);
}

LineRange rangeOf(const std::string &text) {
    const std::size_t colon = text.find(':');
    const auto number = [&](const std::string &digits) {
        const bool valid =
            !digits.empty() && digits.size() < 10 && digits.find_first_not_of("0123456789") == std::string::npos;
        return valid ? std::stoul(digits) : 0;
    };
    const LineRange range = colon == std::string::npos
                                ? LineRange{0, 0}
                                : LineRange{number(text.substr(0, colon)), number(text.substr(colon + 1))};
    if (range.first == 0 || range.last < range.first)
        throw CLI::ValidationError("--range", "expected lines such as 10:20, found " + inQuotes(text));
    return range;
}

} // namespace

void CommandLine::addNew() {
    CLI::App *command = addCommand(
        "new", "Write a new FED file, to begin a federation with",
        "The file has the root classes, the Management Object Model (MOM), and comments where your own spaces and "
        "classes belong. It loads as it is, and is formatted.\n\n"
        "Examples:\n"
        "  rtifed new Harbour -o harbour.fed\n"
        "  rtifed new --mom none 'Harbour Drill'",
        [this] { return newFile(_new, _console); });
    addOperand(command, "NAME", _new.name, "The name of the federation")->required();
    addChoice(command, "--mom", _new.withMom, {{"full", true}, {"none", false}}, "WHICH",
              "How much of the MOM to write: full (the default) or none; with none, the file does not load before "
              "rtifed fix --mom adds it");
    command
        ->add_option("--output,-o", _new.fileName,
                     "Write to this file, which must not exist yet, instead of standard output")
        ->option_text("FILE");
}

void CommandLine::addFix() {
    CLI::App *command = addCommand(
        "fix", "Repair FED files",
        "Makes the fixes that have one meaning: adds what is missing of the Management Object Model (MOM), drops\n"
        "members that a superclass has too, corrects misspelt words. Each fix is printed on standard error as\n"
        "FILE:LINE:COLUMN: fix: TEXT [RULE], then what still keeps the file from loading; the exit status is 1 if\n"
        "anything does. Comments and layout stay as they are, names except where a rule says that another one is\n"
        "meant, and so does what a comment or configuration allows. fixing.md of the documentation lists the fixes.\n\n"
        "Examples:\n"
        "  rtifed fix --list harbour.fed\n"
        "  rtifed fix --diff harbour.fed\n"
        "  rtifed fix --write harbour.fed\n"
        "  rtifed fix --mom --write *.fed",
        [this] { return fix(_fix, _console); });
    addRewriting(command, _fix.rewrite);
    std::vector<std::string> ids;
    for (const Rule &rule : allRules())
        ids.emplace_back(rule.id);
    command
        ->add_option_function<std::vector<std::string>>(
            "--rule",
            [this](const std::vector<std::string> &rules) {
                for (const std::string &id : rules) {
                    if (!findRule(id))
                        throw CLI::ValidationError("--rule", unknownRule(id));
                    _fix.selection.rules.push_back(findRule(id));
                }
            },
            "Fix only what this rule of check finds; may be given several times")
        ->allow_extra_args(false)
        ->type_name(typeOf(ids))
        ->option_text("RULE");
    command->add_flag_callback(
        "--mom", [this] { _fix.selection.rules.push_back(&ruleOf(RuleId::momIncomplete)); },
        "Only add what is missing of the MOM, and correct its names; the same as --rule mom-incomplete");
    command->add_flag("--unsafe", _fix.selection.unsafe,
                      "Make also the fixes that need a decision, such as removing an unused space");
    command->add_flag("--list,-l", _fix.list, "Print on standard output what could be fixed, and change nothing")
        ->excludes(command->get_option("--write"))
        ->excludes(command->get_option("--diff"))
        ->excludes(command->get_option("--check"));
    addConfiguration(command, _fix.configuration);
}

void CommandLine::addFmt() {
    CLI::App *command = addCommand("fmt", "Format FED files",
                                   "Prints the text in the one layout that all formatted files have: a clause a line, "
                                   "indented by its nesting, the\n"
                                   "attributes of a class in columns. The model stays the same, and so do names and "
                                   "comments. A file that does not\n"
                                   "parse is left alone; its errors are printed, and the exit status is 1.\n\n"
                                   "Examples:\n"
                                   "  rtifed fmt harbour.fed\n"
                                   "  rtifed fmt --write *.fed\n"
                                   "  rtifed fmt --check --diff *.fed",
                                   [this] { return fmt(_fmt, _console); });
    addRewriting(command, _fmt.rewrite);
    command->add_option("--indent", _fmt.format.indentation, "Blanks for each level of nesting, 2 by default")
        ->check(CLI::Range(std::size_t(1), kMaxIndentation))
        ->option_text("N");
    command
        ->add_option_function<std::string>(
            "--range", [this](const std::string &text) { _fmt.format.lines = rangeOf(text); },
            "Change only the clauses that begin in these lines, counted from 1")
        ->option_text("FIRST:LAST");
}
