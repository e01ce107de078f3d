#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Help.hh"
#include "tool/commandline/Options.hh"
#include "tool/commandline/UsageError.hh"
#include "tool/console/Progress.hh"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace {

constexpr const char *kFooter =
    "FILE is FED text or a saved image, or - for standard input.\n\n"
    "Exit status:\n"
    "  0  done and nothing found\n"
    "  1  a file has errors, a difference was found, or the name was not found\n"
    "  2  wrong usage, or a file that cannot be opened or written\n\n"
    "Environment:\n"
    "  NO_COLOR        set and not empty: no colours\n"
    "  CLICOLOR_FORCE  set, and neither empty nor 0: colours also where standard output is not a terminal\n"
    "  COLUMNS         the width of help, and of the lines of a terminal\n\n"
    "Example:\n"
    "  rtifed check harbour.fed";

} // namespace

CommandLine::CommandLine(const Console &console)
    : _console(console), _app("Check, read, compare and ship FED files of HLA 1.3 federations", "rtifed") {
    _app.require_subcommand(1);
    _app.footer(kFooter);
    _app.formatter_fn([this](const CLI::App *app, const std::string &, CLI::AppFormatMode) {
        return helpText(*app, _console.helpWidth);
    });
    _app.set_help_flag("-h,--help", "Print this help and exit; after a command, help on it");
    _app.set_version_flag("--version", "rtifed " RTIFED_VERSION, "Print the version and exit");
    addChoice(
        &_app, "--color", _console.color, {{"auto", _console.color}, {"always", true}, {"never", false}}, "WHEN",
        "When to use colours: auto (on a terminal, or if CLICOLOR_FORCE is set, but not if NO_COLOR is), always or "
        "never");
    _app.add_option("--stdin-name", _console.stdinName, "The name of standard input in messages and in the model")
        ->option_text("NAME");
}

struct CommandLine::Command {
    std::string_view name;
    void (CommandLine::*add)();
};

/// Building all commands takes longer than starting the program does otherwise, so that only the one that is first
/// among the arguments is built; all of them if none is, since help and errors name them.
void CommandLine::addCommands(std::string_view first) {
    static constexpr Command kCommands[] = {{"check", &CommandLine::addCheck},
                                            {"explain", &CommandLine::addExplain},
                                            {"fix", &CommandLine::addFix},
                                            {"fmt", &CommandLine::addFmt},
                                            {"new", &CommandLine::addNew},
                                            {"diff", &CommandLine::addDiff},
                                            {"merge", &CommandLine::addMerge},
                                            {"extract", &CommandLine::addExtract},
                                            {"tree", &CommandLine::addTree},
                                            {"find", &CommandLine::addFind},
                                            {"html", &CommandLine::addHtml},
                                            {"json", &CommandLine::addJson},
                                            {"constants", &CommandLine::addConstants},
                                            {"list", &CommandLine::addList},
                                            {"calls", &CommandLine::addCalls},
                                            {"checksum", &CommandLine::addChecksum},
                                            {"save", &CommandLine::addSave},
                                            {"export", &CommandLine::addExport},
                                            {"import", &CommandLine::addImport},
                                            {"lsp", &CommandLine::addLsp}};
    const auto *const named = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [first](const Command &command) { return command.name == first; });
    if (named != std::end(kCommands))
        return (this->*named->add)();
    for (const Command &command : kCommands)
        (this->*command.add)();
    addHelp(); // last, because it knows the other commands
}

CLI::App &CommandLine::app() {
    if (_app.get_subcommands([](const CLI::App *) { return true; }).empty())
        addCommands({});
    return _app;
}

/// Adds a command. `details` are further paragraphs of its --help, with an example.
CLI::App *CommandLine::addCommand(const char *name, const char *purpose, const std::string &details,
                                  std::function<Status()> run) {
    CLI::App *command = _app.add_subcommand(name, purpose);
    command->footer(details);
    command->set_help_flag("-h,--help", "Print this help and exit");
    command->fallthrough(); // --color and the like are allowed after the command as well
    command->callback([this, run = std::move(run)] {
        if (_check.quiet || _find.quiet || _diff.quiet || _checksum.silent)
            Progress::stop();
        _status = run();
    });
    return command;
}

void CommandLine::addHelp() {
    CLI::App *command = addCommand("help", "Explain a command, or list all commands",
                                   "Example:\n"
                                   "  rtifed help check",
                                   [this] { return help(); });
    std::vector<std::string> names;
    for (const CLI::App *known : _app.get_subcommands([](const CLI::App *) { return true; }))
        names.push_back(known->get_name());
    addOperand(command, "COMMAND", _helpOn, "The command to explain")->type_name(typeOf(names));
}

Status CommandLine::help() const {
    const std::vector<const CLI::App *> asked =
        _helpOn.empty() ? std::vector<const CLI::App *>{&_app}
                        : _app.get_subcommands([this](const CLI::App *app) { return app->get_name() == _helpOn; });
    if (asked.empty())
        throw CannotWork(unknownCommand(_app, _helpOn));
    _console.out << helpText(*asked.front(), _console.helpWidth);
    return done;
}

Status CommandLine::run(int argc, char **argv) {
    const std::string_view first = argc > 1 ? argv[1] : "";
    if (argc != 2 || first != "--version") // which needs no command
        addCommands(first);
    try {
        _app.parse(argc, argv);
        return _status;
    } catch (const CLI::CallForVersion &asked) {
        _console.out << asked.what() << '\n';
        return done;
    } catch (const CLI::ParseError &usage) {
        if (usage.get_exit_code() == 0) {
            _app.exit(usage, _console.out, _console.err);
            return done;
        }
        const std::vector<CLI::App *> given = _app.get_subcommands();
        _console.err << "rtifed: " << usageError(_app, usage) << "\nRun rtifed "
                     << (given.empty() ? "" : given.front()->get_name() + ' ') << "--help for more information.\n";
        return cannotWork;
    }
}
