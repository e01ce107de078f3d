#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"
#include "tool/control/Suppressions.hh"

#include <algorithm>

void CommandLine::addCheck() {
    CLI::App *command = addCommand(
        "check", "Find every problem of FED files",
        "Prints each problem as FILE:LINE:COLUMN: error: TEXT [RULE], with the line of the file under it.\n"
        "Likely mistakes that the database accepts are warnings. rtifed explain RULE explains a rule.\n"
        "The same mistake at several places is one finding as text, json, sarif and junit; the other formats\n"
        "print each place. A summary follows the findings of several files as text.\n\n"
        "The nearest .rtifed.toml in the folder of a file or above sets the rules for it, and a comment\n"
        "such as ;; rtifed: allow RULE REASON hides the findings of the clause after it. Errors for which\n"
        "the library refuses a file give exit status 1 even if they are hidden, unless a baseline has them.\n"
        "configuration.md of the documentation describes all this.\n\n"
        "Examples:\n"
        "  rtifed check harbour.fed\n"
        "  rtifed check --format sarif *.fed >findings.sarif\n"
        "  rtifed check --quiet --fail-on warning harbour.fed && echo tidy\n"
        "  rtifed check --rule letter-case=off --rule unused-space=error harbour.fed\n"
        "  rtifed check --write-baseline known.json fed; rtifed check --baseline known.json fed",
        [this] { return check(_check, _console); });
    addOperand(command, "FILE", _check.files,
               std::string(kFileOrFolder) +
                   "; object models in XML are checked as modules of one, as import reads them")
        ->required();
    addChoice(command, "--format", _check.format,
              {{"text", textReport},
               {"concise", conciseReport},
               {"json", jsonReport},
               {"sarif", sarifReport},
               {"github", githubReport},
               {"gitlab", gitlabReport},
               {"junit", junitReport}},
              "FORMAT",
              "Output format: text (default), for people; concise, one line for each place;\n"
              "json; sarif, for code scanning and editors; github, for annotations in a workflow;\n"
              "gitlab, for code quality in merge requests; junit, for test servers");
    command
        ->add_option("--max-findings", _check.maxFindings,
                     "Print at most N findings of each file; by default 50 as text, all in other formats; 0 for all")
        ->check(CLI::Range(std::size_t(0), std::size_t(1000000000)))
        ->option_text("N");
    addChoice(command, "--fail-on", _check.failOn, {{"error", Severity::error}, {"warning", Severity::warning}},
              "SEVERITY", "The least severity that gives exit status 1: error (default) or warning");
    command->add_flag("--statistics", _check.statistics,
                      "Print how often each rule finds something, the most frequent first, and no findings");
    command->add_flag("--quiet", _check.quiet, "Print nothing, only set the exit status");
    addControl(command);
}

/// Adds the options that decide which findings count.
void CommandLine::addControl(CLI::App *command) {
    const auto addLevel = [this](const std::string &setting) {
        const std::size_t equals = std::min(setting.find('='), setting.size());
        const Rule *rule = findRule(setting.substr(0, equals));
        const auto level = findLevel(setting.substr(std::min(equals + 1, setting.size())));
        if (!rule)
            throw CLI::ValidationError("--rule", unknownRule(setting.substr(0, equals)));
        if (!level)
            throw CLI::ValidationError("--rule", "expected " + setting.substr(0, equals) +
                                                     "=off, =warning or =error, found " + inQuotes(setting));
        _check.configuration.levels.emplace_back(rule, *level);
    };
    command
        ->add_option_function<std::vector<std::string>>(
            "--rule",
            [addLevel](const std::vector<std::string> &settings) {
                std::for_each(settings.begin(), settings.end(), addLevel);
            },
            "Switch a rule off, or make it a warning or an error: RULE=off, RULE=warning, RULE=error;\n"
            "counts more than configurations, and may be given several times")
        ->allow_extra_args(false)
        ->option_text("RULE=LEVEL");
    addConfiguration(command, _check.configuration);
    command->add_flag("--show-config", _check.showSettings,
                      "Show what holds for each file and where it was set, and check nothing");
    CLI::Option *baseline = command->add_option(
        "--baseline", _check.baseline, "Report only findings that are not in this file, and fail only for them");
    baseline->option_text("FILE");
    CLI::Option *write =
        command
            ->add_option("--write-baseline", _check.writeBaseline, "Write all findings to this file, and report none")
            ->option_text("FILE");
    write->excludes(baseline);
    command
        ->add_option_function<std::string>(
            "--add-allow",
            [this](const std::string &reason) {
                if (const std::string fault = faultOfReason(reason); !fault.empty())
                    throw CLI::ValidationError("--add-allow", fault);
                _check.addAllow = reason;
            },
            "Write a comment with this reason before each finding that allows it, into the files themselves")
        ->option_text("REASON")
        ->excludes(baseline)
        ->excludes(write);
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
