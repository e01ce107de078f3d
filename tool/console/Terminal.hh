#pragma once

#include "tool/console/Console.hh"

/// Standard output and standard error, and what the first shows as far as the environment tells: colours on a terminal
/// unless NO_COLOR is set, characters beyond ASCII on a terminal with a UTF-8 locale, and its width.
Console consoleHere();
