#include "tool/CommandLine.hh"

#include "tool/Suggestion.hh"

#include <CLI/CLI.hpp>

#include <utility>

namespace {

constexpr const char *kFile = "FED text or a saved image; - is standard input";

constexpr const char *kFooter =
    "FILE is FED text or a saved image, or - for standard input.\n"
    "Exit status: 0 done and nothing found; 1 the file was read and found wrong, or a difference was found; 2 wrong\n"
    "usage, or a file that cannot be opened or written.";

/// Adds an option whose value is one of these words.
template <class Value>
void addChoice(CLI::App *command, const std::string &name, Value &value,
               const std::vector<std::pair<std::string, Value>> &choices, const char *placeholder,
               const std::string &purpose) {
    const auto choose = [name, choices, &value](const std::string &word) {
        std::vector<std::string> words;
        std::string list;
        for (const auto &[choice, meaning] : choices) {
            if (choice == word) {
                value = meaning;
                return;
            }
            words.push_back(choice);
            list += (list.empty() ? "" : choice == choices.back().first ? " or " : ", ") + choice;
        }
        throw CLI::ValidationError(name, "expected " + list + ", found \"" + word + '"' +
                                             didYouMean(suggestionFor(word, words)));
    };
    command->add_option_function<std::string>(name, choose, purpose)->option_text(placeholder);
}

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
    addExplain();
    addList();
    addCalls();
    addChecksum();
    addSave();
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
    CLI::App *command = addCommand(
        "check", "Find every problem of FED files",
        "Prints each problem as FILE:LINE:COLUMN: error: TEXT [RULE], with the line of the file under it.\n"
        "What the database accepts and people regret is a warning. rtifed explain RULE tells about a rule.\n\n"
        "Examples:\n"
        "  rtifed check harbour.fed\n"
        "  rtifed check --format sarif *.fed >findings.sarif\n"
        "  rtifed check --quiet --fail-on warning harbour.fed && echo tidy",
        [this] { return check(_check, _console); });
    command->add_option("FILE", _check.files, kFile)->required();
    addChoice(command, "--format", _check.format,
              {{"text", ReportFormat::text},
               {"json", ReportFormat::json},
               {"sarif", ReportFormat::sarif},
               {"github", ReportFormat::github}},
              "FORMAT",
              "How to print: text (default), for people; json; sarif, for code scanning and editors;\n"
              "github, for annotations in a workflow");
    command->add_option("--max-findings", _check.maxFindings, "How many to print of each file, 50 by default; 0 is all")
        ->check(CLI::Range(std::size_t(0), std::size_t(1000000000)))
        ->option_text("N");
    addChoice(command, "--fail-on", _check.failOn, {{"error", Severity::error}, {"warning", Severity::warning}},
              "SEVERITY", "What makes the exit status 1: error (default), or warning, which is either");
    command->add_flag("--quiet", _check.quiet, "Print no finding: the exit status tells");
}

void CommandLine::addExplain() {
    CLI::App *command = addCommand("explain", "Tell about a rule of check, or list all rules",
                                   "Examples:\n"
                                   "  rtifed explain unknown-space\n"
                                   "  rtifed explain",
                                   [this] { return explain(_explain, _console); });
    command->add_option("RULE", _explain.rule, "What stands in brackets behind a finding");
    command->add_flag("--markdown", _explain.markdown)->group(""); // for who adds a rule
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
