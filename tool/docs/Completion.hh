#pragma once

#include "tool/docs/CommandTexts.hh"

#include <string>
#include <vector>

/// Return the script that completes the program's command line in a shell.
std::string bashCompletion(const std::vector<CommandTexts> &all);
std::string zshCompletion(const std::vector<CommandTexts> &all);
std::string fishCompletion(const std::vector<CommandTexts> &all);
