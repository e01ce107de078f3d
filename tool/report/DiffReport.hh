#pragma once

#include "tool/console/Console.hh"
#include "tool/model/Comparison.hh"
#include "tool/model/Input.hh"

#include <ostream>
#include <utility>

struct ComparedFile {
    Input input;
    Outline outline;
};

/// Two files, and the changes from one to the other.
struct Difference {
    ComparedFile before, after;
    Comparison comparison;

    Difference(ComparedFile old, ComparedFile now)
        : before(std::move(old)), after(std::move(now)),
          comparison(before.outline, after.outline,
                     before.input.whole && after.input.whole && before.input.contents == after.input.contents) {}

    Difference(const Difference &) = delete; // the comparison refers to the outlines
    Difference &operator=(const Difference &) = delete;

    bool checksumsAgree() const {
        return before.outline.loads && after.outline.loads && before.outline.checksum == after.outline.checksum;
    }
};

/// Writes the verdict, what it means, and the changes by groups: the first few of each, or all with their places.
void writeDifference(const Difference &difference, bool all, const Console &console);

/// Writes the JSON document that docs/diff.schema.json describes, one change a line.
void writeDifferenceAsJson(const Difference &difference, std::ostream &out);
