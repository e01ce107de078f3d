#pragma once

#include "tool/syntax/SyntaxTree.hh"

#include <string>
#include <vector>

/// Whether a token is a comment that is alone on its line.
bool isCommentLine(const SyntaxTree &tree, SyntaxTree::Index token);

/// The first and the last comment of the consecutive comment lines around one of them.
SyntaxTree::Index firstOfCommentRun(const SyntaxTree &tree, SyntaxTree::Index token);
SyntaxTree::Index lastOfCommentRun(const SyntaxTree &tree, SyntaxTree::Index token);

/// Returns the comments next to a clause, in order: the comment lines directly above it, then the comment on the line
/// on which its words end.
std::vector<SyntaxTree::Index> commentsOf(const SyntaxTree &tree, SyntaxTree::Index clause);

/// Returns what comments say, a line for each, without the semicolons and the blanks around the text. Comments that
/// allow rules, lines drawn with other characters, and empty lines at the beginning and the end are left out.
std::string textOf(const SyntaxTree &tree, const std::vector<SyntaxTree::Index> &comments);

/// Returns the documentation of the declaration that a clause is: what the comments next to it say. Empty if there are
/// none.
std::string documentationOf(const SyntaxTree &tree, SyntaxTree::Index clause);
