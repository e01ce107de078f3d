#pragma once

#include "tool/check/Checker.hh"

#include <set>
#include <vector>

/// Replaces the findings about uses of an unknown space by one about its declaration, where that is misspelt.
///
/// The idea: if at least two places agree on an unknown name, and a space with a similar name is declared and never
/// used, the one declaration is wrong rather than all uses. If unknown names of two spellings are similar to it, or
/// just one place uses the name, it is not known which is wrong, and each use stays a finding.
void joinUsesOfMisspeltSpaces(const Checker &text, const std::set<RtiSpaceHandle> &used,
                              std::vector<Finding> &findings);
