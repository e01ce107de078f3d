#pragma once

#include "tool/language/words/DeclarationClauses.hh"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Something that an object model of IEEE 1516 says of a declaration, and FED does not.
enum class FomFact : unsigned char {
    dataType,
    updateType,
    updateCondition,
    ownership,
    sharing,
    upperBound,
    normalization,
    value,
    semantics
};

struct FomFactForm {
    const char *name;                  ///< Of its element, and of its key in a file of types.
    const char *unknown;               ///< The value that means that it is not known; null if there is none.
    std::vector<std::string> choices;  ///< The values that it may have; empty if there are others.
    std::vector<ClauseKind> kinds;     ///< Of declarations that have it.
    const char *expected;              ///< What its value is, for a message; null if it is any text.
    bool (*isLegal)(std::string_view); ///< Null if it is any text or one of the choices.
};

const FomFactForm &formOf(FomFact fact);

/// Returns the facts of declarations of a kind, in the order of their elements.
std::vector<FomFact> factsOf(ClauseKind kind);

/// The facts that are known of a model's declarations.
class FomFacts {
public:
    /// What is known of one declaration; never an empty text.
    using Known = std::vector<std::pair<FomFact, std::string>>;

    /// Sets a fact, also if it is known already. An empty text is ignored.
    void set(const DeclarationRef &declaration, FomFact fact, std::string text);

    /// Adds what the comments of a text say: the data types that an import kept there, and all else as semantics.
    void addComments(const DeclarationClauses &clauses);

    /// Adds the facts that are known to others only.
    void addMissing(const FomFacts &others);

    const Known &of(const DeclarationRef &declaration) const;
    /// Returns null if it is not known.
    static const std::string *find(const Known &known, FomFact fact);

private:
    std::map<DeclarationRef, Known> _known;
};
