#pragma once

#include "tool/comparison/Comparison.hh"

#include <string>
#include <vector>

/// Changes that readers take for one, such as the same space given to many attributes, and their wording. It refers to
/// the comparison.
class ChangeGroup {
public:
    /// Returns all groups, the gravest first, otherwise in the order of the changes.
    static std::vector<ChangeGroup> groupsOf(const Comparison &comparison);

    Comparison::Verdict meaning() const { return Comparison::meaning(first().kind); }

    /// '-' for a removal, '+' for an addition, else '~'.
    char sign() const;
    /// The group in one line: with the name if it has one change, else with their number.
    std::string headline() const;

    std::size_t size() const { return _changes.size(); }
    const Comparison::Change &operator[](std::size_t index) const { return *_changes[index]; }
    /// The wording of one change within its group.
    std::string item(std::size_t index) const;

private:
    const Comparison::Change &first() const { return *_changes.front(); }
    std::string offsets() const;

    std::vector<const Comparison::Change *> _changes;
};

/// The full name of an element, printable.
std::string shownFullName(const Comparison::Element &element);
