#pragma once

#include "tool/check/Checker.hh"
#include "tool/control/Settings.hh"

#include <vector>

/// Returns what in a text differs from the habits of its project, in no particular order. What the Management Object
/// Model and the RTI prescribe is exempt. A text with syntax errors has none: what it declares may not be what was
/// meant.
std::vector<Finding> habitFindings(const Checker &text, const Settings &settings);
