#pragma once

#include <CLI/App.hpp>
#include <CLI/Error.hpp>

#include <string>

/// Says what is wrong with the command line that `program` could not parse, with a suggestion for a misspelt word.
std::string usageError(const CLI::App &program, const CLI::ParseError &error);

/// Says that there is no command of this name.
std::string unknownCommand(const CLI::App &program, const std::string &name);
