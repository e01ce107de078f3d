#pragma once

#include "tool/commandline/CommandTexts.hh"

#include <string>

/// Return the script that completes the program's command line in a shell.
std::string bashCompletion(const ProgramTexts &all);
std::string zshCompletion(const ProgramTexts &all);
std::string fishCompletion(const ProgramTexts &all);
