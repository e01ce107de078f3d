#pragma once

#include "tool/docs/CommandTexts.hh"

#include <string>
#include <vector>

/// Returns the manual page of a command as roff. `all` are all commands of the program; `version` is for the footer.
std::string manPage(const CommandTexts &command, const std::vector<CommandTexts> &all, const std::string &version);
