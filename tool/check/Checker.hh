#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/check/Finding.hh"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// A syntax error as a finding.
Finding findingOf(RtiFedParser::Error error);

/// Finds every error of a FED text: those of its syntax, and those for which the database refuses what it declares.
/// Nothing is found exactly if a database can be built from the text.
///
/// The parser's declarations are built into a database as far as they can be, so that each answer about what exists and
/// what is inherited is the library's own.
class Checker : private RtiFedParserCodegen {
public:
    explicit Checker(std::string text);

    std::size_t numErrors() const { return _parser.numErrors() + _findings.size(); }

    /// Whether a database can be built from the text.
    bool findsNoError() const { return numErrors() == 0; }

    /// Calls `visit` for each error in the order of the text, until it returns false; what is missing of the Management
    /// Object Model comes last. Much of a finding is made only here: a hostile text may have very many.
    void forEachFinding(const std::function<bool(const Finding &)> &visit) const;

    /// Whether all that the text declares is in the database: nothing was not understood, or declared a second time.
    bool keepsAll() const;

    /// Whether there is an error by this rule.
    bool finds(RuleId id) const;

    const RtiFedParser &parser() const { return _parser; }

    /// The database as far as it can be built: if there is no error, the one that the library builds.
    const RtiFedDatabase &database() const { return _database; }

    /// Where an argument of a record's declaration (from 0, its name) stands, quotes included; nothing for one that is
    /// absent, and for what the text does not declare.
    std::optional<RtiFedSpan> span(const void *record, std::size_t argument = 0) const;

    /// Where the name of a record stands; nothing for what the text does not declare.
    std::optional<RtiFedPosition> place(const void *record) const;

    /// Where it is declared again: a second time, or where it is inherited.
    std::vector<RtiFedPosition> laterPlaces(const void *record) const;

    /// What stands in the text as an argument of a record's declaration, without quotes.
    std::string written(const void *record, std::size_t argument) const;

private:
    struct Declaration {
        std::array<RtiFedSpan, 4> arguments;
        unsigned long clause = 0; // the class clause in which it stands, counted
    };

    struct Properties {
        RtiTransportationHandle transportation;
        RtiOrderingHandle ordering;
        RtiSpaceHandle space;
    };

    void setFederate(std::string name) override;
    void setFederateVersion(std::string version) override;
    void addSpace(std::string name) override;
    void addDimension(std::string name) override;
    void addObjectClass(std::string name) override;
    void addObjectClassAttribute(std::string name, std::string transportation, std::string ordering,
                                 std::string space) override;
    void addInteractionClass(std::string name, std::string transportation, std::string ordering,
                             std::string space) override;
    void addParameter(std::string name) override;

    template <class Tree, class Add>
    typename Tree::Node *addClass(const std::string &name, Add add);
    template <class Tree, class Add>
    void addMember(typename Tree::Node *owner, const std::string &name, Add add);

    Properties judge(const std::string &owner, const std::string &transportation, const std::string &ordering,
                     const std::string &space);
    bool isTransportation(const std::string &word) const;
    bool isOrdering(const std::string &word) const;
    bool findMisplaced(const std::string &owner, const std::string &transportation, const std::string &ordering,
                       const std::string &space);
    void findShift(std::size_t argument, const std::string &unknown, const std::string &word, const std::string &owner,
                   const std::string &reason);
    void findSwap(const std::string &transportation, const std::string &ordering, const std::string &owner);

    void checkMom();
    void completeMom();

    void declared(const void *record);
    void find(RuleId rule, std::size_t argument, std::string text);
    /// For what is declared again: notes the first, and says nothing unless it is known where the clauses stand.
    void findAgain(RuleId rule, std::string text, const void *first);
    std::string_view wordAt(RtiFedSpan span) const;
    void suggest(Finding &finding, const std::vector<std::string> &candidates) const;
    const std::vector<std::string> &candidatesFor(const Finding &finding) const;

    RtiFedParser _parser;
    RtiFedDatabase _database;
    std::unordered_map<const void *, Declaration> _declarations;      // by record
    std::unordered_map<const void *, std::vector<RtiFedSpan>> _again; // of records that are declared again
    std::vector<std::string> _spaceNames;
    std::vector<std::string> _shiftedWords; // upper-cased
    bool _shiftedInClass = false;           // one of them may be the name of a class
    unsigned long _clause = 0;
    bool _repeated = false;            // the current class was declared before
    std::string _repeatedClass;        // the outermost class around, itself included, that was declared before
    unsigned long _repeatedClause = 0; // and the number of its clause
    RtiFedSpace *_space = nullptr;
    RtiFedObjectClass *_objectClass = nullptr; // null while the current class could not be added, as below
    RtiFedInteractionClass *_interactionClass = nullptr;
    std::vector<Finding> _findings; // but for the syntax errors, in order once all are found
};
