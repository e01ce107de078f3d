#pragma once

#include "tool/check/Finding.hh"

#include <vector>

/// Joins the findings that are one mistake at several places: the first of them stays at its position, with the places
/// of the others. Findings join if they are of one rule, severity and suppression, and are equal but for their places
/// and for what their texts say about their place only (Finding::particular).
std::vector<Finding> grouped(std::vector<Finding> findings);
