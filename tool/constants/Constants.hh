#pragma once

#include "tool/constants/Identifiers.hh"
#include "tool/language/words/DeclarationClauses.hh"
#include "tool/model/Outline.hh"

#include <cstddef>
#include <map>
#include <ostream>
#include <string>
#include <variant>
#include <vector>

/// The names or handles of a model as constants in nested scopes, for a source file in any language.

struct Constant {
    std::string identifier;
    std::variant<std::string, unsigned long> value; ///< A name or a handle.
    std::string documentation;                      ///< Its lines; empty if there is none.
    /// The name, in the model, of the superclass from which this and those that follow are inherited; null if this does
    /// not begin them.
    const std::string *superclass = nullptr;
};

struct ConstantScope {
    std::string identifier;
    std::string title;         ///< What it is for, such as "Object class ObjectRoot.Craft"; printable.
    std::string documentation; ///< Its lines; empty if there is none.
    std::vector<Constant> constants = {};
    std::vector<ConstantScope> scopes = {};
};

struct ConstantFile {
    std::vector<std::string> path; ///< The identifiers of the scopes around everything, the outermost first.
    std::string title;             ///< What the file is; printable.
    ConstantScope scope;           ///< Its identifier and title mean nothing.
    std::string fingerprint = {};  ///< Of the model; empty if the file has no handles.
};

/// A language in which constants are written.
struct ConstantLanguage {
    const char *name;
    const Keywords &keywords; ///< Words that are no identifiers, and macros that every program may have.
    const Keywords &global;   ///< Names that the outermost scope must not have: the language or its library has them.
    bool isCapitalised; ///< Whether the outermost scope gets a capital letter if the federation has none, since nearly
                        ///< all names that C headers declare beside it are in lower case.
    const Keywords *packages; ///< Keywords that may name a scope other than the innermost; null if its rules are those
                              ///< of all identifiers.
    void (*write)(const ConstantFile &file, std::ostream &out);
};

extern const ConstantLanguage kCppConstants, kJavaConstants, kPythonConstants;

/// Returns the identifier of the scope around all constants, named after the federation.
std::string scopeFor(const std::string &federation, const ConstantLanguage &language);

/// Whether these identifiers, the outermost first, may name the scopes around all constants. `fault` gets the first one
/// that may not.
bool areScopes(const std::vector<std::string> &path, const ConstantLanguage &language, std::string &fault);

/// The number of constants for the names of classes and their members, and the bytes that these take in a file,
/// roughly. Both grow with the depth of the classes: each has the inherited members, and a deeper one is indented more.
struct ConstantsSize {
    std::size_t constants = 0, bytes = 0;
};
ConstantsSize sizeOfConstants(const Outline &model);

/// Returns how many scopes are in each other below this one.
std::size_t depthBelow(const ConstantScope &scope);

/// What the comments of a text say about its declarations.
using Documentation = std::map<DeclarationRef, std::string>;

/// Returns the constants of a model in the order of its handles. With a fingerprint there is a scope `handles` in
/// addition, which has the same scopes and identifiers for the handles.
ConstantScope constantsOf(const Outline &model, const Documentation &documentation, const ConstantLanguage &language,
                          const ConstantFile &file);
