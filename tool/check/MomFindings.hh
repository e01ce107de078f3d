#pragma once

#include "tool/check/Checker.hh"

#include <functional>
#include <string_view>
#include <vector>

/// Returns what is missing of the Management Object Model (MOM) as one finding, and a finding for each tree that has
/// the MOM beside its root. Names for which `mayBeDeclared` is true, in a part of the text that was not understood, do
/// not count as missing.
std::vector<Finding> momFindings(const Checker &text, const std::function<bool(std::string_view)> &mayBeDeclared);
