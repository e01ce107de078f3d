#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Finding.hh"

#include <string>
#include <vector>

/// The file that findings are about, as reports show it: its name, and the places in its text.
class Source {
public:
    /// `text` is null for a saved image, which has no places.
    Source(std::string name, const RtiFedParser *text) : _name(std::move(name)), _text(text) {}

    const std::string &name() const { return _name; }
    std::string_view text() const { return _text->text(); }

    /// The place of a byte, or just behind the last.
    RtiFedPosition position(std::uint32_t offset) const { return _text->positionAt(offset); }
    RtiFedPosition begin(RtiFedSpan span) const { return position(span.begin); }
    RtiFedPosition end(RtiFedSpan span) const { return position(span.begin + span.length); }

    /// The same with columns that count characters of UTF-8.
    RtiFedPosition characterPosition(std::uint32_t offset) const;

    /// `FILE:LINE:COLUMN`, or the name alone if there is no span.
    std::string place(const std::optional<RtiFedSpan> &span) const;

private:
    std::size_t charactersBefore(std::uint32_t offset) const;

    std::string _name;
    const RtiFedParser *_text;
    mutable std::vector<std::size_t> _characters; // before every kCheckpoint-th byte, filled on demand
};
