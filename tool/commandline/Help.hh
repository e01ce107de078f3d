#pragma once

#include <CLI/App.hpp>

#include <cstddef>
#include <string>

/// Returns what --help shows of a command, or of the program if `app` has no parent, in lines of this width. Indented
/// lines of the details keep their line ends, and commands among them are never broken, so that they can be copied.
std::string helpText(const CLI::App &app, std::size_t width);
