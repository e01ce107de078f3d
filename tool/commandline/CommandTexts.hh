#pragma once

#include <CLI/App.hpp>

#include <optional>
#include <string>
#include <vector>

/// An option of a command, or an operand, as help shows it.
struct OptionTexts {
    std::vector<std::string> names;  ///< With dashes, the short one first; an operand has one name without.
    std::string argument;            ///< Its argument, such as NAME; empty if it has none.
    std::vector<std::string> values; ///< The values that the argument may have; empty if it may be anything.
    std::string purpose;
    bool required = false;
    bool repeated = false;

    bool isOperand() const { return names.front()[0] != '-'; }
    bool isFile() const; ///< Whether it is the name of a file.
};

/// A command as its help describes it, or the program itself.
struct CommandTexts {
    std::string name;
    std::string purpose;
    std::string details; ///< Paragraphs, and indented lines that keep their line ends.
    std::vector<OptionTexts> options, operands;
};

/// The program, and its commands in the order of the help.
struct ProgramTexts {
    CommandTexts program;
    std::vector<CommandTexts> commands;
};

ProgramTexts programTexts(const CLI::App &app);

/// Returns the texts of one command, or of the program, under the given name.
CommandTexts commandTexts(const CLI::App &app, const std::string &name);

/// The two columns of a row of a table among the details, such as `  0  done and nothing found`.
struct TableRow {
    std::string name, meaning;
};
/// Returns the row that a line of the details is; nothing for other lines, such as examples.
std::optional<TableRow> tableRow(const std::string &line);

/// Returns the options of the program that all its commands have as well.
std::vector<OptionTexts> commonOptions(const CommandTexts &program);
