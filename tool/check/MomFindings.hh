#pragma once

#include "tool/check/Finding.hh"

#include <functional>
#include <string_view>
#include <vector>

class Checker;

/// What is missing of the Management Object Model (MOM), as one finding, and where it stands beside its root. Names
/// that `mayStand` in a part of the text that was not understood do not count.
std::vector<Finding> momFindings(const Checker &text, const std::function<bool(std::string_view)> &mayStand);
