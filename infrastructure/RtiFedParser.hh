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
/// The whole text is read when the parser is made; every syntax error is kept and none is thrown. Memory and time grow
/// linearly with the text. Names may be up to kMaxNameLength bytes, classes nest up to kMaxClassNesting levels.
/// Threads: a parser belongs to one thread at a time.
class RTI_EXPORT RtiFedParser : public RtiFedErrorTypes {
public:
    /// Reads the text, which may begin with a byte order mark. At most kMaxTextSize bytes; a longer text has one error.
    explicit RtiFedParser(std::string text);
    ~RtiFedParser();
    RtiFedParser(const RtiFedParser &) = delete;
    RtiFedParser &operator=(const RtiFedParser &) = delete;

    /// Reads a file from its current position to its end, or to its first NUL byte, which no FED text has; a text
    /// beyond kMaxTextSize is cut behind that. Throws a std::string that says why the file cannot be read.
    static std::string readText(std::FILE *file);

    /// The syntax errors, in the order of the text.
    std::size_t numErrors() const;
    Error error(std::size_t index) const; ///< `index` is below numErrors().

    /// Calls a callback for each declaration: federation, version, spaces, object classes, interaction classes, each
    /// class after its superclass and directly followed by its own members. An exception of a callback passes through.
    ///
    /// Of a text with syntax errors it delivers what was understood: a declaration whose name could be read, with
    /// empty texts for what could not. A dot in the name of a class is another character there.
    void deliver(RtiFedParserCodegen &codegen);
    /// The same, for the last time: declarations are freed when they were delivered.
    void deliverOnce(RtiFedParserCodegen &codegen);

    /// While a callback runs: where its first, second ... argument stands in the text (from 0); where an argument is
    /// absent, and at any other time, where the FED clause begins.
    RtiFedPosition position(std::size_t argument = 0) const;

    /// The same as a run of bytes, quotes included; the "(" of the FED clause where an argument is absent.
    RtiFedSpan span(std::size_t argument = 0) const;

    /// While a callback runs: whether the text has its first, second ... argument, be it an empty one in quotes.
    bool given(std::size_t argument) const;

    /// The text that was read, and the place of one of its bytes.
    std::string_view text() const;
    RtiFedPosition positionAt(std::uint32_t offset) const;

    /// Whether each clause is known to stand in the clause that its author meant. If parentheses are missing or stand
    /// too much it is not, and what is said about inheritance or absence may only follow from that.
    bool nestingKnown() const;

    /// Whether all spaces are known. If a space lost its name, or the text ends before its spaces, they are not.
    bool spacesKnown() const;

    /// Whether each class has the name that was meant, as far as can be told. If a class lacks a word or has one too
    /// many it is not known, nor what the classes in it are called.
    bool classesKnown() const;

    /// How many clauses lack a word: it may be the name of what they declare.
    std::size_t numLostNames() const;

    /// Whether a part of the text that was not understood may declare this name, in any letter case.
    bool skipped(std::string_view name) const;

    /// The size of the printable character at the beginning, 0 if there is none: a control character, a byte order
    /// mark, or no UTF-8.
    static std::size_t printableSize(std::string_view bytes);

    /// A copy of `bytes` fit for a terminal: what is no printable UTF-8 in hexadecimal, as in C, and cut behind `limit`
    /// bytes.
    static std::string printable(std::string_view bytes, std::size_t limit = 60);

private:
    struct Contents;
    void deliverObjects(RtiFedParserCodegen &codegen);
    void deliverInteractions(RtiFedParserCodegen &codegen);
    std::unique_ptr<Contents> _contents;
};

/// The entry point of the database: reads `file` from its current position, delivers its declarations to the callbacks,
/// and closes the file, whatever happens. Returns 0.
///
/// If the text has a syntax error or cannot be read, nothing is delivered, and a std::string is thrown that says where
/// ("line 14, column 24: ..."), what was expected and what was found. An exception of a callback passes through.
RTI_EXPORT int RtiFedParser_Class_main(std::FILE *file, RtiFedParserCodegen *codegen);
