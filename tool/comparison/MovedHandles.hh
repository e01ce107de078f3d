#pragma once

#include "tool/model/Outline.hh"

#include <string>

/// Returns the number of classes, members and spaces of two models that have another handle in the second one, such as
/// "2 handles moved". Handles of a file that does not load mean nothing yet, but in a later version they would be
/// these.
std::string movedHandles(const Outline &before, const Outline &after);
