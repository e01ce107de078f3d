#pragma once

#include "tool/syntax/Replacement.hh"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// A text that is edited in rounds, and knows where its parts were before the first one.
class EditedText {
public:
    explicit EditedText(std::string text) : _text(std::move(text)) {}

    const std::string &text() const { return _text; }

    /// Plans edits that belong together, unless one of them touches what another one changes. Returns whether they are
    /// planned.
    bool add(const std::vector<Replacement> &edits);
    /// Makes the planned edits.
    void makeEdits();

    /// The offset before the first round; of inserted text, where it was inserted.
    std::uint32_t originalOffset(std::uint32_t offset) const;

private:
    /// A part of a text that a round replaced by another one.
    struct Change {
        std::uint32_t newBegin, newEnd, oldBegin, oldEnd;
    };

    bool isFree(const Replacement &edit) const;

    std::string _text;
    std::multimap<std::uint32_t, Replacement> _planned; // by where they begin; of equal ones, in the order of the calls
    std::vector<std::vector<Change>> _rounds;           // each in the order of the text
};
