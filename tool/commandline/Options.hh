#pragma once

#include "tool/check/Suggestion.hh"
#include "tool/console/Text.hh"

#include <CLI/CLI.hpp>

#include <string>
#include <utility>
#include <vector>

/// How the commands define their options and operands.

/// The purpose of most operands.
inline constexpr const char *kFile = "FED text or a saved image; - is standard input";

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
        ->option_text(placeholder);
}

/// Adds an operand, which help shows without its type.
template <class Value>
CLI::Option *addOperand(CLI::App *command, const char *name, Value &value, const std::string &purpose) {
    return command->add_option(name, value, purpose)->option_text(" ");
}
