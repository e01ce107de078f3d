#pragma once

#include "tool/model/Comparison.hh"

#include <string>
#include <vector>

/// Changes that a reader takes as one, such as the same space given to many attributes: how they are found in a
/// comparison, and how they are worded. It refers to the comparison.
class ChangeGroup {
public:
    /// All groups, those that mean most first, else in the order of the changes.
    static std::vector<ChangeGroup> groupsOf(const Comparison &comparison);

    Comparison::Verdict meaning() const { return Comparison::meaning(first().kind); }

    /// '-', '+' or '~', for what was removed, added or changed.
    char sign() const;
    /// What there is to say in one line. Of several changes it has the number, of one also the name.
    std::string headline() const;

    std::size_t size() const { return _changes.size(); }
    const Comparison::Change &operator[](std::size_t index) const { return *_changes[index]; }
    /// What a change is called among those of the group.
    std::string item(std::size_t index) const;

private:
    const Comparison::Change &first() const { return *_changes.front(); }
    std::string offsets() const;

    std::vector<const Comparison::Change *> _changes;
};

/// The full name of an element, printable.
std::string shownFullName(const Comparison::Element &element);
