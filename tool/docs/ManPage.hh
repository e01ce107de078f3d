#pragma once

#include "tool/commandline/CommandTexts.hh"

#include <string>

/// Returns the name of the manual page of a command or of the program.
std::string pageName(const CommandTexts &command, const ProgramTexts &all);

/// Returns the manual page of a command or of the program as roff.
std::string manPage(const CommandTexts &command, const ProgramTexts &all);
