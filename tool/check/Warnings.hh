#pragma once

#include "tool/check/Checker.hh"

#include <vector>

/// What the database accepts of a text and people regret, in the order of the text. Nothing of a text with syntax
/// errors: what it declares is then not surely what was meant.
std::vector<Finding> warningsOf(const Checker &text);
