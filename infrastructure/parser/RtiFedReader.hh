#pragma once

#include "infrastructure/parser/RtiFedDeclarations.hh"
#include "infrastructure/parser/RtiFedLexer.hh"
#include "infrastructure/parser/RtiFedNesting.hh"

/// Reads a FED text by its grammar into declarations and syntax errors, in one pass. It does not recurse: RtiFedNesting
/// holds the open clauses, so deep nesting cannot exhaust the stack.
///
/// After an error it continues where it is if the error can be explained by a parenthesis that is missing or
/// superfluous (RtiFedRepair), and otherwise after the clause that has the error.
class RtiFedReader {
public:
    /// Reads a text. If it has errors, it is read again with the suspects of RtiFedBalance, if there are any.
    static RtiFedReader read(const RtiFedText &text);

    RtiFedDeclarations declarations;
    RtiFedNesting nesting;    ///< With the errors, in the order of the text.
    bool spacesKnown = true;  ///< All spaces are known: none may be in text that was not read.
    bool classesKnown = true; ///< Each class is known to have the name its author meant.
    /// A word of a clause that was not understood: it may have declared this name.
    struct Skipped {
        std::string_view name;
        RtiFedOffset owner; ///< The name of the innermost class that encloses the clause; 0 if there is none.
    };
    /// The first words of each such clause.
    std::vector<Skipped> skippedNames;
    /// The same owners, of the clauses that lack a word, which may be a name.
    std::vector<RtiFedOffset> ownersOfLostNames;

    /// The beginning of the first clause of a kind that is allowed once; 0 if there is none.
    RtiFedOffset firstOf(RtiFedClause kind) const { return _firstOf[static_cast<std::size_t>(kind)]; }

private:
    using Problem = RtiFedSyntaxError::Problem;

    RtiFedReader(const RtiFedText &text, RtiFedRepair repair);

    // Reading
    RtiFedToken peek() const { return RtiFedLexer(_lexer).next(); }
    void advance();
    void reportForeign();
    void openFed();
    void step();
    bool readPlainMembers();
    bool readPlainClass();
    bool readPlainWords(RtiFedLexer &ahead, RtiFedClause kind, RtiFedArguments &words) const;
    void readClause();
    void readFromKeyword(RtiFedOffset begin, bool afterClose);
    void readArguments();
    bool readArgument(std::size_t index, RtiFedArguments &arguments);
    bool rereadForeign(RtiFedArguments &arguments, std::size_t &count);
    bool rereadForeign();
    bool learnForeign(std::string_view word, bool mayBeComment);
    void closeClause();
    bool refuseSecond();
    void refuseClause(RtiFedOffset begin);
    bool stopAtEnd();
    void skipClause(std::size_t wordsRead);
    void readStrayWords();
    void forgetArguments();
    bool readAfterFed();

    // Declaring
    void declareOrSkip(const RtiFedArguments &arguments);
    bool declare(const RtiFedArguments &arguments);
    bool declareClass(RtiFedDeclarations::Tree &tree, const RtiFedArguments &arguments);

    // Repairing parentheses
    bool findsByGrammar(const RtiFedBalance::Suspect &suspect) const;
    bool insertSuspectedClose();
    bool dropSuspected();
    bool dropBeforeArgument(std::size_t index);

    void addSkipped(RtiFedSpan name);

    std::string_view wordOf(const RtiFedToken &token) const;
    RtiFedClause childHere() const { return childOf(nesting.kind(), wordOf(_token)); }
    bool isCut() const;

    const RtiFedText &_text;
    RtiFedLexer _lexer;
    RtiFedToken _token;
    RtiFedOffset _lastEnd = 0; // of the token before the current one
    std::vector<RtiFedOffset> _foreign;
    bool _afterClose = false;   // the current token directly follows the last ")"
    bool _spacesRead = false;   // the section of spaces, up to its end
    bool _skippedInFed = false; // a clause directly in the FED clause was not understood
    std::size_t _fullNames = 0; // bytes of the full names of all classes
    RtiFedOffset _firstOf[static_cast<std::size_t>(RtiFedClause::unknown)] = {}; // of clauses that are allowed once
};
