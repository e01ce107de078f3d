#include "tool/commandline/UsageError.hh"

#include "tool/check/Suggestion.hh"
#include "tool/commandline/CommandTexts.hh"
#include "tool/console/Text.hh"

#include <algorithm>

namespace {

/// Returns the option that a misspelt one most likely means: the only one that begins so, else a similar one.
std::string similarOption(const std::string &option, const CLI::App &program, const CLI::App *command) {
    std::vector<std::string> names;
    for (const CLI::App *app : {command, &program})
        if (app)
            for (const OptionTexts &known : commandTexts(*app, "").options)
                names.insert(names.end(), known.names.begin(), known.names.end());
    const auto beginsSo = [&option](const std::string &name) { return beginsWith(name, option); };
    if (option.size() > 2 && std::count_if(names.begin(), names.end(), beginsSo) == 1)
        return *std::find_if(names.begin(), names.end(), beginsSo);
    return suggestionFor(option, names);
}

/// Says that an option, whose name begins the library's message, lacks its value.
std::string missingValue(const std::string &message, const CLI::App &program, const CLI::App *command) {
    const std::string name = message.substr(0, message.find(": "));
    for (const CLI::App *app : {command, &program}) // unreached: each option has texts, so the loop returns
        if (app)
            for (const OptionTexts &option : commandTexts(*app, "").options)
                if (std::find(option.names.begin(), option.names.end(), name) != option.names.end())
                    return name + ": expected " +
                           (option.values.empty() ? option.argument : "one of " + joined(option.values)) +
                           ", found nothing";
    return message; // unreached: each option has texts
}

} // namespace

std::string unknownCommand(const CLI::App &program, const std::string &name) {
    std::vector<std::string> commands;
    for (const CLI::App *command : program.get_subcommands([](const CLI::App *) { return true; }))
        commands.push_back(command->get_name());
    return "unknown command " + inQuotes(name) + didYouMean(suggestionFor(name, commands));
}

std::string usageError(const CLI::App &program, const CLI::ParseError &error) {
    const std::vector<CLI::App *> given = program.get_subcommands();
    const CLI::App *command = given.empty() ? nullptr : given.front();
    std::vector<std::string> rest = program.remaining(true);
    rest.erase(std::remove(rest.begin(), rest.end(), "--"), rest.end()); // which only ends the options
    for (const std::string &word : rest) // an unknown option first: other errors may follow from it
        if (word.size() > 1 && word[0] == '-') {
            const std::string option = word.substr(0, word.find('='));
            return "unknown option " + inQuotes(option) + didYouMean(similarOption(option, program, command));
        }
    if (!command && !rest.empty())
        return unknownCommand(program, rest.front());
    if (!command && dynamic_cast<const CLI::RequiredError *>(&error))
        return "expected a command";
    if (!rest.empty())
        return "unexpected operand " + inQuotes(rest.front());
    if (dynamic_cast<const CLI::ArgumentMismatch *>(&error))
        return missingValue(error.what(), program, command);
    return error.what();
}
