#pragma once

#include "infrastructure/RtiFedPosition.hh"

#include <optional>
#include <string>
#include <vector>

/// The types in which RtiFedParser reports the errors of a text. The parser's internals use them without the parser.
struct RtiFedErrorTypes {
    /// The kind of a syntax error.
    enum Problem : unsigned char {
        expectedFed,      ///< The text does not begin with "(FED".
        expectedArgument, ///< A clause lacks one of its words.
        expectedClause,   ///< A clause that is not allowed in the enclosing clause.
        expectedClose,    ///< Neither the ")" of a clause nor, if one is allowed there, another clause.
        leftOpen,         ///< As expectedClose; the indentation may show which clause was left open.
        secondClause,     ///< A second clause of a kind that is allowed once.
        missingClause,    ///< No federation or no version.
        nestedTooDeeply,
        dotInClassName,
        nameTooLong,
        fullNameTooLong,
        namesTooLong, ///< The full names of all classes together.
        strayQuote,
        trailingText, ///< Text after the FED clause.
        nulByte,
        textTooLong,
        tooManyErrors,
        foreignComment, ///< A comment as another language writes it.
        foreignBlank    ///< A character that looks like a blank and is none.
    };

    /// A second place that explains an error, such as the parenthesis that was left open.
    struct Note {
        RtiFedSpan span;
        std::string text;
    };

    /// A span of the text, and what to put in its place.
    struct Correction {
        RtiFedSpan span;
        std::string text;
    };

    struct Error {
        Problem problem;
        RtiFedPosition position; ///< Where the text must be changed: in most cases, the unexpected token.
        RtiFedSpan span;         ///< The whole unexpected token; of length 0 where something is missing.
        std::string text;        ///< What was expected and what was found.
        std::vector<Note> notes;
        std::vector<std::string> keywords; ///< If a keyword was expected: the keywords allowed there.
        /// If a parenthesis is missing or superfluous and the layout of the text shows one place only: the change
        /// there.
        std::optional<Correction> correction;
    };
};
