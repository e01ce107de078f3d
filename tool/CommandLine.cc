#include "tool/CommandLine.hh"

#include "tool/Suggestion.hh"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace {

constexpr const char *kFile = "FED text or a saved image; - is standard input";

constexpr const char *kFooter =
    "FILE is FED text or a saved image, or - for standard input.\n"
    "Exit status: 0 done and nothing found; 1 the file was read and found wrong, or a difference was found; 2 wrong\n"
    "usage, or a file that cannot be opened or written.";

} // namespace

CommandLine::CommandLine(const Console &console)
    : _console(console), _app("rtifed - check, read, compare and ship FED files of HLA 1.3 federations", "rtifed") {
    _app.require_subcommand(1);
    _app.footer(kFooter);
    _app.set_version_flag("--version", "rtifed " RTIFED_VERSION, "Print the version and exit");
    _app.add_option("--color", _color, "When to use colours: auto, on a terminal unless NO_COLOR is set; always; never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->option_text("WHEN");
    _app.add_option("--stdin-name", _console.stdinName, "What to call standard input in messages and in the model")
        ->option_text("NAME");
    addCheck();
    addList();
    addCalls();
    addChecksum();
    addSave();
    addDiff();
}

/// Adds a command. `details` says what --help tells beyond its purpose, with an example.
CLI::App *CommandLine::addCommand(const char *name, const char *purpose, const char *details,
                                  std::function<Status()> run) {
    CLI::App *command = _app.add_subcommand(name, purpose);
    command->footer(details);
    command->fallthrough(); // --color and the like stand behind the command as well
    command->callback([this, run = std::move(run)] {
        setColor();
        _status = run();
    });
    return command;
}

void CommandLine::addCheck() {
    CLI::App *command = addCommand("check", "Find every problem of FED files",
                                   "Prints each problem as FILE:LINE:COLUMN: error: TEXT.\n\n"
                                   "Example:\n"
                                   "  rtifed check harbour.fed",
                                   [this] { return check(_fileNames, _console); });
    command->add_option("FILE", _fileNames, kFile)->required();
}

void CommandLine::addList() {
    CLI::App *command = addCommand("list", "Print the model's readable listing, with all handles",
                                   "Example:\n"
                                   "  rtifed list harbour.fed",
                                   [this] { return list(_fileName, _console); });
    command->add_option("FILE", _fileName, kFile)->required();
}

void CommandLine::addCalls() {
    CLI::App *command = addCommand("calls", "Print the declarations as call text, whether or not they load",
                                   "Needs FED text, and only that it parses.\n\n"
                                   "Example:\n"
                                   "  rtifed calls harbour.fed",
                                   [this] { return calls(_fileName, _console); });
    command->add_option("FILE", _fileName, "FED text; - is standard input")->required();
}

void CommandLine::addChecksum() {
    CLI::App *command = addCommand("checksum", "Print the checksum of each model, by which two can be compared",
                                   "Prints eight hexadecimal digits, two blanks and the file name.\n\n"
                                   "Example:\n"
                                   "  rtifed checksum harbour.fed",
                                   [this] { return checksum(_fileNames, _console); });
    command->add_option("FILE", _fileNames, kFile)->required();
}

void CommandLine::addSave() {
    CLI::App *command = addCommand("save", "Write the saved image of a model, for other processes to restore",
                                   "An image that is there already is replaced whole, or not at all.\n\n"
                                   "Example:\n"
                                   "  rtifed save harbour.fed harbour.img",
                                   [this] { return save(_fileName, _otherName, _console); });
    command->add_option("FED", _fileName, kFile)->required();
    command->add_option("IMAGE", _otherName, "The image to write")->required();
}

void CommandLine::addDiff() {
    using Verdict = Comparison::Verdict;
    CLI::App *command = addCommand(
        "diff", "Tell what changed from one model to another, and what that means",
        "The verdict is one of these, the least first:\n"
        "  identical     the files are the same bytes\n"
        "  same          the models are the same: only text, comments or form of the files differ\n"
        "  relabelled    letter case, or the name of the federation or version, differs\n"
        "  renumbered    every name is there with the same properties, handles moved\n"
        "  additions     everything of the old model is there with the same properties, and more\n"
        "  incompatible  something of the old model is gone or different\n"
        "Exit status: 0 if it is below the level of --fail-on, 1 if not, 2 if a file cannot be read or an\n"
        "image cannot be restored. FED text that does not load is compared as far as it can be understood.\n\n"
        "Examples:\n"
        "  rtifed diff harbour-1.fed harbour-2.fed\n"
        "  rtifed diff --quiet --fail-on incompatible harbour-1.fed harbour-2.fed",
        [this] { return diff(_diff, _console); });
    command->add_option("OLD", _diff.oldName, kFile)->required();
    command->add_option("NEW", _diff.newName, kFile)->required();
    command->add_flag("--all", _diff.all, "List every change, not the first few of each group, with its place");
    std::vector<std::string> levels;
    for (int level = static_cast<int>(Verdict::same); level <= static_cast<int>(Verdict::incompatible); ++level)
        levels.push_back(Comparison::nameOf(static_cast<Verdict>(level)));
    const auto failOn = [this, levels](const std::string &name) {
        const auto index = std::find(levels.begin(), levels.end(), name) - levels.begin();
        _diff.failOn = static_cast<Verdict>(static_cast<int>(Verdict::same) + index);
    };
    command
        ->add_option_function<std::string>("--fail-on", failOn,
                                           "The least verdict that gives exit status 1; by default relabelled")
        ->check(CLI::IsMember(levels))
        ->option_text("LEVEL");
    command->add_option("--format", _diff.format, "How to write the result: text or json, which has every change")
        ->check(CLI::IsMember({"text", "json"}))
        ->option_text("FORMAT");
    command->add_flag("--quiet", _diff.quiet, "Write nothing, the exit status tells");
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

/// Says what is wrong with the command line, and what may have been meant.
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

void CommandLine::setColor() {
    if (_color != "auto")
        _console.color = _color == "always";
}
