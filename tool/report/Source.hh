#pragma once

#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Finding.hh"

#include <functional>
#include <string>
#include <vector>

/// The file that findings refer to: its name, and the places in its text.
class Source {
public:
    /// `text` is null for a saved image, which has no places.
    Source(std::string name, const RtiFedParser *text);

    /// A text of another kind, which must outlive this object, and how its places are found.
    using Positions = std::function<RtiFedPosition(std::uint32_t offset)>;
    Source(std::string name, std::string_view text, Positions positionAt)
        : _name(std::move(name)), _text(text), _positionAt(std::move(positionAt)) {}

    const std::string &name() const { return _name; }
    std::string_view text() const { return _text; }

    RtiFedPosition begin(RtiFedSpan span) const { return _positionAt(span.begin); }
    RtiFedPosition end(RtiFedSpan span) const { return _positionAt(span.begin + span.length); }

    /// The place of a byte, with the column counted in UTF-8 characters; `offset` may also be the size of the text.
    ///
    /// A file may be one very long line with very many findings. So the characters before every 4096th byte are counted
    /// once, and only those after the nearest counted byte for each place.
    RtiFedPosition characterPosition(std::uint32_t offset) const;

    /// `FILE:LINE:COLUMN`, or the name alone if there is no span.
    std::string place(const std::optional<RtiFedSpan> &span) const;

private:
    std::size_t charactersBefore(std::uint32_t offset) const;

    std::string _name;
    std::string_view _text;
    Positions _positionAt;
    mutable std::vector<std::size_t> _characters; // before each checkpoint, filled on first use
};

/// Returns the name of a file as code hosts want it: without a leading "./".
std::string pathInRepository(std::string fileName);
