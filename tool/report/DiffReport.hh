#pragma once

#include "tool/comparison/Comparison.hh"
#include "tool/console/Console.hh"
#include "tool/input/Input.hh"

#include <string>

struct ComparedFile {
    Input input;
    Outline outline;
};

/// The changes from one file to another, which must both outlive it.
struct Difference {
    const ComparedFile &before, &after;
    Comparison comparison;

    Difference(const ComparedFile &old, const ComparedFile &now)
        : before(old), after(now),
          comparison(old.outline, now.outline,
                     old.input.whole && now.input.whole && old.input.contents == now.input.contents) {}

    /// Whether both files are sound, so that they are understood completely.
    bool isWhole() const { return before.outline.loads && after.outline.loads; }

    bool checksumsAgree() const {
        return comparison.handlesCompared() && before.outline.checksum == after.outline.checksum;
    }
};

/// Explains the verdict to a person who runs the federation.
std::string explanationOf(const Difference &difference);

/// Writes the verdict, what it means, and the changes by groups: the first few of each, or all with their places.
void writeDifference(const Difference &difference, bool all, const Console &console);
