#pragma once

#include "tool/modules/ModuleNode.hh"

#include <optional>
#include <string>
#include <vector>

/// Joins modules into one text: clauses of the same path are one clause, with everything that any of them contains.
///
/// The first module keeps its order. A class, member or space that only a later module has is inserted before the next
/// one that both have, or else at the end, so that texts in which the MOM comes last still have it last.
class Merge {
public:
    struct Message {
        std::string place; ///< FILE:LINE:COLUMN
        std::string text;
    };

    /// `firstMom` says that where two modules declare something of the Management Object Model (MOM) differently, the
    /// first one holds; otherwise that is a conflict as elsewhere.
    explicit Merge(bool firstMom) : _firstMom(firstMom) {}

    /// Adds a module, which must outlive this object.
    void add(const Module &module);

    /// Finds the conflicts that only all modules together show: a member that a class declares in one module and a
    /// superclass in another one. To be called once, after all modules were added.
    void checkInheritance();

    /// Declarations that cannot be joined: nobody can say which of them holds.
    const std::vector<Message> &conflicts() const { return _conflicts; }
    /// Differences that are no conflict.
    const std::vector<Message> &notes() const { return _notes; }

    /// The text in the canonical layout. At least one module must have been added.
    std::string text() const { return textOf(*_fed); }

private:
    /// Where the walk through a module is.
    struct Path {
        std::string className; ///< The full name of the class around it, or the name of the space; empty elsewhere.
        bool isMom = false;
    };

    void join(ModuleNode &node, const Module &module, Module::Index clause, const Path &path);
    void joinComments(ModuleNode &node, const Module &module, Module::Index clause);
    void joinChildren(ModuleNode &node, const Module &module, Module::Index clause, const Path &path);
    void compareNames(const ModuleNode &node, const Module &module, Module::Index clause);
    void compareDimensions(const ModuleNode &node, const Module &module, Module::Index clause, const Path &path);
    void compareProperties(const ModuleNode &node, const Module &module, Module::Index clause, const Path &path);
    void checkMembers(const ModuleNode &node, const std::string &className,
                      std::unordered_map<std::string, std::vector<const ModuleNode *>> &inherited);
    void checkOutermost(const ModuleNode &section);

    const bool _firstMom;
    std::optional<ModuleNode> _fed;
    std::vector<Message> _conflicts, _notes;
};
