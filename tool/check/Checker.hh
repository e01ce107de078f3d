#pragma once

#include "fed/RtiFedDatabase.hh"
#include "fed/loading/RtiFedParserCodegen.hh"
#include "infrastructure/RtiFedParser.hh"
#include "tool/check/ClassClauses.hh"
#include "tool/check/Finding.hh"
#include "tool/check/NameScan.hh"
#include "tool/check/Suggestion.hh"
#include "tool/check/WordOrder.hh"
#include "tool/model/Declarations.hh"
#include "tool/model/DeliveryWords.hh"
#include "tool/syntax/SyntaxTree.hh"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Finds every error of a FED text: syntax errors, and declarations that the database refuses. It finds none exactly if
/// a database can be built from the text.
///
/// The idea: most texts have no error, so first the library builds a database of the text. Only if it refuses the text,
/// the declarations are added to another database one by one, as far as possible, so that the library itself answers
/// what exists and what is inherited. The text is parsed once for both.
class Checker : private RtiFedParserCodegen {
public:
    /// `fileName` is that of the database.
    explicit Checker(std::string text, const std::string &fileName = {});

    std::size_t numErrors() const { return _parser.numErrors() + _findings.size(); }

    /// Whether a database can be built from the text.
    bool findsNoError() const { return numErrors() == 0; }

    /// Calls `visit` for each error in the order of the text, until it returns false. Syntax errors and suggestions are
    /// worded only here: a hostile text may have very many.
    void forEachFinding(const std::function<bool(const Finding &)> &visit) const;

    /// The first place where the text declares something that is not in the database because it was not understood or
    /// is a duplicate. Absent if all is in it.
    std::optional<RtiFedPosition> firstLoss() const;

    /// Whether each name that the text declares is certainly in the database. A duplicate is, as its earlier
    /// declaration.
    bool hasAllNames() const;

    /// Whether there is an error of this rule.
    bool finds(RuleId id) const;

    const RtiFedParser &parser() const { return _parser; }
    /// Passes over the declarations of a text without syntax errors once more.
    NameScan scanNames() const { return NameScan(_parser); }
    /// The syntax tree of the text, made when it is first asked for: by one thread at a time.
    const SyntaxTree &tree() const;

    /// The database as far as it can be built; without errors, the same that the library builds.
    const RtiFedDatabase &database() const { return *_database; }
    /// Hands over the database, after which the checker must not be used.
    std::unique_ptr<RtiFedDatabase> takeDatabase() && { return std::move(_database); }

    /// Whether a part of the text that was not understood may declare this name in a class, whose name is at offset
    /// `owner`; 0 means the text outside of classes.
    bool mayBeDeclaredIn(std::uint32_t owner, std::string_view name) const;
    /// The number of declarations in that class whose name is missing.
    std::size_t numLostNames(std::uint32_t owner) const;
    /// The offset of a word, without its opening quote.
    std::uint32_t offsetOfWord(RtiFedSpan span) const;

    /// The places of the database's records in the text. Of a text without errors, of which most callers need no place,
    /// they are collected when they are first asked for: by one thread at a time.
    const Declarations &declarations() const;

private:
    using Argument = Declarations::Argument;

    /// The words of an attribute or interaction class.
    struct Words {
        std::string name, transportation, ordering, space;
    };
    /// Their handles, each 0 if the word is unknown.
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
    template <class Tree>
    void reportRepeatedClass(const std::string &name, const typename Tree::Node &first);
    template <class Tree, class Add>
    void addMember(typename Tree::Node *owner, const std::string &name, Add add);

    std::optional<Properties> resolve(const std::string &noun, const std::string &name, const Words &words);
    WordKinds kindsOf(const Words &words) const;
    bool isSpace(const std::string &word) const;
    bool isTransportation(const std::string &word) const;
    bool isOrdering(const std::string &word) const;
    void reportMistake(const WordMistake &mistake, const Words &words, const std::string &owner);
    bool reportSplitWord(Argument argument, const std::string &first, const std::string &second,
                         const std::string &owner);
    void reportMissingWord(const WordMistake &mistake, const Words &words, const std::string &owner);
    void reportOrder(const WordMistake &mistake, const Words &words, const std::string &owner);
    const Finding *insteadOf(const RtiFedParser::Error &error) const;
    void reportUnknownWord(RuleId rule, Argument argument, const std::string &noun, const std::string &word,
                           const std::string &owner, const std::string &expected);

    void findErrors();
    void checkMom();
    void giveMomItsSpace();

    void addDeclaration(Declarations::Record record) { _declarations.add(record, _clauses.number()); }
    /// Adds a finding about an argument of the declaration that the parser is delivering. `particular` is the part of
    /// the text that concerns only this declaration.
    void report(RuleId rule, Argument argument, std::string text, std::string_view particular = {});
    /// Adds a finding about a further declaration of a record, unless the parser does not know its class.
    void reportRepeated(RuleId rule, std::string text, Declarations::Record first, std::string_view particular = {});
    Finding withSuggestion(Finding finding, const Suggestion &suggestion) const;
    const std::vector<std::string> &candidatesFor(const Finding &finding) const;

    mutable RtiFedParser _parser; // delivering only moves its position
    mutable std::optional<SyntaxTree> _tree;
    std::unique_ptr<RtiFedDatabase> _database;
    mutable Declarations _declarations{_parser};
    mutable bool _declarationsKnown = false;
    ClassClauses _clauses;
    std::vector<std::string> _spaceNames;
    std::set<RtiSpaceHandle> _usedSpaces;
    std::uint32_t _owner = 0; // the offset of the name of the last object class; 0 before the first one
    std::set<std::pair<std::uint32_t, std::string>> _shiftedWords; // with their owners, in upper case
    std::multiset<std::uint32_t> _lostNames;                       // owners of declarations without a name
    bool _classNamesUncertain = false;                             // one of them may be the name of a class
    RtiFedSpace *_space = nullptr;
    RtiFedObjectClass *_objectClass = nullptr; // null while the current class could not be added, as the next one
    RtiFedInteractionClass *_interactionClass = nullptr;
    std::map<std::uint32_t, Finding> _insteadOf; // of syntax errors about missing words, by the end of the words before
    std::vector<Finding> _findings;              // without the syntax errors; sorted once all are found
};
