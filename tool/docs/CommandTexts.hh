#pragma once

#include <CLI/App.hpp>

#include <string>
#include <vector>

/// An option of a command, or an operand, as help shows it.
struct OptionTexts {
    std::vector<std::string> names;  ///< With their dashes, the short one first; the only one of an operand has none.
    std::string argument;            ///< What stands behind it, such as NAME; empty if nothing does.
    std::vector<std::string> values; ///< All that the argument may be, empty if it is anything.
    std::string purpose;
    bool required = false;
    bool repeated = false;

    bool isOperand() const { return names.front()[0] != '-'; }
    bool isFile() const; ///< Whether it is the name of a file.
};

/// A command as its help tells of it; the program itself is the first.
struct CommandTexts {
    std::string name; ///< Empty for the program itself.
    std::string purpose;
    std::string details; ///< Paragraphs, and lines with a margin that stand as they are.
    std::vector<OptionTexts> options, operands;
};

/// The program, then its commands in the order of the help.
std::vector<CommandTexts> commandTexts(const CLI::App &app);
