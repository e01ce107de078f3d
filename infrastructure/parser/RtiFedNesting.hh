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

    explicit RtiFedNesting(RtiFedRepair repairs) : repair(std::move(repairs)) {}

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
    /// Adds an error after which the text is not read any further.
    void stop(Problem problem, RtiFedOffset at);

    /// Whether a ")" is judged to be missing at this offset, before the token at `next`. If so, reports the innermost
    /// clause.
    bool insertSuspectedClose(RtiFedOffset at, RtiFedOffset next);
    /// Whether the parenthesis at this offset is judged to be superfluous. If so, reports it.
    bool dropSuspected(RtiFedRepair::Suspect::Change change, RtiFedOffset at);

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
