#pragma once

#include "tool/docs/CommandTexts.hh"

#include <string>
#include <vector>

/// The manual page of a command, of which `all` are the commands of the program, as roff. `version` stands in its foot.
std::string manPage(const CommandTexts &command, const std::vector<CommandTexts> &all, const std::string &version);
