#pragma once

#include "tool/check/Rule.hh"

#include <string>

/// Returns the address of the text about a rule: in the page that the user has set, else in the one that is installed
/// with the program; empty if neither is there.
std::string pageOfRule(const Rule &rule, const std::string &page);
