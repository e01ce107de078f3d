#pragma once

#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"
#include "tool/control/Configurations.hh"

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

/// How the commands define their options and operands.

/// The purpose of most operands.
inline constexpr const char *kFile = "FED text or a saved image; - is standard input";
inline constexpr const char *kFileOrFolder =
    "FED text or a saved image; - is standard input, a folder stands for the .fed files in it and its folders";

/// Lists the values of an option or operand in place of its type, where completions read them.
inline std::string typeOf(const std::vector<std::string> &words) {
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
        ->take_last()
        ->option_text(placeholder);
}

/// Adds an operand, which help shows without its type.
template <class Value>
CLI::Option *addOperand(CLI::App *command, const char *name, Value &value, const std::string &purpose) {
    return command->add_option(name, value, purpose)->option_text(" ");
}

/// Adds the options that say which configuration is read.
inline void addConfiguration(CLI::App *command, ConfigurationOptions &options) {
    CLI::Option *config =
        command->add_option("--config", options.file, "Read this configuration for all files, not .rtifed.toml");
    config->option_text("FILE");
    command->add_flag("--no-config", options.ignoreAll, "Read no configuration")->excludes(config);
}

/// Adds operands of the form `FILE... NAME`. The library gives all values to the first operand, whose last value is
/// then passed on to the second, unless it is the only one: the second is missing then.
inline void addFilesAndName(CLI::App *command, std::vector<std::string> &files, const std::string &purposeOfFiles,
                            std::string &name, const std::string &purposeOfName) {
    const auto divide = [command, &files](std::vector<std::string> values) {
        if (values.size() > 1) {
            command->get_option("NAME")->add_result(values.back());
            values.pop_back();
        }
        files = std::move(values);
    };
    command->add_option_function<std::vector<std::string>>("FILE", divide, purposeOfFiles)
        ->option_text(" ")
        ->required();
    addOperand(command, "NAME", name, purposeOfName)->required(); // second, so that the library processes it second
}
