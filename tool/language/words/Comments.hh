#pragma once

#include "tool/syntax/SyntaxTree.hh"

#include <string>

/// Whether a token is a comment that is alone on its line.
bool isCommentLine(const SyntaxTree &tree, SyntaxTree::Index token);

/// The first and the last comment of the consecutive comment lines around one of them.
SyntaxTree::Index firstOfCommentRun(const SyntaxTree &tree, SyntaxTree::Index token);
SyntaxTree::Index lastOfCommentRun(const SyntaxTree &tree, SyntaxTree::Index token);

/// Returns the documentation of the declaration that a clause is, a line of it for each comment, without the semicolons
/// and the blanks around the text: the comment lines directly above the clause, then the comment on the line on which
/// its words end. Comments that allow rules, and lines drawn with other characters, are left out. Empty if there is
/// none.
std::string documentationOf(const SyntaxTree &tree, SyntaxTree::Index clause);
