#pragma once

#include "infrastructure/RtiFedDeclarations.hh"
#include "infrastructure/RtiFedLexer.hh"
#include "infrastructure/RtiFedSyntaxError.hh"

/// Reads a FED text by its grammar into declarations and syntax errors, in one pass. After an error it goes on behind
/// the clause in which the error stands, or inside of it where that is safe. Nesting is kept in a vector, not on the
/// stack.
class RtiFedReader {
public:
    explicit RtiFedReader(const RtiFedText &text);

    RtiFedDeclarations declarations;
    std::vector<RtiFedSyntaxError> errors;
    std::optional<RtiFedBalance> balance; ///< Looked at only if a clause was left open.
    std::vector<RtiFedSpan> skippedNames; ///< The names in the clauses that were not understood.
    RtiFedOffset fed = 0;                 ///< The "(" of the FED clause.
    bool nestingKnown = true;             ///< Whether each clause is known to stand where its author meant it.

private:
    struct Open {
        RtiFedClause kind;
        RtiFedOffset begin;            // its "("
        bool hasClauses = false;       // another clause was read in it
        std::uint32_t level = 0;       // of a class
        std::uint32_t declaration = 0; // of a class, its index
        std::size_t fullName = 0;      // of a class, the length of its full name
    };

    using Problem = RtiFedSyntaxError::Problem;

    void advance();
    void openFed();
    void step();
    void readClause();
    bool refuseSecond();
    void readArguments();
    bool declare(const RtiFedArguments &arguments);
    bool declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments);
    void closeClause();
    void skipStrayNames();
    void skipClause();
    void supplyForgotten(std::string_view keyword, RtiFedOffset at);
    void behindFed();

    /// Notes an error in the innermost clause.
    RtiFedSyntaxError &fail(Problem problem, RtiFedOffset at);
    /// Notes an error at the current token, or that the text ends there if it does. Returns whether to go on.
    bool expected(Problem problem, RtiFedOffset number = 0);
    void leftOpen(RtiFedOffset at);
    void stop(Problem problem);

    const RtiFedText &_text;
    RtiFedLexer _lexer;
    RtiFedToken _token;
    std::vector<Open> _open;
    bool _stopped = false;
    bool _skippedInFed = false; // a clause directly in the FED clause was not understood
    long _supplied = 0;         // how many missing ")" were taken as read
    std::size_t _fullNames = 0; // bytes of the full names of all classes
    RtiFedOffset _fedClose = 0; // the ")" of the FED clause
    RtiFedOffset _firstOf[static_cast<std::size_t>(RtiFedClause::unknown)] = {}; // of clauses that may stand once
};
