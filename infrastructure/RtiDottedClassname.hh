#pragma once

#include "infrastructure/RtiExport.hh"

#include <string>

/// A class name of components joined by dots, such as "ObjectRoot.Manager.Federate".
///
/// Threads: const members on any number of threads at once.
class RTI_EXPORT RtiDottedClassname {
public:
    explicit RtiDottedClassname(std::string name);

    /// The number of components, at least 1: one more than there are dots.
    int getDepth() const { return _depth; }

    /// The first `depth` components with the dots between them: the name of the ancestor class at that depth, the root
    /// being at depth 1. Empty for a depth below 1, the whole name for one beyond its depth.
    std::string getFullyQualifiedSubclass(int depth) const;

    /// The whole name, as given.
    const std::string &getClassname() const { return _name; }

private:
    std::string _name;
    int _depth = 1;
};
