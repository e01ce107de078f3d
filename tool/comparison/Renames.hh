#pragma once

#include "tool/comparison/Comparison.hh"

#include <vector>

/// Sets `Change::rename` of removed and added elements that are likely to be the same element under a new name.
///
/// A class or space is likely to be renamed if another one with the same contents was added at the same place, that is
/// to the same superclass; a member if another one with the same properties was added between the same neighbours. If
/// there is more than one candidate, none is chosen. What has no contents is never paired, because nothing but its name
/// identifies it.
void findRenames(std::vector<Comparison::Change> &changes, const Outline &before, const Outline &after);
