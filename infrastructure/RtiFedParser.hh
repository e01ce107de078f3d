#pragma once

#include "infrastructure/RtiExport.hh"
#include "infrastructure/RtiFedErrorTypes.hh"
#include "infrastructure/RtiFedPosition.hh"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

class RtiFedParserCodegen;

/// Reads the text of a FED file and delivers its declarations to callbacks.
///
/// The constructor reads the whole text; syntax errors are collected, not thrown. Memory and time grow linearly with
/// the text. Names may have up to kMaxNameLength bytes, classes nest up to kMaxClassNesting levels.
///
/// Threads: a parser belongs to one thread at a time.
class RTI_EXPORT RtiFedParser : public RtiFedErrorTypes {
public:
    /// Reads the text, which may begin with a byte order mark. A text of more than kMaxTextSize bytes is not read and
    /// has one error.
    explicit RtiFedParser(std::string text);
    ~RtiFedParser();
    RtiFedParser(const RtiFedParser &) = delete;
    RtiFedParser &operator=(const RtiFedParser &) = delete;

    /// Reads a file from its current position to its end. It returns early after the first NUL byte, which no FED text
    /// contains, and after kMaxTextSize bytes; so it may return a little more than that. Throws a std::string that says
    /// why the file cannot be read.
    static std::string readText(std::FILE *file);

    /// The syntax errors, in the order of the text.
    std::size_t numErrors() const;
    Error error(std::size_t index) const; ///< `index` is below numErrors().

    /// Calls a callback for each declaration: federation, version, spaces, object classes, interaction classes, each
    /// class after its superclass and directly followed by its own members. An exception of a callback passes through.
    ///
    /// A text with syntax errors is delivered as far as it was understood: each declaration whose name could be read,
    /// with empty strings for the words that could not. A dot in the name of a class is replaced by a character that
    /// looks alike.
    void deliver(RtiFedParserCodegen &codegen);
    /// The same, but frees the declarations; nothing may be delivered afterwards.
    void deliverOnce(RtiFedParserCodegen &codegen);

    /// The position in the text of an argument (from 0) of the callback that is running. For an absent argument, and
    /// while no callback runs, the beginning of the FED clause.
    RtiFedPosition position(std::size_t argument = 0) const;

    /// The same as a run of bytes, quotes included; the "(" of the FED clause for an absent argument.
    RtiFedSpan span(std::size_t argument = 0) const;

    /// Whether the text contains this argument (from 0) of the callback that is running; "" in quotes counts.
    bool given(std::size_t argument) const;

    /// The text that was read, and the position of one of its bytes.
    std::string_view text() const;
    RtiFedPosition positionAt(std::uint32_t offset) const;

    /// The piece of the text that begins at `offset`: 0, or the end of another piece before the end of the text. For
    /// programs that change a text; it also cuts text that the parser did not read because of an error.
    RtiFedPiece pieceAt(std::uint32_t offset) const;

    /// The usual spelling of a keyword given in any letter case; empty for a word that is not a keyword.
    static std::string_view keyword(std::string_view word);

    /// The keyword of the first clause of this kind directly in the FED clause; if there is none, the keyword `FED`.
    RtiFedSpan section(std::string_view keyword) const;

    /// Whether each clause is known to be in the clause its author meant. If parentheses are missing or superfluous it
    /// is not, and findings about inheritance or about something missing may be mere consequences.
    bool nestingKnown() const;

    /// Whether all spaces are known. They are not if a space lacks its name, or the text ends before its spaces.
    bool spacesKnown() const;

    /// Whether each class is known to have the name its author meant. If a class lacks a word or has a superfluous one,
    /// its name is uncertain, and so are the full names of its subclasses.
    bool classesKnown() const;

    /// The number of clauses that lack a word, which may be the name of what they declare.
    std::size_t numLostNames() const;
    /// The same, directly in the class whose name is at offset `owner`.
    std::size_t numLostNames(std::uint32_t owner) const;

    /// Whether a part of the text that was not understood may declare this name. Letter case does not matter.
    bool skipped(std::string_view name) const;
    /// The same, in the class whose name is at offset `owner` but not in a class clause within it; 0 means the
    /// text outside of classes.
    bool skipped(std::string_view name, std::uint32_t owner) const;

    /// The first character of a word that looks like a blank, such as "a no-break space (U+00A0)"; empty if there is
    /// none.
    static std::string blankLookalikeIn(std::string_view word);
    /// The mark by which other languages begin a comment, if the word begins with one; otherwise empty.
    static std::string_view foreignCommentMark(std::string_view word);

    /// The size of the leading character if it is printable UTF-8. Otherwise 0: for a control character, a byte order
    /// mark, a mark that reverses the direction of writing, or bytes that are not UTF-8.
    static std::size_t printableSize(std::string_view bytes);

    /// A copy of `bytes` that is safe to write to a terminal: bytes that are not printable as hexadecimal escapes, as
    /// in C. If it would be longer than `limit` bytes it is cut and ends in "...".
    static std::string printable(std::string_view bytes, std::size_t limit = 60);

private:
    struct Contents;
    void deliverObjects(RtiFedParserCodegen &codegen);
    void deliverInteractions(RtiFedParserCodegen &codegen);
    std::unique_ptr<Contents> _contents;
};

/// The parser as the database calls it: reads `file` from its current position, delivers its declarations to the
/// callbacks, and closes the file in any case. Returns 0.
///
/// If the text has a syntax error or cannot be read, nothing is delivered, and a std::string is thrown that says where
/// ("line 14, column 24: ..."), what was expected and what was found. An exception of a callback passes through.
RTI_EXPORT int RtiFedParser_Class_main(std::FILE *file, RtiFedParserCodegen *codegen);
