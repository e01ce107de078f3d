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
    CLI::App *command =
        addCommand("diff", "Show what changed from one model to another, and what that means",
                   "The verdict is one of these, from the mildest:\n" + verdicts +
                       "\nA removed and an added element at the same place are marked as probably renamed if all their "
                       "contents are\nthe same, and as perhaps renamed if most are; members, if their "
                       "neighbours and properties are the same.\n\n"
                       "Of FED text that does not load, only what can be understood is compared.\n\n"
                       "If a file is an IEEE 1516-2010 object model in XML, what only one of the two can have is set "
                       "aside: handles, data types, the Management Object Model, and the names of the federation and "
                       "version.\n\n"
                       "Exit status:\n"
                       "  0  the verdict is milder than the level of --fail-on\n"
                       "  1  it is not\n"
                       "  2  a file cannot be read, or an image cannot be restored\n\n"
                       "Examples:\n"
                       "  rtifed diff harbour-1.fed harbour-2.fed\n"
                       "  rtifed diff --against v1.2 harbour.fed\n"
                       "  rtifed diff harbour.fed harbour.xml\n"
                       "  rtifed diff v1.2:models/harbour.fed v1.3:models/harbour.fed\n"
                       "  rtifed diff --quiet --fail-on incompatible harbour-1.fed harbour-2.fed",
                   [this] { return diff(_diff, _console); });
    const std::string file =
        std::string(kFile) + "; or an object model in XML; REV:PATH is a file at a revision in git";
    CLI::Option *oldFile = addOperand(command, "OLD", _diff.oldName, file)->required();
    CLI::Option *newFile = addOperand(command, "NEW", _diff.newName, file)->required();
    const auto compareAgainst = [this, oldFile, newFile](const std::string &revision) {
        if (revision.empty())
            throw CLI::ValidationError("--against", "expected a revision, found nothing");
        if (newFile->count() > 0)
            throw CLI::ValidationError("--against", "expected only the operand NEW, found OLD as well");
        if (oldFile->count() == 0)
            throw CLI::RequiredError("NEW");
        newFile->required(false);
        _diff.against = revision;
        std::swap(_diff.oldName, _diff.newName);
    };
    command
        ->add_option_function<std::string>("--against", compareAgainst,
                                           "Compare NEW, the only operand, with the same file at a revision in git, or "
                                           "with REV:PATH")
        ->option_text("REV");
    command->add_flag("--all", _diff.all, "List every change with its place, not only the first few of each group");
    addChoice(command, "--fail-on", _diff.failOn, levels, "LEVEL",
              "The mildest verdict that gives exit status 1, relabelled by default");
    addChoice(command, "--format", _diff.json, {{"text", false}, {"json", true}}, "FORMAT",
              "Output format: text (default) or json, which has every change");
    command->add_flag("--quiet", _diff.quiet, "Print nothing, only set the exit status");
}
