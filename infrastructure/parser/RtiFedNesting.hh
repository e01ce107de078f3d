#pragma once

#include "infrastructure/parser/RtiFedRepair.hh"
#include "infrastructure/parser/RtiFedSyntaxError.hh"

#include <vector>

/// The clauses that are open where the reader is, the FED clause first, and the clause that was closed last; the errors
/// reported in them, and the repairs that close or reopen them.
class RtiFedNesting {
public:
    using Problem = RtiFedSyntaxError::Problem;

    struct Clause {
        RtiFedClauseName name;
        bool hasClauses = false;        ///< Another clause was read in it.
        bool hasStrayQuote = false;     ///< Before one of its words: it is not known where its words begin and end.
        std::uint32_t declaration = 0;  ///< Of a class: its index.
        std::size_t fullNameLength = 0; ///< Of a class.
    };

    explicit RtiFedNesting(const RtiFedText &text) : repair(text) {}

    std::size_t depth() const { return _open.size(); }
    Clause &innermost() { return _open.back(); }
    RtiFedClause kind() const { return _open.back().name.kind; }
    const Clause &parent() const { return _open[_open.size() - 2]; }

    void open(const RtiFedClauseName &name) { _open.push_back({name}); }
    /// Closes the innermost clause with the ")" at `offset`.
    void close(RtiFedOffset offset) {
        lastClosed = _open.back();
        lastClose = offset;
        drop();
    }
    void drop(std::size_t count = 1) { _open.resize(_open.size() - count); }

    /// The offset of the name of the innermost class, not counting the innermost clause; 0 if there is none.
    RtiFedOffset ownerOfInnermost() const;

    /// Whether this word begins a clause that is allowed in the innermost clause or beside it.
    bool isKeywordNearby(std::string_view word) const;

    /// Adds an error in the innermost clause; the last one allowed becomes tooManyErrors.
    RtiFedSyntaxError &addError(Problem problem, RtiFedOffset at);
    /// Adds an error that a parenthesis too many or too few may have caused, with the next place where the indentation
    /// contradicts the parentheses.
    RtiFedSyntaxError &addErrorWithSuspect(Problem problem, RtiFedOffset at);
    /// Adds an error after which the text is not read any further.
    void stop(Problem problem, RtiFedOffset at);
    /// The text ends at `at`: reports the innermost clause, and each further one that the indentation shows to be left
    /// open.
    void reportLeftOpen(RtiFedOffset at);

    /// Inserts the ")" of the clauses inside of the nearest one that allows this keyword, if as many are missing. The
    /// innermost clause does not allow it.
    void insertForgottenCloses(std::string_view keyword, RtiFedOffset at);
    /// Drops the last ")", if there are too many. Returns whether it did.
    bool reopenLastClosed(Problem problem, RtiFedOffset at);

    RtiFedRepair repair;
    std::vector<RtiFedSyntaxError> errors;
    bool known = true;     ///< Each clause that was read is known to be in the clause its author meant.
    bool stopped = false;  ///< The text is not read any further.
    RtiFedOffset fed = 0;  ///< The "(" of the FED clause.
    RtiFedSpan fedKeyword; ///< Of length 0 before it was read.
    Clause lastClosed;
    RtiFedOffset lastClose = 0; ///< Its ")".

private:
    std::vector<Clause> _open;
};
