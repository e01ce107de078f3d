#pragma once

#include "tool/model/Outline.hh"

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// A class that an operand of a command names.
struct MeantClass {
    const TreeKind *kind;
    std::size_t index; ///< In the outline.
};

/// Returns the class that the name means in each of the two trees. Empty, with a complaint, if neither tree has one, or
/// if it is ambiguous in one of them.
std::vector<MeantClass> meantClasses(const std::string &name, const std::string &fileName, const Outline &outline,
                                     std::ostream &complaints);
