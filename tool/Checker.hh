#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedParser.hh"

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// One problem of a FED text, in the words of a person who edits it.
struct Finding {
    RtiFedPosition position;
    std::string text;
    std::vector<std::string> details; ///< Further lines, shown under the text.
};

/// By place in the text, findings with details last.
bool comesBefore(const Finding &a, const Finding &b);

/// Finds every problem of a FED text: those of its syntax, and those for which the database refuses what it declares.
/// Nothing is found exactly if a database can be built from the text.
///
/// The parser's declarations are built into a database as far as they can be, so that each answer about what exists and
/// what is inherited is the library's own.
class Checker : private RtiFedParserCodegen {
public:
    explicit Checker(std::string text);

    /// Whether a database can be built from the text.
    bool findsNoError() const { return _findings.empty() && _parser.numErrors() == 0; }

    /// The database as far as it can be built: if there is no error, the one that the library builds.
    const RtiFedDatabase &database() const { return _database; }

    /// Where the name of one of its records stands; nothing for what the text does not declare.
    std::optional<RtiFedPosition> place(const void *record) const;

    /// What stands in the text as an argument of a record's declaration (from 0, its name), without quotes.
    std::string written(const void *record, std::size_t argument) const;

    /// Calls `visit` for each finding in the order of the text; what is missing of the Management Object Model comes
    /// last. Texts of syntax errors are made one by one: a hostile text may have millions.
    template <class Visit>
    void forEachFinding(Visit visit) const {
        std::size_t next = 0;
        const auto visitErrorsBefore = [&](const Finding *finding) {
            for (; next < _parser.numErrors(); ++next) {
                RtiFedParser::Error error = _parser.error(next);
                Finding syntax{error.position, std::move(error.text), {}};
                if (finding && comesBefore(*finding, syntax))
                    return;
                visit(syntax);
            }
        };
        for (const Finding &finding : _findings) {
            visitErrorsBefore(&finding);
            visit(finding);
        }
        visitErrorsBefore(nullptr);
    }

private:
    struct Declaration {
        std::array<RtiFedSpan, 4> arguments;
        unsigned long clause; // the class clause in which it stands, counted
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
    Properties findShift(std::size_t argument, const std::string &unknown, const std::string &word,
                         const std::string &owner, const std::string &reason);

    void checkMom();
    template <class Tree>
    void checkMomPlace();
    void completeMom();

    void declared(const void *record);
    std::string firstPlace(const void *record) const;
    void find(std::size_t argument, std::string text);
    /// For what depends on where the clauses stand: said only if that is known.
    void findIfNestingKnown(std::string text);

    RtiFedParser _parser;
    RtiFedDatabase _database;
    std::unordered_map<const void *, Declaration> _declarations; // by record
    std::vector<std::string> _shiftedWords;                      // upper-cased
    bool _shiftedInClass = false;                                // one of them may be the name of a class
    unsigned long _clause = 0;
    bool _repeated = false;            // the current class was declared before
    std::string _repeatedClass;        // the outermost class around, itself included, that was declared before
    unsigned long _repeatedClause = 0; // and the number of its clause
    RtiFedSpace *_space = nullptr;
    RtiFedObjectClass *_objectClass = nullptr; // null while the current class could not be added, as below
    RtiFedInteractionClass *_interactionClass = nullptr;
    std::vector<Finding> _findings; // but for the syntax errors, in order once all are found
};
