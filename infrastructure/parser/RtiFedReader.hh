#pragma once

#include "infrastructure/parser/RtiFedDeclarations.hh"
#include "infrastructure/parser/RtiFedLexer.hh"
#include "infrastructure/parser/RtiFedSyntaxError.hh"

/// Reads a FED text by its grammar into declarations and syntax errors, in one pass. Nesting is kept in a vector, not
/// on the stack.
///
/// After an error it goes on behind the clause in which the error stands, or inside of it where that is safe. If the
/// whole text has too few or too many parentheses, it takes the one that is missing or too much, where the grammar
/// shows it, as read or as not there, so that the rest is read as it was meant.
class RtiFedReader {
public:
    explicit RtiFedReader(const RtiFedText &text);

    RtiFedDeclarations declarations;
    std::vector<RtiFedSyntaxError> errors; ///< In the order of the text.
    RtiFedOffset fed = 0;                  ///< The "(" of the FED clause.
    bool nestingKnown = true;              ///< Whether each clause is known to stand where its author meant it.
    bool spacesKnown = true;               ///< Whether the spaces are all known: none may stand in what was not read.
    bool classesKnown = true;              ///< Whether the name of each class is known to be the one that was meant.
    /// The first words of what was not understood: the names of what it may have declared.
    std::vector<RtiFedSpan> skippedNames;
    std::size_t lostNames = 0; ///< Clauses that lack a word, which may be a name.

private:
    using Problem = RtiFedSyntaxError::Problem;

    struct Open {
        RtiFedClauseName name;
        bool hasClauses = false;       // another clause was read in it
        bool doubtful = false;         // a stray quote stands among its words: they are not judged
        std::uint32_t level = 0;       // of a class
        std::uint32_t declaration = 0; // of a class, its index
        std::size_t fullName = 0;      // of a class, the length of its full name
    };

    RtiFedToken peek() const { return RtiFedLexer(_lexer).next(); }
    void advance();
    void openFed();
    void step();
    bool readPlainMembers();
    bool readPlainClass();
    bool readPlainWords(RtiFedLexer &ahead, RtiFedClause kind, RtiFedArguments &words) const;
    void readClause();
    void readClauseAt(RtiFedOffset begin, bool behindClose);
    void refuseClause(RtiFedOffset begin);
    bool refuseSecond();
    void readArguments();
    bool readArgument(std::size_t index, RtiFedArguments &arguments);
    void declareOrSkip(const RtiFedArguments &arguments);
    bool declare(const RtiFedArguments &arguments);
    void declareMember(RtiFedClause kind, std::uint32_t owner, const RtiFedArguments &arguments);
    bool declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments);
    void closeClause();
    void readStrayNames();
    void forgetArguments();
    void skipClause(std::size_t wordsRead);
    bool behindFed();

    RtiFedClause childHere(const RtiFedToken &token) const;
    bool isClauseAround(const RtiFedToken &token) const;
    bool isCut(const RtiFedToken &token) const;
    /// How many ")" are still missing; below 0, how many are still too many.
    long missing();
    void supplyForgottenCloses(RtiFedOffset at);
    bool reopenLastClosed(Problem problem, RtiFedOffset at);

    RtiFedSyntaxError &fail(Problem problem, RtiFedOffset at);
    /// Notes an error at the current token, or that the text ends there if it does. Returns whether to go on.
    bool expected(Problem problem, std::size_t number = 0);
    void leaveAllOpen();
    void stop(Problem problem, RtiFedOffset at);
    void takeSuspect(RtiFedSyntaxError &error);

    const RtiFedText &_text;
    RtiFedLexer _lexer;
    RtiFedToken _token;
    std::vector<Open> _open;
    std::optional<Open> _lastClosed;
    RtiFedOffset _lastClose = 0; // the ")" that closed it
    bool _behindClose = false;   // whether the current token follows it directly
    bool _stopped = false;
    bool _spacesRead = false;   // a section of spaces, to its end
    bool _skippedInFed = false; // a clause directly in the FED clause was not understood
    std::optional<RtiFedBalance> _balance;
    std::size_t _nextSuspect = 0;
    long _supplied = 0;         // missing ")" that were taken as read, less surplus ones that were taken as not there
    std::size_t _fullNames = 0; // bytes of the full names of all classes
    RtiFedOffset _firstOf[static_cast<std::size_t>(RtiFedClause::unknown)] = {}; // of clauses that may stand once
};
