#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

#include <utility>

namespace {

constexpr const char *kFooter = "FILE is FED text or a saved image, or - for standard input.\n\n"
                                "Exit status:\n"
                                "  0  done and nothing found\n"
                                "  1  a file has errors, a difference was found, or the name was not found\n"
                                "  2  wrong usage, or a file that cannot be opened or written\n\n"
                                "Environment:\n"
                                "  NO_COLOR  set and not empty: no colours\n\n"
                                "Example:\n"
                                "  rtifed check harbour.fed";

} // namespace

CommandLine::CommandLine(const Console &console)
    : _console(console), _app("Check, read, compare and ship FED files of HLA 1.3 federations", "rtifed") {
    _app.require_subcommand(1);
    _app.footer(kFooter);
    _app.set_help_flag("-h,--help", "Print this help and exit; after a command, help on it");
    _app.set_version_flag("--version", "rtifed " RTIFED_VERSION, "Print the version and exit");
    addChoice(&_app, "--color", _console.color, {{"auto", _console.color}, {"always", true}, {"never", false}}, "WHEN",
              "When to use colours: auto (on a terminal, unless NO_COLOR is set), always or never");
    _app.add_option("--stdin-name", _console.stdinName, "The name of standard input in messages and in the model")
        ->option_text("NAME");
    addCheck();
    addExplain();
    addDiff();
    addTree();
    addFind();
    addJson();
    addList();
    addCalls();
    addChecksum();
    addSave();
}

/// Adds a command. `details` are further paragraphs of its --help, with an example.
CLI::App *CommandLine::addCommand(const char *name, const char *purpose, const std::string &details,
                                  std::function<Status()> run) {
    CLI::App *command = _app.add_subcommand(name, purpose);
    command->footer(details);
    command->set_help_flag("-h,--help", "Print this help and exit; rtifed --help shows the options of all commands");
    command->fallthrough(); // --color and the like are allowed after the command as well
    command->callback([this, run = std::move(run)] { _status = run(); });
    return command;
}

Status CommandLine::run(int argc, char **argv) {
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
        return refuseUsage(usage.what());
    }
}

/// Reports what is wrong with the command line, with a suggestion.
Status CommandLine::refuseUsage(const std::string &reason) const {
    const std::vector<std::string> rest = _app.remaining();
    const bool noCommand = _app.get_subcommands().empty();
    if (noCommand && !rest.empty() && rest.front()[0] != '-') {
        std::vector<std::string> commands;
        for (const CLI::App *command : _app.get_subcommands({}))
            commands.push_back(command->get_name());
        _console.err << "rtifed: unknown command \"" << rest.front() << '"'
                     << didYouMean(suggestionFor(rest.front(), commands)) << '\n';
    } else {
        _console.err << "rtifed: " << reason << '\n';
    }
    _console.err << "Run rtifed " << (noCommand ? "" : _app.get_subcommands().front()->get_name() + " ")
                 << "--help for more information.\n";
    return cannotWork;
}
