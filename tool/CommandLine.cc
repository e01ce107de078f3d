#include "tool/CommandLine.hh"

#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"

#include <CLI/CLI.hpp>

#include <utility>

namespace {

constexpr const char *kFile = "FED text or a saved image; - is standard input";

constexpr const char *kFooter = "FILE is FED text or a saved image, or - for standard input.\n\n"
                                "Exit status:\n"
                                "  0  done and nothing found\n"
                                "  1  a file has errors, a difference was found, or the name was not found\n"
                                "  2  wrong usage, or a file that cannot be opened or written\n\n"
                                "Environment:\n"
                                "  NO_COLOR  set and not empty: no colours\n\n"
                                "Example:\n"
                                "  rtifed check harbour.fed";

/// Lists the values of an option or operand in place of its type, where completions read them.
std::string typeOf(const std::vector<std::string> &words) {
    return "TEXT:{" + joined(words, ",") + "}";
}

/// Adds an option whose value must be one of these words.
template <class Value>
void addChoice(CLI::App *command, const std::string &name, Value &value,
               const std::vector<std::pair<std::string, Value>> &choices, const char *placeholder,
               const std::string &purpose) {
    std::vector<std::string> words;
    words.reserve(choices.size());
    for (const auto &[choice, meaning] : choices)
        words.push_back(choice);
    const auto choose = [name, choices, words, &value](const std::string &word) {
        for (const auto &[choice, meaning] : choices)
            if (choice == word) {
                value = meaning;
                return;
            }
        const std::string allButLast = joined({words.begin(), words.end() - 1});
        throw CLI::ValidationError(name, "expected " + allButLast + " or " + words.back() + ", found \"" + word + '"' +
                                             didYouMean(suggestionFor(word, words)));
    };
    command->add_option_function<std::string>(name, choose, purpose)
        ->type_name(typeOf(words))
        ->option_text(placeholder);
}

/// Adds an operand, which help shows without its type.
template <class Value>
CLI::Option *addOperand(CLI::App *command, const char *name, Value &value, const std::string &purpose) {
    return command->add_option(name, value, purpose)->option_text(" ");
}

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

void CommandLine::addCheck() {
    CLI::App *command =
        addCommand("check", "Find every problem of FED files",
                   "Prints each problem as FILE:LINE:COLUMN: error: TEXT [RULE], with the line of the file under it.\n"
                   "Likely mistakes that the database accepts are warnings. rtifed explain RULE explains a rule.\n\n"
                   "Examples:\n"
                   "  rtifed check harbour.fed\n"
                   "  rtifed check --format sarif *.fed >findings.sarif\n"
                   "  rtifed check --quiet --fail-on warning harbour.fed && echo tidy",
                   [this] { return check(_check, _console); });
    addOperand(command, "FILE", _check.files, kFile)->required();
    addChoice(command, "--format", _check.format,
              {{"text", textReport}, {"json", jsonReport}, {"sarif", sarifReport}, {"github", githubReport}}, "FORMAT",
              "Output format: text (default), for people; json; sarif, for code scanning and editors;\n"
              "github, for annotations in a workflow");
    command
        ->add_option("--max-findings", _check.maxFindings,
                     "Print at most N findings of each file, " + std::to_string(kUsuallyShown) +
                         " by default; 0 for all")
        ->check(CLI::Range(std::size_t(0), std::size_t(1000000000)))
        ->option_text("N");
    addChoice(command, "--fail-on", _check.failOn, {{"error", Severity::error}, {"warning", Severity::warning}},
              "SEVERITY", "The least severity that gives exit status 1: error (default) or warning");
    command->add_flag("--quiet", _check.quiet, "Print nothing, only set the exit status");
}

void CommandLine::addExplain() {
    CLI::App *command = addCommand("explain", "Explain a rule of check, or list all rules",
                                   "Examples:\n"
                                   "  rtifed explain unknown-space\n"
                                   "  rtifed explain",
                                   [this] { return explain(_explain, _console); });
    std::vector<std::string> rules;
    for (const Rule &rule : allRules())
        rules.emplace_back(rule.id);
    addOperand(command, "RULE", _explain.rule, "The name in brackets after a finding")->type_name(typeOf(rules));
    command->add_flag("--markdown", _explain.markdown)->group(""); // for developers who add a rule
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

void CommandLine::addChecksum() {
    CLI::App *command = addCommand(
        "checksum", "Print the checksum of each model, to compare models, or check a list",
        "Prints eight hexadecimal digits (with --sha256 sixty-four), two blanks and the file name. All copies of a\n"
        "model have the same checksum, whatever their file names, comments and layout. The processes of a federation\n"
        "compare the short one; only the long one identifies a model.\n\n"
        "Examples:\n"
        "  rtifed checksum harbour.fed\n"
        "  rtifed checksum --sha256 *.fed >MANIFEST\n"
        "  rtifed checksum --check MANIFEST",
        [this] { return checksum(_checksum, _console); });
    addOperand(command, "FILE", _checksum.fileNames, std::string(kFile) + "; with --check, a list of checksums")
        ->required();
    CLI::Option *check = command->add_flag("--check,-c", _checksum.check, "Check the files that FILE lists");
    command->add_flag("--sha256", _checksum.sha256, "Print SHA-256 fingerprints")->excludes(check);
    command->add_flag("--quiet", _checksum.quiet, "Do not print OK for each matching file")->needs(check);
    command->add_flag("--status", _checksum.silent, "Print nothing, only set the exit status")->needs(check);
    command->add_flag("--ignore-missing", _checksum.ignoreMissing, "Skip files that do not exist")->needs(check);
    command->add_flag("--strict", _checksum.strict, "Fail on improperly formatted lines")->needs(check);
}

void CommandLine::addSave() {
    CLI::App *command =
        addCommand("save", "Write the saved image of a model, for other processes to restore",
                   "An existing image is replaced whole, or not at all. A file of another kind is not replaced.\n\n"
                   "Example:\n"
                   "  rtifed save harbour.fed harbour.img",
                   [this] { return save(_fileName, _otherName, _console); });
    addOperand(command, "FED", _fileName, kFile)->required();
    addOperand(command, "IMAGE", _otherName, "The image to write")->required();
}

void CommandLine::addTree() {
    CLI::App *command = addCommand("tree", "Show the class trees with their members, and the routing spaces",
                                   "CLASS is a full dotted name, with or without its root, or the end of one. If the "
                                   "file does not load, only what\n"
                                   "can be understood is shown, and the exit status is 1.\n\n"
                                   "Examples:\n"
                                   "  rtifed tree harbour.fed\n"
                                   "  rtifed tree --inherited harbour.fed Craft",
                                   [this] { return tree(_tree, _console); });
    addOperand(command, "FILE", _tree.fileName, kFile)->required();
    addOperand(command, "CLASS", _tree.className, "Show only this class and its descendants");
    command->add_flag("--inherited", _tree.inherited,
                      "Show inherited members as well, with the class that declares them");
    command->add_flag("--classes", _tree.classesOnly, "Show no members");
    command->add_option("--depth", _tree.depth, "Show the outermost N levels of classes")
        ->check(CLI::Range(std::size_t(1), std::size_t(1000)))
        ->option_text("N");
}

void CommandLine::addFind() {
    CLI::App *command = addCommand(
        "find", "Find where a name is declared, and which classes inherit it",
        "NAME names a class, attribute, parameter, space or dimension, in any letter case, with or without its class\n"
        "or space: Position, Craft.Position, ObjectRoot.Craft.Position. The class may also be one that inherits the\n"
        "member. If the file does not load, only what can be understood is searched, and the exit status is 1.\n\n"
        "Example:\n"
        "  rtifed find harbour.fed Position",
        [this] { return find(_find, _console); });
    addOperand(command, "FILE", _find.fileName, kFile)->required();
    addOperand(command, "NAME", _find.name, "The name to find")->required();
    command->add_flag("--all", _find.all, "Show long lists in full");
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

void CommandLine::addDiff() {
    using Verdict = Comparison::Verdict;
    std::string verdicts;
    std::vector<std::pair<std::string, Verdict>> levels;
    for (int level = 0; level <= static_cast<int>(Verdict::incompatible); ++level) {
        const auto verdict = static_cast<Verdict>(level);
        const std::string name = Comparison::nameOf(verdict);
        verdicts += "  " + name + std::string(14 - name.size(), ' ') + Comparison::descriptionOf(verdict) + '\n';
        if (verdict != Verdict::identical)
            levels.emplace_back(name, verdict);
    }
    CLI::App *command = addCommand("diff", "Show what changed from one model to another, and what that means",
                                   "The verdict is one of these, from the mildest:\n" + verdicts +
                                       "\nOf FED text that does not load, only what can be understood is compared.\n\n"
                                       "Exit status:\n"
                                       "  0  the verdict is milder than the level of --fail-on\n"
                                       "  1  it is not\n"
                                       "  2  a file cannot be read, or an image cannot be restored\n\n"
                                       "Examples:\n"
                                       "  rtifed diff harbour-1.fed harbour-2.fed\n"
                                       "  rtifed diff --quiet --fail-on incompatible harbour-1.fed harbour-2.fed",
                                   [this] { return diff(_diff, _console); });
    addOperand(command, "OLD", _diff.oldName, kFile)->required();
    addOperand(command, "NEW", _diff.newName, kFile)->required();
    command->add_flag("--all", _diff.all, "List every change with its place, not only the first few of each group");
    addChoice(command, "--fail-on", _diff.failOn, levels, "LEVEL",
              "The mildest verdict that gives exit status 1, relabelled by default");
    addChoice(command, "--format", _diff.json, {{"text", false}, {"json", true}}, "FORMAT",
              "Output format: text (default) or json, which has every change");
    command->add_flag("--quiet", _diff.quiet, "Print nothing, only set the exit status");
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
