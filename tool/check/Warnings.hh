#pragma once

#include "tool/check/Checker.hh"

#include <vector>

/// Returns the likely mistakes in a text that the database accepts, in the order of the text. A text with syntax errors
/// has none: what it declares may not be what was meant.
std::vector<Finding> warningsOf(const Checker &text);
