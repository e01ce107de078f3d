#pragma once

#include "tool/check/Checker.hh"
#include "tool/syntax/SyntaxEdits.hh"

/// Adds to `edits` what a finding that the MOM is incomplete misses; nothing if a class of the MOM is in a wrong place,
/// since a person may want to move it, or if the words of a clause were not understood. The text has no syntax errors.
void addMissingMom(const Checker &text, const Finding &finding, SyntaxEdits &edits);
