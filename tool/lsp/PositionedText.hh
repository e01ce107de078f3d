#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the client counts within a line. A byte that is not UTF-8 counts as one in any of them.
enum class PositionEncoding : unsigned char {
    utf8, ///< Bytes.
    utf16,
    utf32 ///< Characters.
};

/// A line, and the units before a place in it; both from 0.
struct TextPosition {
    std::uint32_t line = 0, character = 0;
};

/// A text that can be edited, and the positions of its bytes as the client counts them. Lines end with LF, CR LF or CR,
/// as in FED and in the protocol. A byte order mark is a character of the first line.
///
/// The beginnings of all lines are kept; an edit finds anew only those of the lines that it changes. Within a line the
/// units are counted. A text may be one very long line with very many positions in it: once a position in a long line
/// is asked for, the units before every 1024th byte are counted for the whole text, and then only those after the
/// nearest.
class PositionedText {
public:
    PositionedText(std::string text, PositionEncoding encoding);

    const std::string &text() const { return _text; }
    PositionEncoding encoding() const { return _encoding; }

    TextPosition positionAt(std::uint32_t offset) const;

    /// Returns the offset of a position; within a character, of the character. A position after the end of a line is
    /// that end, and one after the last line is the end of the text.
    std::uint32_t offsetAt(TextPosition position) const;

    /// Replaces the bytes from `begin` to before `end`.
    void replace(std::uint32_t begin, std::uint32_t end, std::string_view with);

    std::uint32_t numLines() const { return static_cast<std::uint32_t>(_lines.size()); }
    std::uint32_t lineBegin(std::uint32_t line) const { return _lines[line]; }
    /// The end of a line, before its line end.
    std::uint32_t lineEnd(std::uint32_t line) const;

private:
    std::uint32_t lineOf(std::uint32_t offset) const;
    std::vector<std::uint32_t> linesAfter(std::uint32_t begin, std::uint32_t end) const;

    std::string _text;
    PositionEncoding _encoding;
    std::vector<std::uint32_t> _lines; // where they begin
    /// The beginning of a character, and the units before it in its line.
    struct Counted {
        std::uint32_t offset, units;
    };
    Counted countedNear(std::uint32_t offset, std::uint32_t lineBegin) const;
    Counted counted(Counted from, std::uint32_t until) const;
    void countAll() const;
    mutable std::vector<Counted> _checkpoints; // the last character up to each 1024th byte; empty until needed
};
