#pragma once

#include "tool/comparison/Comparison.hh"

/// Returns the verdict of `rtifed diff` about what was understood of the first model: that the rest is clear in the
/// second one is no change, nor is that neither was understood completely.
Comparison::Verdict understoodVerdict(const Outline &before, const Outline &after);
