#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

void CommandLine::addCheck() {
    CLI::App *command = addCommand(
        "check", "Find every problem of FED files",
        "Prints each problem as FILE:LINE:COLUMN: error: TEXT [RULE], with the line of the file under it.\n"
        "Likely mistakes that the database accepts are warnings. rtifed explain RULE explains a rule.\n"
        "The same mistake at several places is one finding as text, json, sarif and junit; the other formats\n"
        "print each place. A summary follows the findings of several files as text.\n\n"
        "Examples:\n"
        "  rtifed check harbour.fed\n"
        "  rtifed check --format sarif *.fed >findings.sarif\n"
        "  rtifed check --quiet --fail-on warning harbour.fed && echo tidy",
        [this] { return check(_check, _console); });
    addOperand(command, "FILE", _check.files, kFileOrFolder)->required();
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
