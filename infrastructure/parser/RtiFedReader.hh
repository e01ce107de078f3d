#pragma once

#include "infrastructure/parser/RtiFedDeclarations.hh"
#include "infrastructure/parser/RtiFedLexer.hh"
#include "infrastructure/parser/RtiFedRepair.hh"
#include "infrastructure/parser/RtiFedSyntaxError.hh"

/// Reads a FED text by its grammar into declarations and syntax errors, in one pass. Nesting is kept in a vector, not
/// on the stack.
///
/// After an error it continues in the same clause if a parenthesis can be repaired there (RtiFedRepair), and otherwise
/// skips that clause.
class RtiFedReader {
public:
    explicit RtiFedReader(const RtiFedText &text);

    RtiFedDeclarations declarations;
    std::vector<RtiFedSyntaxError> errors; ///< In the order of the text.
    RtiFedOffset fed = 0;                  ///< The "(" of the FED clause.
    bool nestingKnown = true;              ///< Each clause is known to be in the clause its author meant.
    bool spacesKnown = true;               ///< All spaces are known: none may be in text that was not read.
    bool classesKnown = true;              ///< Each class is known to have the name its author meant.
    /// The first words of each clause that was not understood: it may have declared one of these names.
    std::vector<RtiFedSpan> skippedNames;
    std::size_t lostNames = 0; ///< Clauses that lack a word, which may be a name.

private:
    using Problem = RtiFedSyntaxError::Problem;

    struct OpenClause {
        RtiFedClauseName name;
        bool hasClauses = false;        // another clause was read in it
        bool hasStrayQuote = false;     // before one of its words: it is not known where its words begin and end
        std::uint32_t level = 0;        // of a class
        std::uint32_t declaration = 0;  // of a class, its index
        std::size_t fullNameLength = 0; // of a class
    };

    // Reading
    RtiFedToken peek() const { return RtiFedLexer(_lexer).next(); }
    void advance();
    void openFed();
    void step();
    bool readPlainMembers();
    bool readPlainClass();
    bool readPlainWords(RtiFedLexer &ahead, RtiFedClause kind, RtiFedArguments &words) const;
    void readClause();
    void readFromKeyword(RtiFedOffset begin, bool afterClose);
    void readArguments();
    bool readArgument(std::size_t index, RtiFedArguments &arguments);
    void closeClause();
    bool refuseSecond();
    void refuseClause(RtiFedOffset begin);
    void skipClause(std::size_t wordsRead);
    void readStrayWords();
    void skipStrayWords();
    void forgetArguments();
    bool readAfterFed();

    // Declaring
    void declareOrSkip(const RtiFedArguments &arguments);
    bool declare(const RtiFedArguments &arguments);
    bool declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments);

    // Repairing parentheses
    void dropOpens();
    bool dropBeforeArgument(std::size_t index);
    void moveToParent(RtiFedOffset begin, bool afterClose);
    void insertForgottenCloses(RtiFedOffset begin);
    bool reopenLastClosed(Problem problem, RtiFedOffset at);

    RtiFedClause childHere(const RtiFedToken &token) const;
    bool isKeywordNearby(const RtiFedToken &token) const;
    bool isCut(const RtiFedToken &token) const;

    // Reporting
    RtiFedSyntaxError &addError(Problem problem, RtiFedOffset at);
    RtiFedSyntaxError &addErrorWithSuspect(Problem problem, RtiFedOffset at);
    void reportMissingClauses();
    void reportLeftOpen();
    void stop(Problem problem, RtiFedOffset at);

    const RtiFedText &_text;
    RtiFedLexer _lexer;
    RtiFedToken _token;
    std::vector<OpenClause> _open; // the clauses around the current token, FED first
    std::optional<OpenClause> _lastClosed;
    RtiFedOffset _lastClose = 0; // the ")" that closed it
    bool _afterClose = false;    // the current token directly follows that ")"
    bool _stopped = false;
    bool _spacesRead = false;   // a section of spaces, to its end
    bool _skippedInFed = false; // a clause directly in the FED clause was not understood
    RtiFedRepair _repair;
    std::size_t _fullNames = 0; // bytes of the full names of all classes
    RtiFedOffset _firstOf[static_cast<std::size_t>(RtiFedClause::unknown)] = {}; // of clauses that are allowed once
};
