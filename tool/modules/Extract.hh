#pragma once

#include "tool/modules/Module.hh"

#include <string>
#include <unordered_set>

/// The classes to extract, by their full names in upper case.
struct ExtractedClasses {
    std::unordered_set<std::string> objects, interactions;
    bool subclasses = false; ///< Whether the subclasses of these are extracted as well.
};

/// Returns the part of a model that these classes need, in the canonical layout: their superclasses, all members of
/// each, and what every model has (the root classes, RTIprivate and the Management Object Model).
///
/// A space is left out if it is used, but only by what is left out. So nothing is missing of a model all of whose
/// classes are extracted.
std::string extracted(const Module &module, const ExtractedClasses &classes);
