#pragma once

#include "tool/console/Console.hh"

/// Returns standard output and standard error. If standard output is a terminal, it has its width, shows colours unless
/// NO_COLOR is set, and shows characters outside ASCII if the locale is UTF-8.
Console consoleHere();
