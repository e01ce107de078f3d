#include "tool/commandline/CommandLine.hh"

#include "tool/commandline/Options.hh"

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
