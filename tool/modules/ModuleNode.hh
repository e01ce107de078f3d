#pragma once

#include "tool/modules/Module.hh"

#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

/// A clause of a text that is put together from the clauses of modules.
struct ModuleNode {
    using Children = std::list<ModuleNode>; // so that iterators stay valid when others are inserted

    const Module *module; ///< The first one that has the clause.
    Module::Index clause; ///< Its index there.
    Children children = {};
    std::unordered_map<std::string, Children::iterator> childrenByKey = {}; ///< By keyOf(); only if they are looked up.
    /// Comments that other modules have at the same clause: above it, and before its ")".
    std::vector<std::string> commentsAbove = {}, commentsAtEnd = {};
    std::vector<const Module *> otherModules = {}; ///< Those that have the clause, besides the first one.

    ClauseKind kind() const { return module->clauses()[clause].kind; }
    std::string_view name() const { return module->clauses().name(clause); }
};

/// Returns the whole clause.
ModuleNode nodeOf(const Module &module, Module::Index clause);

/// Returns the text of a FED clause in the canonical layout, with the line ends and the byte order mark of its module.
/// Comments stay with their clauses.
std::string textOf(const ModuleNode &fed);

/// How an attribute or class is delivered, and the security level that the clause gives.
struct ModuleProperties {
    std::string_view transportation, ordering, space, securityLevel; ///< As they are written, without quotes.

    ModuleProperties(const Module &module, Module::Index clause);
    bool operator==(const ModuleProperties &other) const;
    /// Returns the words for a message in which both are named.
    std::string descriptionBeside(const ModuleProperties &other) const;
};

/// Whether a class of this full name, in any letter case, is the outermost of the Management Object Model (MOM).
bool isMomClass(std::string_view fullName);
