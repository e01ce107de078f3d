#pragma once

#include "tool/check/Checker.hh"

#include <vector>

/// Returns what is missing of the Management Object Model (MOM), as one finding for each class that lacks something,
/// and what of it is misspelt or in the wrong place. A name does not count as missing if a part of the text that was
/// not understood may declare it where it belongs.
std::vector<Finding> momFindings(const Checker &text);
