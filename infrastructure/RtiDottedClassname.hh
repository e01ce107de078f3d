#pragma once

#include "infrastructure/RtiExport.hh"

#include <string>

/// A class name of components joined by dots, such as "ObjectRoot.Manager.Federate".
///
/// Threads: const members on any number of threads at once.
class RTI_EXPORT RtiDottedClassname {
public:
    explicit RtiDottedClassname(std::string name);

    /// The number of components, which is one more than the number of dots.
    int getDepth() const { return _depth; }

    /// Returns the first `depth` components with their dots: the name of the ancestor at that depth, where the root has
    /// depth 1. Returns an empty text for a depth below 1 and the whole name for a depth beyond getDepth.
    std::string getFullyQualifiedSubclass(int depth) const;

    /// The whole name, as given.
    const std::string &getClassname() const { return _name; }

private:
    std::string _name;
    int _depth = 1;
};
