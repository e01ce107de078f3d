#pragma once

#include "fed/mom/RtiFedDatabaseMomVerifier.hh"
#include "tool/model/TreeKind.hh"

#include <cstddef>
#include <string>
#include <vector>

/// The clauses that declare the Management Object Model (MOM), in the canonical layout: LF, two blanks a level, no
/// indentation of the first line and no end of the last. Everything is reliable and receive-ordered, as RTIs send it.

/// Returns everything that the MOM requires of a tree, each class after its superclass.
const std::vector<RtiFedDatabaseMomVerifier::Requirement> &momRequirements(const TreeKind &tree);

/// Returns the clause of a class that the MOM requires, with everything that it requires in it. `className` is dotted,
/// without the root, such as `Manager.Federate`.
std::string momClass(const TreeKind &tree, const std::string &className);

/// Returns the clause of the root of a tree with all that every model has in it.
std::string rootClass(const TreeKind &tree);

/// Returns the usual spelling of a member that the MOM requires.
std::string momMemberName(const std::string &name);

/// Returns the clause of an attribute or parameter that the MOM requires. `width` is that of the column of names.
std::string momMember(const TreeKind &tree, const std::string &name, std::size_t width = 0);
